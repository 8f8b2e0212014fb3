#include "EngineDevice.h"

#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;
using Result = SyncReport::Result;
using Operation = MemoryFileStore::Operation;

namespace {

/// As long as a saved bill: ten thousand of them are more than three files.
Record bill(quint32 number)
{
    Note note { .amount = 1.0 / number, .count = qint32(number), .stamp = 1'763'690'400'000 };
    note.place = QString(200, QLatin1Char('x'));
    return { identity(number), liveNote(note, QStringLiteral("Dinner")) };
}

void removeFolder(MemoryFiles& files, const QString& folder)
{
    for (const QString& path : files.files.keys()) {
        if (path.startsWith(folder))
            files.files.remove(path);
    }
    files.collections.erase(folder);
}

/// Its markers are stored, its folders are not deleted yet.
void beginDeletion(EngineDevice& device)
{
    device.store.setFaults([](const auto& request) {
        return request.operation == Operation::Remove ? std::optional(MemoryFileStore::Fault {
                   .error = FileError { FileError::Kind::Network, 0, std::nullopt, {} } })
                                                      : std::nullopt;
    });
    QVERIFY(device.engine.deleteZone());
    QVERIFY(device.engine.sync().isDeletionPending);
    device.store.setFaults({});
}

} // namespace

class MirrorEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files = std::make_shared<MemoryFiles>();
        m_isDecided = false;
    }

    void nothingIsMadeBeforeMirroringIsSwitchedOn()
    {
        EngineDevice device(m_files);
        device.save(note(1));

        QCOMPARE(device.engine.sync().result, Result::Done);

        QVERIFY(m_files->files.isEmpty() && m_files->collections.empty());
    }

    void aSecondDeviceReadsWhatTheFirstWrote()
    {
        EngineDevice first(m_files);
        EngineDevice second(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn() && second.engine.switchOn());

        QCOMPARE(first.engine.sync().result, Result::Done);
        QCOMPARE(second.engine.sync().records.rowsChanged, 1);

        QCOMPARE(second.ids(), first.ids());
        QCOMPARE(second.epochFolder(), first.epochFolder());
    }

    void anIdlePollIsOneRequest()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.syncs(2, 5min);

        QCOMPARE(requestsIn(device, [&] { device.engine.sync(); }), 1);
    }

    void oneSavedBillIsFiveRequestsOnTwoDevices()
    {
        EngineDevice writer(m_files);
        EngineDevice reader(m_files);
        QVERIFY(writer.engine.switchOn() && reader.engine.switchOn());
        writer.syncs(2, 5min);
        reader.syncs(2, 5min);
        writer.save(note(1));

        QCOMPARE(requestsIn(writer, [&] { writer.engine.sync(); }), 3);
        QCOMPARE(requestsIn(reader, [&] { reader.engine.sync(); }), 2);

        QCOMPARE(reader.ids(), std::set { identity(1) });
        QCOMPARE(requestsIn(writer, [&] { writer.engine.sync(); }), 1);
    }

    void tenThousandBillsAreFewRequests()
    {
        EngineDevice writer(m_files);
        EngineDevice reader(m_files);
        LocalTransaction writing(writer.local);
        for (quint32 number = 1; number <= 10'000; ++number)
            writer.local.records().store(bill(number));
        QVERIFY(writing.commit());
        QVERIFY(writer.engine.switchOn() && reader.engine.switchOn());

        const auto written = requestsIn(writer, [&] { writer.engine.sync(); });
        const auto read = requestsIn(reader, [&] { reader.engine.sync(); });

        QVERIFY2(written <= 20, QByteArray::number(written).constData());
        QVERIFY2(read <= 20, QByteArray::number(read).constData());
        QCOMPARE(reader.local.data().records.rows.size(), 10'000U);
    }

    void aRowThatIsReadIsThreeCallsToTheStore()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        std::vector<Record> notes;
        for (quint32 number = 1; number <= 1000; ++number)
            notes.push_back({ identity(number), deadNote(number) });
        addFile(
            *m_files, device.epochFolder(), writeRecords(notes, noteSchema(), someOrigin()).bytes);
        int calls = 0;
        device.local.called = [&] { ++calls; };

        device.engine.sync();

        QVERIFY2(calls < 3 * 1000 + 100, QByteArray::number(calls).constData());
        QCOMPARE(device.local.data().memory.lastTime, timeAt(1000));
    }

    void aMissingFolderIsMadeAgainAfterTenMinutes()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString lost = device.epochFolder();
        removeFolder(*m_files, lost);

        const SyncReport early = device.syncs(5, 2min);
        QCOMPARE(early.result, Result::Waiting);
        QVERIFY(early.comeBack.has_value());
        QCOMPARE(m_files->files.size(), 1); // the README

        QCOMPARE(device.engine.sync().result, Result::Done);
        QVERIFY(device.epochFolder() != lost);
        QCOMPARE(m_files->files.size(), 2);
    }

    void aListingThatFailsSaysNothingOfAbsence()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->collections.clear();

        const SyncReport report = device.syncs(20, 5min);

        QCOMPARE(report.result, Result::Failed);
        QVERIFY(m_files->collections.empty());
    }

    void aDeletedZoneStopsTheOthersAndKeepsTheirRows()
    {
        EngineDevice first(m_files);
        EngineDevice second(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn() && second.engine.switchOn());
        first.engine.sync();
        second.engine.sync();
        const QString folder = first.epochFolder();

        QVERIFY(first.engine.deleteZone());
        QVERIFY(!first.engine.sync().isDeletionPending);
        const SyncReport report = second.engine.sync();

        QVERIFY(!m_files->collections.contains(folder));
        QCOMPARE(report.result, Result::Stopped);
        QCOMPARE(report.phase, MirrorPhase::Deleted);
        QVERIFY(report.comeBack.has_value());
        QCOMPARE(second.ids(), std::set { identity(1) });
    }

    void whoeverDeletesTheZoneHasSwitchedMirroringOff()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();

        QVERIFY(device.engine.deleteZone());

        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Off);
        const SyncReport report = device.engine.sync();
        QCOMPARE(report.result, Result::Done);
        QCOMPARE(report.phase, MirrorPhase::Off);
        QVERIFY(!report.isDeletionPending);
        QCOMPARE(device.ids(), std::set { identity(1) });
    }

    void aStoppedDeviceJoinsTheEpochThatAnotherOneBegins()
    {
        EngineDevice first(m_files);
        EngineDevice second(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn() && second.engine.switchOn());
        first.engine.sync();
        second.engine.sync();
        QVERIFY(first.engine.deleteZone());
        first.engine.sync();
        QCOMPARE(second.engine.sync().phase, MirrorPhase::Deleted);
        second.save(note(2));
        first.save(note(3));
        first.now += 1s;

        QVERIFY(first.engine.switchOn());
        first.engine.sync();
        const SyncReport report = second.syncs(10, 5min);
        first.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QCOMPARE(second.epochFolder(), first.epochFolder());
        QCOMPARE(second.ids(), (std::set { identity(1), identity(2), identity(3) }));
        QCOMPARE(first.ids(), second.ids());
    }

    void aStoppedDeviceLooksAtTheZoneAtItsStartAndAtEveryTenthPoll()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->files.insert(
            deviceFolders().zone() + device.local.data().memory.epoch->closedMarkerName(), "{}\n");
        device.syncs(10, 5min);
        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Deleted);
        EngineDevice started(m_files);
        started.local.setData(device.local.data());

        QCOMPARE(started.syncs(21, 5min).result, Result::Stopped);

        const auto& requests = started.store.requests();
        QCOMPARE(
            std::ranges::count(requests, deviceFolders().zone(), &MemoryFileStore::Request::path),
            3);
        QVERIFY(std::ranges::all_of(requests, [](const auto& request) {
            return request.operation == Operation::List && !request.path.contains(u"/e-");
        }));
    }

    void aStoppedDeviceMakesNothingOfItsOwn()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->files.insert(
            deviceFolders().zone() + device.local.data().memory.epoch->closedMarkerName(), "{}\n");
        device.syncs(10, 5min);
        *m_files = {};

        const SyncReport report = device.syncs(30, 5min);

        QCOMPARE(report.phase, MirrorPhase::Deleted);
        QVERIFY(m_files->files.isEmpty() && m_files->collections.empty());
    }

    void whatIsOffNeverLooksAtTheZone()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QVERIFY(device.engine.switchOff());
        const auto before = device.store.requests().size();

        device.syncs(25, 5min);

        for (const auto& request : device.store.requests().sliced(before))
            QVERIFY2(!request.path.startsWith(deviceFolders().zone()), qPrintable(request.path));
    }

    void whatIsSwitchedOffDuringASyncStaysOff()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.store.setFaults([&](const auto& request) -> std::optional<MemoryFileStore::Fault> {
            if (request.operation == Operation::MakeCollection)
                m_isDecided = device.engine.switchOff();
            return std::nullopt;
        });

        const SyncReport report = device.engine.sync();

        QVERIFY(m_isDecided);
        QCOMPARE(report.phase, MirrorPhase::Off);
        QCOMPARE(report.records.rowsPublished, 0);
    }

    void aDeletionThatIsDecidedDuringAnotherOneIsDone()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString later = deviceFolders().epoch({ 9'999'999'999'999, 1 });
        device.store.setFaults([&](const auto& request) -> std::optional<MemoryFileStore::Fault> {
            if (request.operation == Operation::Remove && !m_isDecided) {
                m_files->collections.insert(later);
                m_isDecided = device.engine.deleteZone();
            }
            return std::nullopt;
        });

        QVERIFY(device.engine.deleteZone());
        QVERIFY(device.engine.sync().isDeletionPending);
        QVERIFY(!device.engine.sync().isDeletionPending);

        QVERIFY(!m_files->collections.contains(later));
    }

    void switchingOnWhatIsOnChangesNothing()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn() && device.engine.switchOn());
        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Joining);
        device.engine.sync();
        device.engine.sync();
        const auto before = device.store.requests().size();

        QVERIFY(device.engine.switchOn());
        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Mirroring);
        device.engine.sync();

        QCOMPARE(device.store.requests().size() - before, 1);
    }

    void switchingOffWhatIsOffChangesNothing()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOff());
        QVERIFY(device.engine.switchOn() && device.engine.deleteZone());

        QVERIFY(device.engine.switchOff());

        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Off);
        QVERIFY(device.local.data().memory.deletion.has_value());
    }

    void aDeletionThatHasNotBegunIsNoneAfterSwitchingOnAgain()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const MemoryFiles before = *m_files;
        device.now += 1s;

        QVERIFY(device.engine.deleteZone() && device.engine.switchOn());
        const SyncReport report = device.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QVERIFY(!report.isDeletionPending);
        QCOMPARE(m_files->files, before.files);
        QCOMPARE(m_files->collections, before.collections);
    }

    void aDeletionThatHasBegunIsEndedBeforeTheZoneBeginsAnew()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString before = device.epochFolder();
        device.now += 1s;
        beginDeletion(device);

        QVERIFY(device.engine.switchOn());
        const SyncReport report = device.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QVERIFY(!report.isDeletionPending);
        QVERIFY(device.epochFolder() != before);
        QCOMPARE(report.records.rowsPublished, 1);
        QVERIFY(!m_files->collections.contains(before));
    }

    void aDeletionDoesNotWaitForAFolderThatIsGone()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        beginDeletion(device);
        QVERIFY(device.engine.switchOn());
        *m_files = {};
        device.now += 1s;

        const SyncReport report = device.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QVERIFY(!report.isDeletionPending);
    }

    void aDeletionThatIsDecidedBeforeTheFirstSyncIsDone()
    {
        EngineDevice first(m_files);
        QVERIFY(first.engine.switchOn());
        first.engine.sync();
        EngineDevice second(m_files); // which knows its account
        QVERIFY(second.engine.deleteZone());

        QVERIFY(!second.engine.sync().isDeletionPending);

        QCOMPARE(first.engine.sync().phase, MirrorPhase::Deleted);
    }

    void aDeletionThatIsDecidedWithoutAnAccountConcernsNoLaterOne()
    {
        EngineDevice first(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn());
        first.engine.sync();
        EngineDevice second(m_files, QString()); // without one
        QVERIFY(second.engine.deleteZone());
        MirrorEngine later = second.engineFor(QStringLiteral("someone"));

        QVERIFY(!later.sync().isDeletionPending);
        QVERIFY(later.switchOn());
        later.sync();

        QCOMPARE(second.ids(), std::set { identity(1) });
        QCOMPARE(first.engine.sync().phase, MirrorPhase::Mirroring);
    }

    void aDeletionIsFinishedAfterAFailure()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString folder = device.epochFolder();
        device.store.setFaults([](const auto& request) {
            return request.operation == Operation::Remove ? std::optional(MemoryFileStore::Fault {})
                                                          : std::nullopt;
        });

        QVERIFY(device.engine.deleteZone());
        QVERIFY(device.engine.sync().isDeletionPending);
        QVERIFY(m_files->collections.contains(folder));
        device.store.setFaults({});
        QVERIFY(!device.engine.sync().isDeletionPending);
        QVERIFY(!m_files->collections.contains(folder));
    }

    void anotherAccountStopsUntilMirroringIsSwitchedOn()
    {
        EngineDevice device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const auto others = std::make_shared<MemoryFiles>();
        EngineDevice moved(others, QStringLiteral("another"));
        moved.local.setData(device.local.data());

        QCOMPARE(moved.engine.sync().phase, MirrorPhase::OtherAccount);
        QVERIFY(others->collections.empty());

        QVERIFY(moved.engine.switchOn());
        QCOMPARE(moved.engine.sync().records.rowsPublished, 1);
    }

    void anotherAccountStopsNothingThatIsOff()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QVERIFY(device.engine.switchOff());
        EngineDevice moved(std::make_shared<MemoryFiles>(), QStringLiteral("another"));
        moved.local.setData(device.local.data());

        QCOMPARE(moved.engine.sync().phase, MirrorPhase::Off);
        QCOMPARE(moved.local.data().memory.account, QStringLiteral("another"));
    }

    void whoIsNotLetInWaitsForOtherCredentials()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.store.setFaults([](const auto&) {
            return MemoryFileStore::Fault { .error
                = FileError { FileError::Kind::Unauthorised, 401, std::nullopt, {} } };
        });

        const SyncReport report = device.engine.sync();

        QCOMPARE(report.result, Result::Failed);
        QCOMPARE(report.comeBack, std::nullopt);
        QCOMPARE(device.store.requests().size(), 1);
    }

    void whatWasWrittenIntoASecondEpochIsNotLost()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const Epoch later { 9'999'999'999'999, 1 };
        m_files->collections.insert(deviceFolders().epoch(later));
        const QByteArray bytes
            = writeRecords(std::array { note(5) }, noteSchema(), someOrigin()).bytes;
        addFile(*m_files, deviceFolders().epoch(later), bytes);
        const QString mine = device.epochFolder();

        device.syncs(12, 5min);

        QCOMPARE(device.epochFolder(), mine);
        QCOMPARE(device.ids(), std::set { identity(5) });
        QVERIFY(device.local.data().records.rows.at(identity(5)).carrier->folder == mine);
    }

    void theServersClockCorrectsOurs()
    {
        EngineDevice device(m_files);
        device.store.setServerDate(
            QDateTime::fromMSecsSinceEpoch((device.now + 61s).time_since_epoch().count(), Qt::UTC));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QCOMPARE(device.local.data().memory.clockOffset, 61'000ms);

        device.store.setServerDate(
            QDateTime::fromMSecsSinceEpoch((device.now + 59s).time_since_epoch().count(), Qt::UTC));
        device.engine.sync();
        QCOMPARE(device.local.data().memory.clockOffset, 0ms);
    }

    void aClockIsNeverBehindWhatItRead()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const Record future { identity(1), deadNote(9'000'000'000'000) };
        addFile(*m_files, device.epochFolder(),
            writeRecords(std::array { future }, noteSchema(), someOrigin()).bytes);

        device.engine.sync();

        QCOMPARE(device.local.data().memory.lastTime, timeAt(9'000'000'000'000));
    }

private:
    std::shared_ptr<MemoryFiles> m_files;
    bool m_isDecided = false;
};

QTEST_APPLESS_MAIN(MirrorEngineTest)
#include "MirrorEngineTest.moc"
