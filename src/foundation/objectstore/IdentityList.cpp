#include "IdentityList.h"

#include <algorithm>

qsizetype IdentityList::indexOf(qint64 number) const
{
    const qint64* begin = m_numbers.get();
    const qint64* gap = begin + m_gapStart;
    const qint64* end = begin + m_capacity;
    if (const qint64* found = std::find(begin, gap, number); found != gap)
        return found - begin;
    const qint64* found = std::find(gap + m_gapSize, end, number);
    return found == end ? -1 : found - begin - m_gapSize;
}

void IdentityList::clear() { *this = {}; }

void IdentityList::reserve(qsizetype more)
{
    if (m_gapSize >= more)
        return;
    // Left uninitialised: a list of millions is filled little by little.
    auto grown = std::make_unique_for_overwrite<qint64[]>(static_cast<std::size_t>(size() + more));
    const qint64* begin = m_numbers.get();
    std::copy(begin, begin + m_gapStart, grown.get());
    std::copy(begin + m_gapStart + m_gapSize, begin + m_capacity, grown.get() + m_gapStart + more);
    m_capacity = size() + more;
    m_gapSize = more;
    m_numbers = std::move(grown);
}

void IdentityList::append(const std::vector<qint64>& numbers)
{
    const auto count = static_cast<qsizetype>(numbers.size());
    reserve(count);
    moveGapTo(size());
    std::copy(numbers.begin(), numbers.end(), m_numbers.get() + m_gapStart);
    m_gapStart += count;
    m_gapSize -= count;
}

void IdentityList::insert(qsizetype index, qint64 number)
{
    if (m_gapSize == 0)
        reserve(std::max<qsizetype>(64, size() / 32));
    moveGapTo(index);
    m_numbers[m_gapStart++] = number;
    --m_gapSize;
}

void IdentityList::remove(qsizetype first, qsizetype count)
{
    moveGapTo(first + count);
    m_gapStart -= count;
    m_gapSize += count;
}

void IdentityList::replace(qsizetype index, qint64 number) { *place(index) = number; }

void IdentityList::moveGapTo(qsizetype index)
{
    qint64* begin = m_numbers.get();
    if (index < m_gapStart)
        std::copy_backward(begin + index, begin + m_gapStart, begin + m_gapStart + m_gapSize);
    else
        std::copy(begin + m_gapStart + m_gapSize, begin + index + m_gapSize, begin + m_gapStart);
    m_gapStart = index;
}
