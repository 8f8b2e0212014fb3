#include "SplitSummary.h"

#include "Formatting.h"
#include "Split.h"
#include "UserSettings.h"

#include <QCoreApplication>

namespace {

struct Sentences {
    Q_DECLARE_TR_FUNCTIONS(SplitSummary)
};

} // namespace

QString splitSummary(const SplitInputs& inputs, const Split& split, AmountStyle style)
{
    const auto amount = [style](double value) { return formattedAmount(value, style); };
    const auto line = [](const QString& sentence) { return QString(sentence + QLatin1Char('\n')); };
    const QString people = QString::number(inputs.people);
    const bool several = inputs.people != 1;
    // Not the same as the word: a level outside the picker reads "Poor" and is still treated as
    // tipped.
    const bool tipped = inputs.service != segServicePoor;

    QString text = line(Sentences::tr("Based on %1 people dining.").arg(people));
    text += line(Sentences::tr("The bill came to %1").arg(amount(split.sumTotal)));
    text += tipped ? Sentences::tr("Service was %1, tip given %2")
                         .arg(strService(inputs.service), amount(split.sumTip))
                   : Sentences::tr("Service was %1, no tip given").arg(strService(inputs.service));
    text += QLatin1String("\n\n")
        + line(Sentences::tr("Grand total to pay %1").arg(amount(split.grandTotal)));
    if (several) {
        text += line(Sentences::tr("Everyone pays %1").arg(amount(split.sumShare)));
        if (inputs.tipFromEveryone)
            text += line(Sentences::tr("(Everyone is paying a tip)"));
        if (inputs.roundShare)
            text += QLatin1Char('\n') + Sentences::tr("The share has been rounded up.");
    }
    if (inputs.roundTip && tipped)
        text += QLatin1Char('\n') + Sentences::tr("The tip has been rounded up.");
    if (tipped) {
        text += QLatin1String("\n\n")
            + Sentences::tr("The tip is calculated as %1% of %2")
                  .arg(QString::number(inputs.tipPercent()), amount(split.sumTotal));
    }
    return text;
}
