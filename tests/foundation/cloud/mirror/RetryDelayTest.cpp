#include "RetryDelay.h"

#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;
using Kind = FileError::Kind;
using Delay = std::optional<std::chrono::milliseconds>;

namespace {

constexpr double middle = 0.5; // neither shorter nor longer by chance

Delay delayAfter(Kind kind, int attempt, double random = middle)
{
    return retryDelay({ kind, 0, std::nullopt, {} }, attempt, random);
}

} // namespace

class RetryDelayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whoIsNotLetInDoesNotKnockAgain()
    {
        QCOMPARE(delayAfter(Kind::Unauthorised, 1), Delay());
        QCOMPARE(delayAfter(Kind::Untrusted, 1), Delay());
    }

    void failuresDoubleTheDelayUpToAQuarterOfAnHour()
    {
        QCOMPARE(delayAfter(Kind::Network, 1), Delay(5s));
        QCOMPARE(delayAfter(Kind::Server, 2), Delay(10s));
        QCOMPARE(delayAfter(Kind::NotUnderstood, 8), Delay(640s));
        QCOMPARE(delayAfter(Kind::Network, 9), Delay(15min));
        QCOMPARE(delayAfter(Kind::Network, 1'000'000), Delay(15min));
    }

    void failuresAreSpreadByAFifth()
    {
        QCOMPARE(delayAfter(Kind::Network, 1, 0), Delay(4s));
        QCOMPARE(delayAfter(Kind::Network, 1, 1), Delay(6s));
    }

    void aLockIsWaitedForTenTimes()
    {
        QCOMPARE(delayAfter(Kind::Locked, 1), Delay(5s));
        QCOMPARE(delayAfter(Kind::Locked, 10), Delay(60s));
        QCOMPARE(delayAfter(Kind::Locked, 11), delayAfter(Kind::Server, 1));
        QCOMPARE(delayAfter(Kind::Locked, 30), Delay(15min));
    }

    void aBusyServerSaysForHowLong()
    {
        QCOMPARE(retryDelay({ Kind::Busy, 503, 90s, {} }, 5, middle), Delay(90s));
        QCOMPARE(retryDelay({ Kind::Busy, 429, 1000h, {} }, 1, middle), Delay(24h));
        QCOMPARE(retryDelay({ Kind::Busy, 429, std::chrono::seconds::max(), {} }, 1, middle),
            Delay(24h)); // more than milliseconds can say
        QCOMPARE(delayAfter(Kind::Busy, 1), Delay(1min));
        QCOMPARE(delayAfter(Kind::Busy, 20), Delay(1h));
    }

    void roomIsLookedForHourly() { QCOMPARE(delayAfter(Kind::TooLarge, 1), Delay(1h)); }
};

QTEST_APPLESS_MAIN(RetryDelayTest)
#include "RetryDelayTest.moc"
