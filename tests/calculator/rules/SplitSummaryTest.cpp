#include "SplitSummary.h"
#include "Split.h"

#include <QTest>

namespace {

SplitInputs hundred()
{
    return { .bill = 100, .people = 4, .service = 1, .serviceGood = 5, .serviceExcellent = 10 };
}

QString summary(const SplitInputs& inputs, AmountStyle style = AmountStyle::WithCurrency)
{
    return splitSummary(inputs, split(inputs).value(), style);
}

} // namespace

class SplitSummaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWholeText()
    {
        SplitInputs inputs = hundred();
        inputs.tipFromEveryone = true;
        inputs.roundShare = true;

        QCOMPARE(summary(inputs),
            QStringLiteral("Based on 4 people dining.\n"
                           "The bill came to $100.00\n"
                           "Service was Good, tip given $20.00\n"
                           "\n"
                           "Grand total to pay $120.00\n"
                           "Everyone pays $30.00\n"
                           "(Everyone is paying a tip)\n"
                           "\n"
                           "The share has been rounded up.\n"
                           "\n"
                           "The tip is calculated as 5% of $100.00"));
    }

    void aRoundedTipIsSaidOnALineOfItsOwn()
    {
        SplitInputs inputs = hundred();
        inputs.service = 2;
        inputs.roundTip = true;

        QCOMPARE(summary(inputs),
            QStringLiteral("Based on 4 people dining.\n"
                           "The bill came to $100.00\n"
                           "Service was Excellent, tip given $10.00\n"
                           "\n"
                           "Grand total to pay $110.00\n"
                           "Everyone pays $27.50\n"
                           "\n"
                           "The tip has been rounded up.\n"
                           "\n"
                           "The tip is calculated as 10% of $100.00"));
    }

    void poorServiceSaysNothingOfATipEvenWhenItIsRounded()
    {
        SplitInputs inputs = hundred();
        inputs.service = 0;
        inputs.roundTip = true;

        QCOMPARE(summary(inputs),
            QStringLiteral("Based on 4 people dining.\n"
                           "The bill came to $100.00\n"
                           "Service was Poor, no tip given\n"
                           "\n"
                           "Grand total to pay $100.00\n"
                           "Everyone pays $25.00\n"));
    }

    void onePersonHasNoShareEvenWhenEveryonePaysAndSharesAreRounded()
    {
        SplitInputs inputs = hundred();
        inputs.people = 1;
        inputs.tipFromEveryone = true;
        inputs.roundShare = true;

        QCOMPARE(summary(inputs),
            QStringLiteral("Based on 1 people dining.\n"
                           "The bill came to $100.00\n"
                           "Service was Good, tip given $5.00\n"
                           "\n"
                           "Grand total to pay $105.00\n"
                           "\n"
                           "\n"
                           "The tip is calculated as 5% of $100.00"));
    }

    void anUnknownServiceReadsPoorButIsTreatedAsTipped()
    {
        SplitInputs inputs = hundred();
        inputs.service = 7;
        inputs.roundTip = true;

        QCOMPARE(summary(inputs),
            QStringLiteral("Based on 4 people dining.\n"
                           "The bill came to $100.00\n"
                           "Service was Poor, tip given $0.00\n"
                           "\n"
                           "Grand total to pay $100.00\n"
                           "Everyone pays $25.00\n"
                           "\n"
                           "The tip has been rounded up.\n"
                           "\n"
                           "The tip is calculated as 0% of $100.00"));
    }

    void theAmountStyleChangesEveryAmount()
    {
        SplitInputs inputs = hundred();
        inputs.bill = 1234.5;

        QCOMPARE(summary(inputs, AmountStyle::WithSeparator),
            QStringLiteral("Based on 4 people dining.\n"
                           "The bill came to 1,234.5\n"
                           "Service was Good, tip given 61.72\n"
                           "\n"
                           "Grand total to pay 1,296.22\n"
                           "Everyone pays 324.05\n"
                           "\n"
                           "\n"
                           "The tip is calculated as 5% of 1,234.5"));
        QVERIFY(!summary(inputs, AmountStyle::WithSeparator).contains(QLatin1Char('$')));
        QCOMPARE(summary(inputs, AmountStyle::WithCurrency).count(QLatin1Char('$')), 5);
    }
};

QTEST_GUILESS_MAIN(SplitSummaryTest)
#include "SplitSummaryTest.moc"
