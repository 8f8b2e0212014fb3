#include "FixedDigits.h"

#include <algorithm>

namespace mirror {

namespace {

constexpr int HexDigits = 16;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLowerHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f'); }

/// Every line of a file has several of these, so the base is known to the compiler, which then
/// divides by multiplying.
template <unsigned int Base> QByteArray digitsOf(quint64 number, int width)
{
    QByteArray text(width, '0');
    char* const digits = text.data();
    for (int i = width - 1; i >= 0 && number > 0; --i) {
        digits[i] = "0123456789abcdef"[number % Base];
        number /= Base;
    }
    return text;
}

} // namespace

QByteArray fixedDecimal(qint64 number, int width) { return digitsOf<10>(quint64(number), width); }

std::optional<qint64> readFixedDecimal(QByteArrayView text, int width)
{
    if (text.size() != width || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return text.toLongLong();
}

QByteArray fixedHex(quint64 number) { return digitsOf<16>(number, HexDigits); }

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
