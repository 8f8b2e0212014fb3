#include "FixedDigits.h"

#include <algorithm>

namespace mirror {

namespace {

constexpr int HexDigits = 16;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLowerHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f'); }

} // namespace

QByteArray fixedDecimal(qint64 number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

std::optional<qint64> readFixedDecimal(QByteArrayView text, int width)
{
    if (text.size() != width || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return text.toLongLong();
}

QByteArray fixedHex(quint64 number)
{
    return QByteArray::number(number, 16).rightJustified(HexDigits, '0');
}

std::optional<quint64> readFixedHex(QByteArrayView text)
{
    if (text.size() != HexDigits || !isLowerHex(text))
        return std::nullopt;
    return text.toULongLong(nullptr, 16);
}

bool isLowerHex(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(), isLowerHexDigit);
}

} // namespace mirror
