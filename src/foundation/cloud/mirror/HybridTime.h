#pragma once

#include <QByteArray>

#include <compare>
#include <optional>

namespace mirror {

/// A reading of a hybrid logical clock: milliseconds since 1970 UTC, and a counter that orders what
/// happened within one millisecond or while the wall clock stood behind. Its text sorts as it does.
class HybridTime {
public:
    static constexpr qint64 MaxMilliseconds = 9'999'999'999'999; ///< in the year 2286
    static constexpr qint64 MaxCounter = 99'999;

    /// The earliest reading.
    constexpr HybridTime() = default;

    /// The last reading there is.
    [[nodiscard]] static constexpr HybridTime latest() { return { MaxMilliseconds, MaxCounter }; }

    /// Nothing where a number is negative or above its limit.
    [[nodiscard]] static std::optional<HybridTime> of(qint64 milliseconds, qint64 counter);

    /// Reads what toText() writes, and nothing else.
    [[nodiscard]] static std::optional<HybridTime> fromText(QByteArrayView text);

    /// Thirteen digits of milliseconds, a hyphen, five digits of the counter.
    [[nodiscard]] QByteArray toText() const;

    /// The reading right after this one; a full counter carries into the milliseconds. The latest
    /// reading is followed by itself.
    [[nodiscard]] HybridTime next() const;

    [[nodiscard]] qint64 milliseconds() const { return m_milliseconds; }
    [[nodiscard]] qint64 counter() const { return m_counter; }

    std::strong_ordering operator<=>(
        const HybridTime& other) const = default; // NOLINT(modernize-use-nullptr)

private:
    constexpr HybridTime(qint64 milliseconds, qint64 counter)
        : m_milliseconds(milliseconds)
        , m_counter(counter)
    {
    }

    qint64 m_milliseconds = 0;
    qint64 m_counter = 0;
};

} // namespace mirror
