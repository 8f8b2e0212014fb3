#include "Formatting.h"

#include "AmountReader.h"
#include "CurrentLocale.h"
#include "DateFormatter.h"
#include "Diagnostics.h"
#include "NumberFormatter.h"

#include <QCoreApplication>

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Formatting)
};

constexpr std::string_view unexpectedNil
    = "Unexpectedly found nil while unwrapping an Optional value";

NumberFormatter makeDecimalFormatter(const std::string& locale)
{
    NumberFormatter formatter(locale);
    formatter.setStyle(NumberFormatter::Style::Decimal);
    formatter.setMaximumFractionDigits(2);
    return formatter;
}

NumberFormatter makeSeparatorFormatter()
{
    NumberFormatter formatter("en_US");
    formatter.setStyle(NumberFormatter::Style::Decimal);
    formatter.setGroupingSeparator(QStringLiteral(","));
    formatter.setMaximumFractionDigits(2);
    return formatter;
}

NumberFormatter makeCurrencyFormatter()
{
    NumberFormatter formatter(moneyLocale());
    // In this order the style's own grouping mark wins: amounts of money look as the locale has
    // them.
    formatter.setGroupingSeparator(QStringLiteral(","));
    formatter.setStyle(NumberFormatter::Style::Currency);
    formatter.setMaximumFractionDigits(2);
    return formatter;
}

/// The shortest text that reads back as exactly this value.
class ShortestText {
public:
    explicit ShortestText(double value)
        : m_end(std::to_chars(m_buffer.begin(), m_buffer.end(), value).ptr)
    {
    }

    [[nodiscard]] std::string_view view() const
    {
        return { m_buffer.data(), static_cast<std::size_t>(m_end - m_buffer.data()) };
    }

private:
    std::array<char, 32> m_buffer {};
    char* m_end;
};

std::optional<double> readDouble(std::string_view text)
{
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end)
        return std::nullopt;
    return value;
}

/// Drops final characters until the text is the shortest one of the value that it reads as.
double normalised(double amount)
{
    const ShortestText shortest(amount);
    for (std::string_view text = shortest.view();; text.remove_suffix(1)) {
        const std::optional<double> value = readDouble(text);
        if (!value)
            fatalError(unexpectedNil);
        if (ShortestText(*value).view() == text)
            return *value;
    }
}

std::string_view message(DecimalError error)
{
    switch (error) {
    case DecimalError::NotFinite:
        return "Double value cannot be converted to Int because it is either infinite or NaN";
    case DecimalError::BelowRange:
        return "Double value cannot be converted to Int because the result would be less than "
               "Int.min";
    case DecimalError::AboveRange:
        return "Double value cannot be converted to Int because the result would be greater than "
               "Int.max";
    }
    return {};
}

std::variant<qint64, DecimalError> cut(double value)
{
    if (!std::isfinite(value))
        return DecimalError::NotFinite;
    if (value < -9223372036854775808.0)
        return DecimalError::BelowRange;
    if (value >= 9223372036854775808.0)
        return DecimalError::AboveRange;
    return static_cast<qint64>(value);
}

template <typename Value> Value valueOrStop(const std::variant<Value, DecimalError>& value)
{
    if (const auto* error = std::get_if<DecimalError>(&value))
        fatalError(message(*error));
    return std::get<Value>(value);
}

/// Formats, reads back and formats again, so that what the first pattern leaves out is dropped.
QString reformatted(
    const std::optional<QDateTime>& date, const QString& coarsePattern, const QString& pattern)
{
    if (!date)
        return Words::tr("Unknown");
    DateFormatter formatter(dateLocale());
    formatter.setPattern(coarsePattern);
    const std::optional<QDateTime> coarse = formatter.date(formatter.string(*date));
    if (!coarse)
        fatalError(unexpectedNil);
    formatter.setPattern(pattern);
    return formatter.string(*coarse);
}

} // namespace

QString strBill() { return Words::tr("Bill"); }

QString strAreYouSure() { return Words::tr("Are you sure?"); }

const QString& currencySymbol()
{
    static const QString symbol = currencySymbolOf(moneyLocale());
    return symbol;
}

const NumberFormatter& numberFormatterDouble()
{
    static const NumberFormatter formatter = makeDecimalFormatter(numberLocale());
    return formatter;
}

QString textFromAmount(double amount) { return numberFormatterDouble().string(amount); }

std::optional<double> amountFromText(const QString& text)
{
    static const QStringList currencyMarks { currencySymbol(), currencyCodeOf(moneyLocale()) };
    return readAmount(text, numberFormatterDouble(), currencyMarks);
}

const NumberFormatter& numberFormatterInt()
{
    static const NumberFormatter formatter(numberLocale());
    return formatter;
}

const NumberFormatter& Formatter::withSeparator()
{
    static const NumberFormatter formatter = makeSeparatorFormatter();
    return formatter;
}

const NumberFormatter& Formatter::withCurrency()
{
    static const NumberFormatter formatter = makeCurrencyFormatter();
    return formatter;
}

QString formattedWithSeparator(double amount) { return Formatter::withSeparator().string(amount); }

QString formattedWithCurrency(double amount) { return Formatter::withCurrency().string(amount); }

QString yesOrNo(bool value) { return value ? Words::tr("Yes") : Words::tr("No"); }

double toDouble(const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber ? value : 0.0;
}

qint64 wholeNumber(double value) { return valueOrStop(cut(value)); }

std::variant<double, DecimalError> cutToCents(double amount)
{
    const std::variant<qint64, DecimalError> cents = cut(normalised(amount) * 100.0);
    if (const auto* error = std::get_if<DecimalError>(&cents))
        return *error;
    return static_cast<double>(std::get<qint64>(cents)) / 100.0;
}

double toDecimal(double dF) { return valueOrStop(cutToCents(dF)); }

QString strService(qint64 service)
{
    switch (service) {
    case 1:
        return Words::tr("Good");
    case 2:
        return Words::tr("Excellent");
    default:
        return Words::tr("Poor");
    }
}

QString dateStr(const std::optional<QDateTime>& date)
{
    return reformatted(date, QStringLiteral("EEE dd MM yyyy"), QStringLiteral("EEE dd MMM yyyy"));
}

QString timeStr(const std::optional<QDateTime>& date)
{
    return reformatted(date, QStringLiteral("HH:mm"), QStringLiteral("HH:mm"));
}

QString toString(const QByteArray& bytes) { return QString::fromUtf8(bytes); }
