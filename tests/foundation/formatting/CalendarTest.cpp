#include "Calendar.h"

#include <QTest>

/// In the time zone that main() sets: summer time from the last Sunday of March to the last Sunday
/// of October.
class CalendarTest : public QObject {
    Q_OBJECT

private:
    static std::optional<QDateTime> sixMonthsBefore(
        const QDateTime& date, const std::string& locale = "en_US")
    {
        return dateByAddingMonths(-6, date, locale);
    }

private Q_SLOTS:
    void aDayThatTheMonthLacksBecomesItsLastOne_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QDate>("result");
        QTest::newRow("31 August, common year") << QDate(2023, 8, 31) << QDate(2023, 2, 28);
        QTest::newRow("31 August, leap year") << QDate(2024, 8, 31) << QDate(2024, 2, 29);
        QTest::newRow("31 August, leap century") << QDate(2000, 8, 31) << QDate(2000, 2, 29);
        QTest::newRow("31 August, common century") << QDate(2100, 8, 31) << QDate(2100, 2, 28);
        QTest::newRow("30 August, common year") << QDate(2023, 8, 30) << QDate(2023, 2, 28);
        QTest::newRow("29 August, leap year") << QDate(2024, 8, 29) << QDate(2024, 2, 29);
        QTest::newRow("31 March, year before") << QDate(2024, 3, 31) << QDate(2023, 9, 30);
        QTest::newRow("31 December") << QDate(2023, 12, 31) << QDate(2023, 6, 30);
    }

    void aDayThatTheMonthLacksBecomesItsLastOne()
    {
        QFETCH(const QDate, date);
        QFETCH(const QDate, result);

        QCOMPARE(sixMonthsBefore({ date, QTime(10, 0) }), QDateTime(result, QTime(10, 0)));
    }

    void theYearChangesWhereNeeded_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<int>("months");
        QTest::addColumn<QDate>("result");
        QTest::newRow("back from January") << QDate(2024, 1, 1) << -6 << QDate(2023, 7, 1);
        QTest::newRow("back from June") << QDate(2024, 6, 15) << -6 << QDate(2023, 12, 15);
        QTest::newRow("not from July") << QDate(2024, 7, 15) << -6 << QDate(2024, 1, 15);
        QTest::newRow("several years") << QDate(2024, 3, 15) << -30 << QDate(2021, 9, 15);
        QTest::newRow("onwards") << QDate(2023, 8, 31) << 6 << QDate(2024, 2, 29);
        QTest::newRow("not at all") << QDate(2024, 2, 29) << 0 << QDate(2024, 2, 29);
    }

    void theYearChangesWhereNeeded()
    {
        QFETCH(const QDate, date);
        QFETCH(const int, months);
        QFETCH(const QDate, result);

        QCOMPARE(dateByAddingMonths(months, { date, QTime(10, 0) }, "en_US"),
            QDateTime(result, QTime(10, 0)));
    }

    void theTimeOfDayIsKeptToTheMillisecond()
    {
        const QTime time(23, 59, 59, 999);

        QCOMPARE(sixMonthsBefore({ QDate(2023, 11, 5), time }), QDateTime(QDate(2023, 5, 5), time));
    }

    void theTimeOfDayIsKeptAcrossAChangeToSummerTime_data()
    {
        QTest::addColumn<QDateTime>("date");
        QTest::addColumn<QDateTime>("utc");
        QTest::newRow("summer to winter") << QDateTime(QDate(2023, 7, 15), QTime(10, 0))
                                          << QDateTime(QDate(2023, 1, 15), QTime(9, 0), Qt::UTC);
        QTest::newRow("winter to summer") << QDateTime(QDate(2024, 1, 15), QTime(10, 0))
                                          << QDateTime(QDate(2023, 7, 15), QTime(8, 0), Qt::UTC);
    }

    void theTimeOfDayIsKeptAcrossAChangeToSummerTime()
    {
        QFETCH(const QDateTime, date);
        QFETCH(const QDateTime, utc);

        const auto result = sixMonthsBefore(date);

        QVERIFY(result);
        QCOMPARE(result->toUTC(), utc);
        QCOMPARE(result->time(), QTime(10, 0));
    }

    void aTimeThatTheDayLacksIsAnHourLater()
    {
        QCOMPARE(sixMonthsBefore({ QDate(2023, 9, 26), QTime(2, 30) }),
            QDateTime(QDate(2023, 3, 26), QTime(3, 30)));
    }

    void aTimeThatTheDayHasTwiceIsKept()
    {
        const auto result = sixMonthsBefore({ QDate(2024, 4, 29), QTime(2, 30) });

        QVERIFY(result);
        QCOMPARE(result->toString(Qt::ISODate), QStringLiteral("2023-10-29T02:30:00"));
    }

    void aDateOfAnotherTimeZoneIsTakenAsThatPointInTime()
    {
        // Here it is half past midnight on the 29th, a day that this February lacks.
        const QDateTime date(QDate(2023, 8, 28), QTime(22, 30), Qt::UTC);

        QCOMPARE(sixMonthsBefore(date), QDateTime(QDate(2023, 2, 28), QTime(0, 30)));
    }

    void monthsAreThoseOfTheLocalesCalendar_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QDate>("result");
        const QByteArray persian("fa_IR");
        QTest::newRow("31 Shahrivar 1402: 29 Esfand of a common year")
            << persian << QDate(2023, 9, 22) << QDate(2023, 3, 20);
        QTest::newRow("31 Shahrivar 1404: 30 Esfand of a leap year")
            << persian << QDate(2025, 9, 22) << QDate(2025, 3, 20);
        QTest::newRow("1 Farvardin 1403: 1 Mehr 1402")
            << persian << QDate(2024, 3, 20) << QDate(2023, 9, 23);
        const QByteArray hebrew("he_IL@calendar=hebrew");
        QTest::newRow("15 Av 5783: no leap month on the way, 15 Shevat")
            << hebrew << QDate(2023, 8, 2) << QDate(2023, 2, 6);
        QTest::newRow("15 Av 5784: the second Adar on the way, 15 of the first")
            << hebrew << QDate(2024, 8, 19) << QDate(2024, 2, 24);
        QTest::newRow("15 Elul 5784: 15 of the second Adar")
            << hebrew << QDate(2024, 9, 18) << QDate(2024, 3, 25);
        QTest::newRow("15 Elul 5783: 15 of the only Adar")
            << hebrew << QDate(2023, 9, 1) << QDate(2023, 3, 8);
        QTest::newRow("15 of the first Adar 5784: 15 Elul 5783")
            << hebrew << QDate(2024, 2, 24) << QDate(2023, 9, 1);
        QTest::newRow("15 of the second Adar 5784: 15 Tishri, the first on the way")
            << hebrew << QDate(2024, 3, 25) << QDate(2023, 9, 30);
        QTest::newRow("Gregorian unless the locale says otherwise")
            << QByteArray("he_IL") << QDate(2024, 8, 31) << QDate(2024, 2, 29);
    }

    void monthsAreThoseOfTheLocalesCalendar()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QDate, date);
        QFETCH(const QDate, result);

        QCOMPARE(sixMonthsBefore({ date, QTime(10, 0) }, locale.toStdString()),
            QDateTime(result, QTime(10, 0)));
    }

    void aDayThatTheHebrewLeapMonthLacksBecomesItsLastOne()
    {
        // 30 Av 5784, five months back: the second Adar has 29 days.
        QCOMPARE(
            dateByAddingMonths(-5, { QDate(2024, 9, 3), QTime(10, 0) }, "he_IL@calendar=hebrew"),
            QDateTime(QDate(2024, 4, 8), QTime(10, 0)));
    }
};

int main(int argc, char** argv)
{
    qputenv("TZ", "Europe/Berlin"); // read once, by the first who asks for the time
    QCoreApplication application(argc, argv);
    CalendarTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CalendarTest.moc"
