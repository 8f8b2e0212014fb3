#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

/// A long list of numbers in which changes keep near one another: eight bytes a number and one
/// gap, which moves to where the list is changed. Removing any number of places in descending
/// order moves each number at most once.
class IdentityList {
public:
    [[nodiscard]] qsizetype size() const { return m_capacity - m_gapSize; }
    [[nodiscard]] qint64 at(qsizetype index) const { return *place(index); }
    /// Position of a number, -1 where it is not in the list. Looks at every number.
    [[nodiscard]] qsizetype indexOf(qint64 number) const;

    void clear();
    /// Makes room for so many more, so that adding them does not copy the list.
    void reserve(qsizetype more);
    void append(const std::vector<qint64>& numbers);
    void insert(qsizetype index, qint64 number);
    void remove(qsizetype first, qsizetype count);
    void replace(qsizetype index, qint64 number);

private:
    /// Where the number of a position stands in memory.
    [[nodiscard]] qint64* place(qsizetype index) const
    {
        return m_numbers.get() + (index < m_gapStart ? index : index + m_gapSize);
    }
    void moveGapTo(qsizetype index);

    std::unique_ptr<qint64[]> m_numbers;
    qsizetype m_capacity = 0;
    qsizetype m_gapStart = 0;
    qsizetype m_gapSize = 0;
};
