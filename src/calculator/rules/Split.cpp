#include "Split.h"

#include "Formatting.h"
#include "UserSettings.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

/// Up to the next whole unit. ceil() gives a negative zero just below zero, which nobody pays.
double roundedUp(double amount) { return std::ceil(amount) + 0.0; }

/// Exactly two decimals with a point, as the C library's "%.2f" in the C locale.
QString twoDecimals(double amount)
{
    std::array<char, 64> text {};
    const auto written
        = std::to_chars(text.begin(), text.end(), amount, std::chars_format::fixed, 2);
    return QString::fromLatin1(text.data(), written.ptr - text.data());
}

bool fitsDecimal(double amount) { return std::holds_alternative<double>(cutToCents(amount)); }

} // namespace

SplitInputs SplitInputs::fromSettings(const UserSettings& settings)
{
    return {
        .bill = settings.bill(),
        .people = settings.people(),
        .service = settings.service(),
        .serviceGood = settings.serviceGood(),
        .serviceExcellent = settings.serviceExcellent(),
        .tipFromEveryone = settings.tipFromEveryone(),
        .roundTip = settings.roundTip(),
        .roundShare = settings.roundShare(),
    };
}

qint64 SplitInputs::tipPercent() const
{
    if (service == segServiceGood)
        return serviceGood;
    if (service == segServiceExcellent)
        return serviceExcellent;
    return 0;
}

std::optional<Split> split(const SplitInputs& inputs)
{
    const auto people = static_cast<double>(inputs.people);
    if (inputs.people < 1 || !fitsDecimal(inputs.bill))
        return std::nullopt;

    Split result;
    result.sumTotal = toDecimal(inputs.bill);
    const double tip = result.sumTotal * static_cast<double>(inputs.tipPercent()) / 100.0;
    if (!fitsDecimal(tip))
        return std::nullopt;
    const double baseTip = toDecimal(tip);

    result.sumTip = baseTip;
    if (inputs.tipFromEveryone)
        result.sumTip *= people;
    if (inputs.roundTip)
        result.sumTip = roundedUp(result.sumTip);
    result.grandTotal = result.sumTotal + result.sumTip;
    if (!fitsDecimal(result.sumTip) || !fitsDecimal(result.grandTotal))
        return std::nullopt;

    result.sumShare = toDecimal(result.grandTotal / people);
    if (inputs.roundShare) {
        result.sumShare = roundedUp(result.sumShare);
        result.grandTotal = result.sumShare * people;
    }
    if (!fitsDecimal(result.sumShare) || !fitsDecimal(result.grandTotal))
        return std::nullopt;

    if (inputs.tipFromEveryone)
        result.strTip = QStringLiteral("(%1 x %2)").arg(twoDecimals(baseTip)).arg(inputs.people);
    return result;
}
