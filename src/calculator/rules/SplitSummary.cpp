#include "SplitSummary.h"

#include "Formatting.h"
#include "Split.h"
#include "UserSettings.h"

QString splitSummary(const SplitInputs& inputs, const Split& split, AmountStyle style)
{
    const auto amount = [style](double value) { return formattedAmount(value, style); };
    const QString people = QString::number(inputs.people);
    const bool several = inputs.people != 1;
    // Not the same as the word: a level outside the picker reads "Poor" and is still treated as
    // tipped.
    const bool tipped = inputs.service != segServicePoor;

    QString text = QLatin1String("Based on ") + people + QLatin1String(" people dining.");
    text += QLatin1String("\nThe bill came to ") + amount(split.sumTotal) + QLatin1Char('\n');
    text += QLatin1String("Service was ") + strService(inputs.service) + QLatin1String(", ");
    if (tipped)
        text += QLatin1String("tip given ") + amount(split.sumTip);
    else
        text += QLatin1String("no tip given");
    text += QLatin1String("\n\nGrand total to pay ") + amount(split.grandTotal) + QLatin1Char('\n');
    if (several) {
        text += QLatin1String("Everyone pays ") + amount(split.sumShare) + QLatin1Char('\n');
        if (inputs.tipFromEveryone)
            text += QLatin1String("(Everyone is paying a tip)\n");
        if (inputs.roundShare)
            text += QLatin1String("\nThe share has been rounded up.");
    }
    if (inputs.roundTip && tipped)
        text += QLatin1String("\nThe tip has been rounded up.");
    if (tipped) {
        text += QLatin1String("\n\nThe tip is calculated as ")
            + QString::number(inputs.tipPercent()) + QLatin1String("% of ")
            + amount(split.sumTotal);
    }
    return text;
}
