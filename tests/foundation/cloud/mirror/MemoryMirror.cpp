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
    if (isOpen())
        qFatal("A profile was copied over within a transaction.");
    m_data = data;
    ++m_revision;
}

MirrorMemory MemoryMirror::memory()
{
    call();
    return m_data.memory;
}

void MemoryMirror::setMemory(const MirrorMemory& memory)
{
    call();
    m_data.memory = memory;
    ++m_revision;
}

void MemoryMirror::begin()
{
    if (isOpen())
        qFatal("A transaction within a transaction.");
    m_memoryBefore = m_data.memory;
}

bool MemoryMirror::commit()
{
    call();
    if (failsToCommit && failsToCommit())
        return false;
    m_records.keepChanges();
    m_keyValues.keepChanges();
    m_memoryBefore.reset();
    return true;
}

void MemoryMirror::rollBack() noexcept
{
    m_records.undoChanges();
    m_keyValues.undoChanges();
    m_data.memory = *m_memoryBefore;
    ++m_revision;
    m_memoryBefore.reset();
}

} // namespace mirror
