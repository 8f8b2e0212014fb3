#include "HybridClock.h"

#include <QTest>

#include <limits>

using mirror::HybridClock;
using mirror::HybridTime;
using mirror::WallTime;
using std::chrono::milliseconds;

namespace {

WallTime at(qint64 count) { return WallTime(milliseconds(count)); }

HybridTime reading(qint64 count, qint64 counter) { return HybridTime::of(count, counter).value(); }

} // namespace

class HybridClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aReadingIsWrittenWithLeadingZeros()
    {
        QCOMPARE(reading(1763690400000, 7).toText(), "1763690400000-00007");
        QCOMPARE(HybridTime().toText(), "0000000000000-00000");
        QCOMPARE(HybridTime::latest().toText(), "9999999999999-99999");
    }

    void aReadingOutsideTheLimitsIsNone_data()
    {
        QTest::addColumn<qint64>("count");
        QTest::addColumn<qint64>("counter");

        QTest::newRow("before 1970") << qint64(-1) << qint64(0);
        QTest::newRow("fourteen digits") << qint64(10'000'000'000'000) << qint64(0);
        QTest::newRow("negative counter") << qint64(0) << qint64(-1);
        QTest::newRow("six-digit counter") << qint64(0) << qint64(100'000);
    }
    void aReadingOutsideTheLimitsIsNone()
    {
        QFETCH(const qint64, count);
        QFETCH(const qint64, counter);

        QVERIFY(!HybridTime::of(count, counter));
    }

    void whatIsWrittenIsReadBack()
    {
        for (const HybridTime& time : { HybridTime(), reading(0, 1), reading(1, 0),
                 reading(1763690400000, 12345), HybridTime::latest() })
            QCOMPARE(HybridTime::fromText(time.toText()).value(), time);
    }

    void anyOtherTextIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no counter") << QByteArray("1763690400000");
        QTest::newRow("short counter") << QByteArray("1763690400000-0007");
        QTest::newRow("long counter") << QByteArray("1763690400000-000007");
        QTest::newRow("above the limit") << QByteArray("10000000000000-00000");
        QTest::newRow("short milliseconds, long counter") << QByteArray("176369040000-000007");
        QTest::newRow("wrong separator") << QByteArray("1763690400000_00007");
        QTest::newRow("sign") << QByteArray("-763690400000-00007");
        QTest::newRow("plus") << QByteArray("+763690400000-00007");
        QTest::newRow("blank") << QByteArray(" 763690400000-00007");
        QTest::newRow("blank after") << QByteArray("1763690400000-0007 ");
        QTest::newRow("hexadecimal") << QByteArray("176369040000a-00007");
        QTest::newRow("NUL") << QByteArray("1763690400000-0000\0", 19);
        QTest::newRow("foreign digits") << QByteArray("1763690400000-000\xd9\xa7");
    }
    void anyOtherTextIsRefused()
    {
        QFETCH(const QByteArray, text);

        QVERIFY(!HybridTime::fromText(text));
    }

    void readingsSortAsTheirTextsDo()
    {
        const std::vector<HybridTime> ascending { HybridTime(), reading(0, 99'999), reading(9, 5),
            reading(10, 0), reading(10, 3), reading(1763690400000, 0), HybridTime::latest() };

        for (std::size_t i = 1; i < ascending.size(); ++i) {
            QVERIFY(ascending[i - 1] < ascending[i]);
            QVERIFY(ascending[i - 1].toText() < ascending[i].toText());
        }
    }

    void aStampFollowsTheWallClock()
    {
        HybridClock clock;

        QCOMPARE(clock.next(at(5000)), reading(5000, 1));
        QCOMPARE(clock.next(at(6000)), reading(6000, 1));
    }

    void stampsRiseWhileTheWallClockStandsOrGoesBack()
    {
        HybridClock clock;
        QCOMPARE(clock.next(at(5000)), reading(5000, 1));

        QCOMPARE(clock.next(at(5000)), reading(5000, 2));
        QCOMPARE(clock.next(at(10)), reading(5000, 3));
    }

    void aFullCounterCarriesIntoTheMilliseconds()
    {
        HybridClock clock(reading(5000, 99'999));

        QCOMPARE(clock.next(at(5000)), reading(5001, 0));
        QCOMPARE(clock.next(at(5000)), reading(5001, 1));
    }

    void theOffsetCorrectsTheWallClock()
    {
        HybridClock clock;

        QCOMPARE(clock.next(at(5000), milliseconds(-2000)), reading(3000, 1));
        QCOMPARE(clock.next(at(5000), milliseconds(2000)), reading(7000, 1));
    }

    void aStampIsLaterThanEveryReadingObserved()
    {
        HybridClock clock;
        clock.observe(reading(9000, 4));
        clock.observe(reading(8000, 9)); // late news change nothing

        QCOMPARE(clock.next(at(5000)), reading(9000, 5));
    }

    void aRestoredClockGoesOnWhereItWas()
    {
        HybridClock first;
        const HybridTime stamp = first.next(at(5000));
        HybridClock restored(first.last());

        QVERIFY(restored.next(at(1)) > stamp);
    }

    void noWallClockStopsIt_data()
    {
        QTest::addColumn<qint64>("wall");
        QTest::addColumn<qint64>("offset");
        QTest::addColumn<HybridTime>("stamp");
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        constexpr qint64 most = std::numeric_limits<qint64>::max();

        QTest::newRow("before 1970") << qint64(-5) << qint64(0) << reading(0, 1);
        QTest::newRow("least") << least << least << reading(0, 1);
        QTest::newRow("most") << most << most << reading(9999999999999, 1);
        QTest::newRow("opposed") << most << least << reading(0, 1);
    }
    void noWallClockStopsIt()
    {
        QFETCH(const qint64, wall);
        QFETCH(const qint64, offset);
        QFETCH(const HybridTime, stamp);
        HybridClock clock;

        QCOMPARE(clock.next(at(wall), milliseconds(offset)), stamp);
    }

    void atTheLastReadingTheStampsRepeat()
    {
        HybridClock clock;
        clock.observe(HybridTime::latest());

        QCOMPARE(clock.next(at(5000)), HybridTime::latest());
        QCOMPARE(clock.next(at(5000)), HybridTime::latest());
    }
};

QTEST_APPLESS_MAIN(HybridClockTest)
#include "HybridClockTest.moc"
