#include "SyncTriggers.h"

#include <QSignalSpy>
#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

SyncReport failure(FileError::Kind kind)
{
    SyncReport report;
    report.result = SyncReport::Result::Failed;
    report.error = FileError { kind, 0, std::nullopt, QStringLiteral("A failure of the test.") };
    report.comeBack = 1h;
    return report;
}

SyncReport success(std::optional<std::chrono::milliseconds> comeBack)
{
    SyncReport report;
    report.comeBack = comeBack;
    return report;
}

} // namespace

/// When a server is asked, and when it is left alone.
class SyncTriggersTest : public QObject {
    Q_OBJECT

private:
    using Kind = FileError::Kind;

private Q_SLOTS:
    void aReturnToTheWindowIsDueAtOnce()
    {
        SyncTriggers triggers;
        QSignalSpy due(&triggers, &SyncTriggers::due);
        triggers.noteReport(success(5min));

        QVERIFY(triggers.noteReturn());

        QVERIFY(due.wait());
    }

    void aReturnDoesNotHurryAServerThatSaidWhen_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("busy") << int(Kind::Busy);
        QTest::newRow("locked") << int(Kind::Locked);
        QTest::newRow("no room") << int(Kind::TooLarge);
        QTest::newRow("refused credentials") << int(Kind::Unauthorised);
    }

    void aReturnDoesNotHurryAServerThatSaidWhen()
    {
        QFETCH(const int, kind);
        SyncTriggers triggers;
        triggers.noteReport(failure(Kind(kind)));

        QVERIFY(!triggers.noteReturn());
    }

    void aReturnTriesAServerAgainThatCouldNotBeReached_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("network") << int(Kind::Network);
        QTest::newRow("another one in its place") << int(Kind::Untrusted);
    }

    void aReturnTriesAServerAgainThatCouldNotBeReached()
    {
        QFETCH(const int, kind);
        SyncTriggers triggers;
        QSignalSpy due(&triggers, &SyncTriggers::due);
        triggers.noteReport(failure(Kind(kind)));

        QVERIFY(triggers.noteReturn());

        QVERIFY(due.wait());
    }

    void newCredentialsAreTriedAtOnce()
    {
        SyncTriggers triggers;
        QSignalSpy due(&triggers, &SyncTriggers::due);
        triggers.noteReport(failure(Kind::Unauthorised));

        triggers.syncNow();

        QVERIFY(due.wait());
        QVERIFY(triggers.noteReturn()); // and the failure counts no more
    }

    void theReportSaysWhenToComeBack()
    {
        SyncTriggers triggers;
        QSignalSpy due(&triggers, &SyncTriggers::due);

        triggers.noteReport(success(1ms));

        QVERIFY(due.wait());
    }

    void aLookAtTheWindowBringsThePollNearerAndNeverFarther()
    {
        SyncTriggers triggers;
        triggers.noteReport(success(5min));
        QVERIFY(triggers.nextPoll() > 4min);

        triggers.setActive(true);
        QVERIFY(triggers.nextPoll() < 70s); // a coarse timer, of a minute

        triggers.noteReport(success(1s));
        triggers.setActive(false);
        triggers.setActive(true);
        QVERIFY(triggers.nextPoll() < 2s);
    }

    void aLookAtTheWindowDoesNotChangeWhatAServerSaid()
    {
        SyncTriggers triggers;
        triggers.noteReport(failure(Kind::Busy)); // for an hour

        triggers.setActive(true);

        QVERIFY(triggers.nextPoll() > 59min);
    }

    void anEditIsDueSoonAndOnce()
    {
        SyncTriggers triggers;
        QSignalSpy due(&triggers, &SyncTriggers::due);
        triggers.noteReport(success(std::nullopt));

        for (int i = 0; i < 3; ++i)
            triggers.noteEdit();

        QVERIFY(due.wait(30'000));
        QCOMPARE(due.size(), 1);
    }
};

QTEST_GUILESS_MAIN(SyncTriggersTest)
#include "SyncTriggersTest.moc"
