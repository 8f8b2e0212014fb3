#include "ByteCountFormatter.h"

#include "Diagnostics.h"
#include "IcuText.h"

#include <unicode/numberformatter.h>

#include <array>

namespace {

using icu::MeasureUnit;

QString textOf(
    double number, const icu::number::UnlocalizedNumberFormatter& format, const std::string& locale)
{
    UErrorCode error = U_ZERO_ERROR;
    const icu::UnicodeString text
        = format.locale(icu::Locale(locale.c_str())).formatDouble(number, error).toString(error);
    if (U_FAILURE(error))
        fatalError(std::string("No format for bytes: ") + u_errorName(error));
    return fromIcu(text);
}

} // namespace

QString byteCountText(quint64 bytes, const std::string& locale)
{
    // Whole words for bytes: their abbreviation is the singular in many languages.
    if (bytes < 1000)
        return textOf(static_cast<double>(bytes),
            icu::number::NumberFormatter::with()
                .unit(MeasureUnit::getByte())
                .unitWidth(UNUM_UNIT_WIDTH_FULL_NAME),
            locale);

    const std::array units { MeasureUnit::getKilobyte(), MeasureUnit::getMegabyte(),
        MeasureUnit::getGigabyte(), MeasureUnit::getTerabyte(), MeasureUnit::getPetabyte() };
    double number = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    // From here on it would be rounded to 1000.0.
    for (; number >= 999.95 && unit + 1 < units.size(); ++unit)
        number /= 1000;
    return textOf(number,
        icu::number::NumberFormatter::with()
            .unit(units.at(unit))
            .unitWidth(UNUM_UNIT_WIDTH_SHORT)
            .precision(icu::number::Precision::fixedFraction(1))
            .roundingMode(UNUM_ROUND_HALFUP),
        locale);
}
