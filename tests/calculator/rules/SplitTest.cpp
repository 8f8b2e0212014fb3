#include "Split.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr qint64 poor = 0;
constexpr qint64 good = 1;
constexpr qint64 excellent = 2;

SplitInputs billOf(double bill, qint64 service, qint64 people)
{
    return {
        .bill = bill, .people = people, .service = service, .serviceGood = 5, .serviceExcellent = 10
    };
}

SplitInputs everyonePays(SplitInputs inputs)
{
    inputs.tipFromEveryone = true;
    return inputs;
}

SplitInputs roundingTip(SplitInputs inputs)
{
    inputs.roundTip = true;
    return inputs;
}

SplitInputs roundingShare(SplitInputs inputs)
{
    inputs.roundShare = true;
    return inputs;
}

} // namespace

Q_DECLARE_METATYPE(SplitInputs)

class SplitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workedExamples_data()
    {
        QTest::addColumn<SplitInputs>("inputs");
        QTest::addColumn<double>("sumTotal");
        QTest::addColumn<double>("sumTip");
        QTest::addColumn<double>("grandTotal");
        QTest::addColumn<double>("sumShare");
        QTest::addColumn<QString>("strTip");
        const QString none;

        QTest::newRow("poor service gives no tip")
            << billOf(100, poor, 3) << 100.0 << 0.0 << 100.0 << 33.33 << none;
        QTest::newRow("good service")
            << billOf(100, good, 3) << 100.0 << 5.0 << 105.0 << 35.0 << none;
        QTest::newRow("a rounded share raises the grand total")
            << roundingShare(billOf(100, excellent, 3)) << 100.0 << 10.0 << 111.0 << 37.0 << none;
        QTest::newRow("everyone pays the whole tip") << everyonePays(billOf(100, good, 4)) << 100.0
                                                     << 20.0 << 120.0 << 30.0 << u"(5.00 x 4)"_qs;
        QTest::newRow("a rounded tip")
            << roundingTip(billOf(33.33, good, 2)) << 33.33 << 2.0 << 35.33 << 17.66 << none;
        QTest::newRow("a bill of 0") << billOf(0, good, 2) << 0.0 << 0.0 << 0.0 << 0.0 << none;
        QTest::newRow("a bill of 0, everyone pays the tip")
            << everyonePays(billOf(0, good, 5)) << 0.0 << 0.0 << 0.0 << 0.0 << u"(0.00 x 5)"_qs;
        QTest::newRow("poor service, rounded tip")
            << roundingTip(billOf(100, poor, 4)) << 100.0 << 0.0 << 100.0 << 25.0 << none;
        QTest::newRow("poor service, everyone pays the tip")
            << everyonePays(billOf(100, poor, 4)) << 100.0 << 0.0 << 100.0 << 25.0
            << u"(0.00 x 4)"_qs;
        QTest::newRow("one person's share is the grand total")
            << billOf(100, good, 1) << 100.0 << 5.0 << 105.0 << 105.0 << none;
        QTest::newRow("one person, rounded share rounds the grand total")
            << roundingShare(billOf(33.33, good, 1)) << 33.33 << 1.66 << 35.0 << 35.0 << none;
        QTest::newRow("a bill and a tip are cut to cents")
            << billOf(10.019, good, 1) << 10.01 << 0.5 << 10.51 << 10.51 << none;
        QTest::newRow("the tip is rounded up before the share")
            << roundingShare(roundingTip(billOf(33.33, good, 2))) << 33.33 << 2.0 << 36.0 << 18.0
            << none;
        QTest::newRow("the multiplied tip is rounded up, not each person's")
            << roundingTip(everyonePays(billOf(33.33, good, 4))) << 33.33 << 7.0 << 40.33 << 10.08
            << u"(1.66 x 4)"_qs;
        QTest::newRow("a negative bill is computed as written")
            << billOf(-100, good, 3) << -100.0 << -5.0 << -105.0 << -35.0 << none;
        QTest::newRow("rounding up goes toward zero for a negative bill")
            << roundingShare(roundingTip(billOf(-33.33, good, 2))) << -33.33 << -1.0 << -34.0
            << -17.0 << none;
        QTest::newRow("an unknown service gives no tip")
            << billOf(100, 7, 4) << 100.0 << 0.0 << 100.0 << 25.0 << none;
    }

    void workedExamples()
    {
        QFETCH(const SplitInputs, inputs);
        QFETCH(const double, sumTotal);
        QFETCH(const double, sumTip);
        QFETCH(const double, grandTotal);
        QFETCH(const double, sumShare);
        QFETCH(const QString, strTip);

        const std::optional<Split> result = split(inputs);

        QVERIFY(result);
        QCOMPARE(result->sumTotal, sumTotal);
        QCOMPARE(result->sumTip, sumTip);
        QCOMPARE(result->grandTotal, grandTotal);
        QCOMPARE(result->sumShare, sumShare);
        QCOMPARE(result->strTip, strTip);
    }

    void withBothRoundingOptionsTheGrandTotalIsNoLongerTheBillAndTheTip()
    {
        const std::optional<Split> result
            = split(roundingShare(roundingTip(billOf(33.33, good, 2))));

        QVERIFY(result);
        QVERIFY(result->sumTotal + result->sumTip != result->grandTotal);
        QCOMPARE(result->grandTotal, result->sumShare * 2);
    }

    void theShareIsCutNotRounded()
    {
        const std::optional<Split> result = split(billOf(200, poor, 3));

        QVERIFY(result);
        QCOMPARE(result->sumShare, 66.66);
    }

    void figuresThatCannotBeCutToCentsGiveNoSplit_data()
    {
        QTest::addColumn<SplitInputs>("inputs");
        const double infinity = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const qint64 most = std::numeric_limits<qint64>::max();

        QTest::newRow("an infinite bill") << billOf(infinity, poor, 2);
        QTest::newRow("a bill that is no number") << billOf(nan, poor, 2);
        QTest::newRow("a bill beyond the range") << billOf(1e17, poor, 2);
        QTest::newRow("a negative bill beyond the range") << billOf(-1e17, poor, 2);
        QTest::newRow("a grand total beyond the range") << billOf(9.0e16, good, 2);
        QTest::newRow("everyone's tips beyond the range") << everyonePays(billOf(100, good, most));
        QTest::newRow("a raised grand total beyond the range")
            << roundingShare(billOf(9.0e16, poor, 8'000'000'000'000'000'000));
        QTest::newRow("nobody") << billOf(100, good, 0);
        QTest::newRow("fewer than nobody") << billOf(100, good, -1);
    }

    void figuresThatCannotBeCutToCentsGiveNoSplit()
    {
        QFETCH(const SplitInputs, inputs);

        QVERIFY(!split(inputs));
    }

    void roundingUpJustBelowZeroGivesNoNegativeZero()
    {
        const std::optional<Split> result
            = split(roundingShare(roundingTip(billOf(-0.5, good, 1))));

        QVERIFY(result);
        QVERIFY(!std::signbit(result->sumTip));
        QVERIFY(!std::signbit(result->sumShare));
        QVERIFY(!std::signbit(result->grandTotal));
    }

    void theExplanationOfTheTipRoundsAnExactHalfToEven()
    {
        // Exactly 93945226374571.625.
        SplitInputs inputs = everyonePays(billOf(105556434128732.16, good, 3));
        inputs.serviceGood = 89;
        const std::optional<Split> result = split(inputs);

        QVERIFY(result);
        QCOMPARE(result->strTip, QStringLiteral("(93945226374571.62 x 3)"));
    }

    void theGreatestBillThatFitsIsSplit()
    {
        const std::optional<Split> result = split(billOf(9.0e16, poor, 2));

        QVERIFY(result);
        QCOMPARE(result->sumShare, 4.5e16);
    }
};

QTEST_GUILESS_MAIN(SplitTest)
#include "SplitTest.moc"
