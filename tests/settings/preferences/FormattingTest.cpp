#include "Formatting.h"
#include "DeathTest.h"

#include <QTest>

#include <limits>

class FormattingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAmountIsCutToCentsAndNeverRounded_data()
    {
        QTest::addColumn<double>("amount");
        QTest::addColumn<double>("cents");
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("less than a cent") << 0.009 << 0.0;
        QTest::newRow("just below a unit") << 99.999 << 99.99;
        QTest::newRow("above half a cent") << 12.349 << 12.34;
        QTest::newRow("half a cent") << 12.345 << 12.34;
        QTest::newRow("whole") << 7.0 << 7.0;
        QTest::newRow("negative, toward zero") << -1.239 << -1.23;
        QTest::newRow("negative, less than a cent") << -0.009 << 0.0;
        QTest::newRow("product just below a whole: 0.29") << 0.29 << 0.28;
        QTest::newRow("product just below a whole: 1.15") << 1.15 << 1.14;
        QTest::newRow("large") << 92233720368547.0 << 92233720368547.0;
        QTest::newRow("written with an exponent") << 1e-7 << 0.0;
    }

    void anAmountIsCutToCentsAndNeverRounded()
    {
        QFETCH(const double, amount);
        QFETCH(const double, cents);

        QCOMPARE(toDecimal(amount), cents);
    }

    void anAmountThatCannotBeCutStopsTheProcess_data()
    {
        QTest::addColumn<double>("amount");
        QTest::addColumn<QByteArray>("message");
        const QByteArray prefix = "Double value cannot be converted to Int because ";
        const double infinity = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("infinity") << infinity
                                  << QByteArray(prefix + "it is either infinite or NaN\n");
        QTest::newRow("minus infinity")
            << -infinity << QByteArray(prefix + "it is either infinite or NaN\n");
        QTest::newRow("not a number")
            << nan << QByteArray(prefix + "it is either infinite or NaN\n");
        QTest::newRow("product overflows")
            << 1e308 << QByteArray(prefix + "it is either infinite or NaN\n");
        QTest::newRow("1e17") << 1e17
                              << QByteArray(prefix + "the result would be greater than Int.max\n");
        QTest::newRow("first product above the range")
            << 92233720368547758.08
            << QByteArray(prefix + "the result would be greater than Int.max\n");
        QTest::newRow("-1e17") << -1e17
                               << QByteArray(prefix + "the result would be less than Int.min\n");
    }

    void anAmountThatCannotBeCutStopsTheProcess()
    {
        QFETCH(const double, amount);
        QFETCH(const QByteArray, message);

        const Death death = deathOf([amount] { (void)toDecimal(amount); });

        QVERIFY(death.aborted);
        QVERIFY2(death.message == message, death.message.constData());
    }

    void aNumberIsCutTowardZero_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<qint64>("whole");
        QTest::newRow("7.83") << 7.83 << qint64(7);
        QTest::newRow("just below a whole") << 99.999 << qint64(99);
        QTest::newRow("whole") << 100.0 << qint64(100);
        QTest::newRow("negative") << -1.9 << qint64(-1);
        QTest::newRow("the least integer")
            << -9223372036854775808.0 << std::numeric_limits<qint64>::min();
    }

    void aNumberIsCutTowardZero()
    {
        QFETCH(const double, number);
        QFETCH(const qint64, whole);

        QCOMPARE(wholeNumber(number), whole);
    }

    void aNumberThatIsNoIntegerStopsTheProcess_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity()
                                  << QByteArray("it is either infinite or NaN\n");
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN()
                                      << QByteArray("it is either infinite or NaN\n");
        QTest::newRow("above the range")
            << 9223372036854775808.0 << QByteArray("the result would be greater than Int.max\n");
        QTest::newRow("below the range")
            << -9223372036854777856.0 << QByteArray("the result would be less than Int.min\n");
    }

    void aNumberThatIsNoIntegerStopsTheProcess()
    {
        QFETCH(const double, number);
        QFETCH(const QByteArray, reason);

        const Death death = deathOf([number] { (void)wholeNumber(number); });

        const QByteArray message = "Double value cannot be converted to Int because " + reason;
        QVERIFY(death.aborted);
        QVERIFY2(death.message == message, death.message.constData());
    }

    void theLeastIntegerCanStillBeCut()
    {
        QCOMPARE(toDecimal(-92233720368547758.08), -92233720368547758.08);
    }

    void whyAnAmountCannotBeCutIsAValueToo()
    {
        QCOMPARE(std::get<DecimalError>(cutToCents(1e17)), DecimalError::AboveRange);
        QCOMPARE(std::get<DecimalError>(cutToCents(-1e17)), DecimalError::BelowRange);
        QCOMPARE(std::get<DecimalError>(cutToCents(std::numeric_limits<double>::infinity())),
            DecimalError::NotFinite);
        QCOMPARE(std::get<double>(cutToCents(1.15)), 1.14);
    }

    void everyUnknownServiceIsPoor_data()
    {
        QTest::addColumn<qint64>("service");
        QTest::addColumn<QString>("name");
        QTest::newRow("-1") << qint64(-1) << QStringLiteral("Poor");
        QTest::newRow("0") << qint64(0) << QStringLiteral("Poor");
        QTest::newRow("1") << qint64(1) << QStringLiteral("Good");
        QTest::newRow("2") << qint64(2) << QStringLiteral("Excellent");
        QTest::newRow("3") << qint64(3) << QStringLiteral("Poor");
    }

    void everyUnknownServiceIsPoor()
    {
        QFETCH(const qint64, service);
        QFETCH(const QString, name);

        QCOMPARE(strService(service), name);
    }

    void anAbsentDateIsUnknown()
    {
        QCOMPARE(dateStr(std::nullopt), QStringLiteral("Unknown"));
        QCOMPARE(timeStr(std::nullopt), QStringLiteral("Unknown"));
    }

    void aDateIsWrittenAsWeekdayDayMonthYear()
    {
        const QDateTime date(QDate(2023, 11, 5), QTime(19, 5, 42));

        QCOMPARE(dateStr(date), QStringLiteral("Sun 05 Nov 2023"));
        QCOMPARE(timeStr(date), QStringLiteral("19:05"));
    }

    void everyMinuteOfADayKeepsItsDayAndItsTime()
    {
        for (int minute = 0; minute < 24 * 60; ++minute) {
            const QDateTime date(QDate(2024, 2, 29), QTime(minute / 60, minute % 60, 59, 999));

            QCOMPARE(dateStr(date), QStringLiteral("Thu 29 Feb 2024"));
            QCOMPARE(timeStr(date), date.toString(QStringLiteral("HH:mm")));
        }
    }

    void yesAndNo()
    {
        QCOMPARE(yesOrNo(true), QStringLiteral("Yes"));
        QCOMPARE(yesOrNo(false), QStringLiteral("No"));
    }

    void aTextThatIsNoNumberIsZero()
    {
        QCOMPARE(toDouble(QStringLiteral("12.5")), 12.5);
        QCOMPARE(toDouble(QStringLiteral("12,5")), 0.0);
        QCOMPARE(toDouble(QStringLiteral("twelve")), 0.0);
        QCOMPARE(toDouble(QString()), 0.0);
    }

    void invalidUtf8BecomesReplacementCharacters()
    {
        QCOMPARE(toString(QByteArray("caf\xc3\xa9")), QStringLiteral("café"));
        QCOMPARE(toString(QByteArray("a\xff"
                                     "b")),
            QStringLiteral("a\ufffdb"));
    }

    void theTextsOfSavedBills()
    {
        QCOMPARE(strBill(), QStringLiteral("Bill"));
        QCOMPARE(strAreYouSure(), QStringLiteral("Are you sure?"));
    }
};

QTEST_GUILESS_MAIN(FormattingTest)
#include "FormattingTest.moc"
