#include "MemoryMirror.h"

namespace mirror {

void MemoryMirror::call()
{
    if (!isOpen())
        qFatal("A call outside a transaction.");
    if (called)
        called();
}

void MemoryMirror::setData(const Data& data)
{
    m_records.data() = data.records;
    m_keyValues.data() = data.keyValues;
    m_memory = data.memory;
}

MirrorMemory MemoryMirror::memory()
{
    call();
    return m_memory;
}

void MemoryMirror::setMemory(const MirrorMemory& memory)
{
    call();
    m_memory = memory;
}

void MemoryMirror::begin()
{
    if (isOpen())
        qFatal("A transaction within a transaction.");
    m_before = data();
}

bool MemoryMirror::commit()
{
    call();
    if (failsToCommit && failsToCommit())
        return false;
    m_before.reset();
    return true;
}

void MemoryMirror::rollBack() noexcept
{
    setData(*m_before);
    m_before.reset();
}

} // namespace mirror
