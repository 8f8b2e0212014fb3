#include "HybridTime.h"

#include "FixedDigits.h"

#include <QStringBuilder>

namespace mirror {

namespace {

constexpr int MillisecondDigits = 13;
constexpr int CounterDigits = 5;
constexpr int TextLength = MillisecondDigits + 1 + CounterDigits;

} // namespace

std::optional<HybridTime> HybridTime::of(qint64 milliseconds, qint64 counter)
{
    if (milliseconds < 0 || milliseconds > MaxMilliseconds || counter < 0 || counter > MaxCounter)
        return std::nullopt;
    return HybridTime(milliseconds, counter);
}

std::optional<HybridTime> HybridTime::fromText(QByteArrayView text)
{
    if (text.size() != TextLength || text[MillisecondDigits] != '-')
        return std::nullopt;
    const auto milliseconds = readFixedDecimal(text.first(MillisecondDigits), MillisecondDigits);
    const auto counter = readFixedDecimal(text.last(CounterDigits), CounterDigits);
    if (!milliseconds || !counter)
        return std::nullopt;
    return HybridTime(*milliseconds, *counter);
}

QByteArray HybridTime::toText() const
{
    return fixedDecimal(m_milliseconds, MillisecondDigits) + "-"
        + fixedDecimal(m_counter, CounterDigits);
}

HybridTime HybridTime::next() const
{
    if (m_counter < MaxCounter)
        return { m_milliseconds, m_counter + 1 };
    if (m_milliseconds < MaxMilliseconds)
        return { m_milliseconds + 1, 0 };
    return *this;
}

} // namespace mirror
