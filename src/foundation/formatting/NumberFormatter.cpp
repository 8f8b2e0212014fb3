#include "NumberFormatter.h"

#include "Diagnostics.h"
#include "IcuText.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/ucurr.h>

#include <algorithm>
#include <cmath>

struct NumberFormatter::Format {
    icu::DecimalFormat decimal;

    void setSymbol(icu::DecimalFormatSymbols::ENumberFormatSymbol which, const QString& text)
    {
        icu::DecimalFormatSymbols symbols(*decimal.getDecimalFormatSymbols());
        symbols.setSymbol(which, toIcu(text));
        decimal.setDecimalFormatSymbols(symbols);
    }

    /// ICU reads more than a locale writes: "1E5" whatever the pattern, and in some locales a
    /// foreign comma or point as if it were the locale's own mark.
    [[nodiscard]] bool isStrict(char16_t c) const
    {
        using Symbols = icu::DecimalFormatSymbols;
        if (c != u',' && c != u'.')
            return !QChar(c).isLetter();
        const Symbols& symbols = *decimal.getDecimalFormatSymbols();
        return symbols.getConstSymbol(Symbols::kDecimalSeparatorSymbol) == c
            || symbols.getConstSymbol(Symbols::kGroupingSeparatorSymbol) == c;
    }

    /// No locale groups digits after a leading zero: "0.500" is half a unit of somebody who is used
    /// to points, and not five hundred.
    [[nodiscard]] bool isZeroWithGroups(const QString& text) const
    {
        const auto* const digit
            = std::find_if(text.begin(), text.end(), [](QChar c) { return c.digitValue() >= 0; });
        const QString mark = fromIcu(decimal.getDecimalFormatSymbols()->getConstSymbol(
            icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
        return digit != text.end() && digit->digitValue() == 0 && text.contains(mark);
    }
};

namespace {

UNumberFormatStyle icuStyle(NumberFormatter::Style style)
{
    return style == NumberFormatter::Style::Currency ? UNUM_CURRENCY : UNUM_DECIMAL;
}

icu::DecimalFormat makeDecimalFormat(const std::string& locale, NumberFormatter::Style style)
{
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(icu::Locale(locale.c_str()), icuStyle(style), error));
    const auto* decimal = dynamic_cast<const icu::DecimalFormat*>(format.get());
    if (!decimal)
        fatalError(std::string("No number format: ") + u_errorName(error));
    return *decimal;
}

} // namespace

NumberFormatter::NumberFormatter(const std::string& locale)
    : m_locale(locale)
{
    setStyle(Style::Plain);
}

NumberFormatter::~NumberFormatter() = default;
NumberFormatter::NumberFormatter(NumberFormatter&&) noexcept = default;
NumberFormatter& NumberFormatter::operator=(NumberFormatter&&) noexcept = default;

void NumberFormatter::setStyle(Style style)
{
    m_format = std::make_unique<Format>(Format { makeDecimalFormat(m_locale, style) });
    m_format->decimal.setLenient(false);
    if (style == Style::Plain) {
        m_format->decimal.setGroupingUsed(false);
        m_format->decimal.setMaximumFractionDigits(0);
    } else if (style == Style::Currency && currencyCodeOf(m_locale).isEmpty()) {
        m_format->setSymbol(icu::DecimalFormatSymbols::kCurrencySymbol, currencySymbolOf(m_locale));
    }
}

void NumberFormatter::setGroupingSeparator(const QString& separator)
{
    m_format->setSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol, separator);
    m_format->setSymbol(icu::DecimalFormatSymbols::kMonetaryGroupingSeparatorSymbol, separator);
}

void NumberFormatter::setMaximumFractionDigits(int digits)
{
    m_format->decimal.setMaximumFractionDigits(digits);
}

QString NumberFormatter::string(double number) const
{
    icu::UnicodeString text;
    m_format->decimal.format(number, text);
    return fromIcu(text);
}

std::optional<double> NumberFormatter::number(const QString& text) const
{
    const bool strict = std::all_of(
        text.begin(), text.end(), [this](QChar c) { return m_format->isStrict(c.unicode()); });
    if (text.isEmpty() || !strict || m_format->isZeroWithGroups(text))
        return std::nullopt;

    icu::Formattable result;
    icu::ParsePosition position(0);
    m_format->decimal.parse(toIcu(text), result, position);
    if (position.getIndex() != text.size())
        return std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    const double number = result.getDouble(error);
    if (U_FAILURE(error) || !std::isfinite(number))
        return std::nullopt;
    return number;
}

QString currencyCodeOf(const std::string& locale)
{
    char16_t code[4] = {};
    UErrorCode error = U_ZERO_ERROR;
    ucurr_forLocale(locale.c_str(), code, 4, &error);
    if (U_FAILURE(error))
        return {};
    return QString::fromUtf16(code);
}

QString currencySymbolOf(const std::string& locale)
{
    if (currencyCodeOf(locale).isEmpty())
        return QStringLiteral("$");
    UErrorCode error = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icu::Locale(locale.c_str()), error);
    return fromIcu(symbols.getConstSymbol(icu::DecimalFormatSymbols::kCurrencySymbol));
}
