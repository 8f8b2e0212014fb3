#include "MirrorEngine.h"
#include "MemoryFileStore.h"
#include "MemoryMirror.h"
#include "MirrorFixture.h"

#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;
using Result = SyncReport::Result;
using Operation = MemoryFileStore::Operation;

namespace {

const MirrorFolders folders { QStringLiteral("org.example.notes/") };

/// One device, on which nothing is put off at random.
class Device {
public:
    explicit Device(
        std::shared_ptr<MemoryFiles> files, const QString& account = QStringLiteral("someone"))
        : store(std::move(files))
        , engine(engineFor(account))
    {
    }

    /// Another one on the same memory, as after a start.
    MirrorEngine engineFor(const QString& account)
    {
        return { { store, local, noteSchema(), [this] { return now; }, [this] { return ++drawn; } },
            { folders, account, "Ours.\n", WriterId(7),
                { .files = 4, .bytes = 100'000, .delay = 0ms } } };
    }

    void save(const Record& record)
    {
        LocalTransaction writing(local);
        local.records().store(record);
        QVERIFY(writing.commit());
    }
    /// As many syncs, a while apart.
    SyncReport syncs(int count, std::chrono::milliseconds pause)
    {
        SyncReport report;
        for (int i = 0; i < count; ++i) {
            report = engine.sync();
            now += pause;
        }
        return report;
    }
    [[nodiscard]] QString epochFolder() { return folders.epoch(*local.data().memory.epoch); }

    WallTime now { 1'763'690'400'000ms };
    quint64 drawn = 42; ///< the number that was drawn last
    MemoryMirror local;
    MemoryFileStore store;

    MirrorEngine engine;
};

Record note(quint32 number) { return { identity(number), liveNote({}, QStringLiteral("Note")) }; }

/// As long as a saved bill: ten thousand of them are more than three files.
Record bill(quint32 number)
{
    Note note { .amount = 1.0 / number, .count = qint32(number), .stamp = 1'763'690'400'000 };
    note.place = QString(200, QLatin1Char('x'));
    return { identity(number), liveNote(note, QStringLiteral("Dinner")) };
}

template <class Action> qsizetype requestsIn(Device& device, Action action)
{
    const qsizetype before = device.store.requests().size();
    action();
    return device.store.requests().size() - before;
}

std::set<QUuid> idsOf(Device& device)
{
    std::set<QUuid> ids;
    for (const auto& [id, carried] : device.local.data().records.rows)
        ids.insert(id);
    return ids;
}

/// Puts a file under the name of its bytes.
QString addFile(MemoryFiles& files, const QString& folder, const QByteArray& bytes)
{
    QString path = folder + FileName::of(FileContent::Records, bytes).toText();
    files.files.insert(path, bytes);
    return path;
}

QString fileIn(const MemoryFiles& files, const QString& folder)
{
    const auto first = files.files.lowerBound(folder);
    return first == files.files.end() ? QString() : first.key();
}

qsizetype longestIn(const MemoryFiles& files)
{
    qsizetype longest = 0;
    for (const QByteArray& bytes : files.files)
        longest = std::max(longest, bytes.size());
    return longest;
}

MemoryFileStore::Faults failing(const QString& path, const FileError& error)
{
    return [=](const MemoryFileStore::Request& request) {
        return request.operation == Operation::Get && request.path == path
            ? std::optional(MemoryFileStore::Fault { .error = error })
            : std::nullopt;
    };
}

MemoryFileStore::Faults refusing(Operation operation, const FileError& error)
{
    return [=](const MemoryFileStore::Request& request) {
        return request.operation == operation
            ? std::optional(MemoryFileStore::Fault { .error = error })
            : std::nullopt;
    };
}

/// Each in a file of its own.
void saveOneByOne(Device& device, quint32 count)
{
    for (quint32 number = 1; number <= count; ++number) {
        device.save(note(number));
        device.engine.sync();
    }
}

void removeFolder(MemoryFiles& files, const QString& folder)
{
    for (const QString& path : files.files.keys()) {
        if (path.startsWith(folder))
            files.files.remove(path);
    }
    files.collections.erase(folder);
}

} // namespace

class MirrorEngineTest : public QObject {
    Q_OBJECT

    static void refusals()
    {
        QTest::addColumn<FileError::Kind>("kind");
        QTest::addColumn<int>("status");
        QTest::newRow("server error") << FileError::Kind::Server << 500;
        QTest::newRow("locked") << FileError::Kind::Locked << 423;
        QTest::newRow("forbidden") << FileError::Kind::Unauthorised << 403;
        QTest::newRow("no room") << FileError::Kind::TooLarge << 507;
    }

private Q_SLOTS:
    void init()
    {
        m_files = std::make_shared<MemoryFiles>();
        m_isDecided = false;
    }

    void nothingIsMadeBeforeMirroringIsSwitchedOn()
    {
        Device device(m_files);
        device.save(note(1));

        QCOMPARE(device.engine.sync().result, Result::Done);

        QVERIFY(m_files->files.isEmpty() && m_files->collections.empty());
    }

    void aSecondDeviceReadsWhatTheFirstWrote()
    {
        Device first(m_files);
        Device second(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn() && second.engine.switchOn());

        QCOMPARE(first.engine.sync().result, Result::Done);
        QCOMPARE(second.engine.sync().records.rowsChanged, 1);

        QCOMPARE(idsOf(second), idsOf(first));
        QCOMPARE(second.epochFolder(), first.epochFolder());
    }

    void anIdlePollIsOneRequest()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.syncs(2, 5min);

        QCOMPARE(requestsIn(device, [&] { device.engine.sync(); }), 1);
    }

    void oneSavedBillIsFiveRequestsOnTwoDevices()
    {
        Device writer(m_files);
        Device reader(m_files);
        QVERIFY(writer.engine.switchOn() && reader.engine.switchOn());
        writer.syncs(2, 5min);
        reader.syncs(2, 5min);
        writer.save(note(1));

        QCOMPARE(requestsIn(writer, [&] { writer.engine.sync(); }), 3);
        QCOMPARE(requestsIn(reader, [&] { reader.engine.sync(); }), 2);

        QCOMPARE(idsOf(reader), std::set { identity(1) });
        QCOMPARE(requestsIn(writer, [&] { writer.engine.sync(); }), 1);
    }

    void tenThousandBillsAreFewRequests()
    {
        Device writer(m_files);
        Device reader(m_files);
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
        Device device(m_files);
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

    void whatIsNotUnderstoodIsNeverDeleted()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString folder = device.epochFolder();
        const QStringList kept { addFile(*m_files, folder, fileOf(noteHeader(1), { "{}" })),
            addFile(*m_files, folder, "another format\n"), folder + QStringLiteral("photo.jpg"),
            folder + QStringLiteral("b2-") + QString(64, QLatin1Char('0'))
                + QStringLiteral(".jsonl") };
        for (const QString& path : kept.mid(2))
            m_files->files.insert(path, "bytes");

        for (quint32 number = 1; number < 30; ++number) {
            device.save(note(number));
            device.syncs(2, 5min);
        }

        QVERIFY(m_files->files.size() < 15);
        for (const QString& path : kept)
            QVERIFY2(m_files->files.contains(path), qPrintable(path));
    }

    void aFileThatCannotBeReadKeepsNobodyFromTheOthers_data()
    {
        QTest::addColumn<FileError::Kind>("kind");
        QTest::addColumn<int>("status");
        QTest::newRow("server error") << FileError::Kind::Server << 500;
        QTest::newRow("locked") << FileError::Kind::Locked << 423;
        QTest::newRow("forbidden") << FileError::Kind::Unauthorised << 403;
        QTest::newRow("elsewhere") << FileError::Kind::Redirect << 302;
        QTest::newRow("too long") << FileError::Kind::NotUnderstood << 200;
    }
    void aFileThatCannotBeReadKeepsNobodyFromTheOthers()
    {
        QFETCH(FileError::Kind, kind);
        QFETCH(int, status);
        Device other(m_files);
        Device device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        other.save(note(1));
        other.engine.sync();
        const QString withheld = fileIn(*m_files, other.epochFolder());
        other.save(note(2));
        other.engine.sync();
        device.store.setFaults(failing(withheld, { kind, status, std::nullopt, {} }));
        device.save(note(3));

        const SyncReport report = device.engine.sync();
        other.engine.sync();

        QCOMPARE(report.result, Result::Done);
        QCOMPARE(report.records.doubtfulFiles, 1);
        QCOMPARE(idsOf(device), (std::set { identity(2), identity(3) }));
        QCOMPARE(idsOf(other), (std::set { identity(1), identity(2), identity(3) }));
    }

    void aServerThatFailsIsAskedForNothingMore_data()
    {
        QTest::addColumn<FileError::Kind>("kind");
        QTest::newRow("credentials refused") << FileError::Kind::Unauthorised;
        QTest::newRow("busy") << FileError::Kind::Busy;
        QTest::newRow("network") << FileError::Kind::Network;
    }
    void aServerThatFailsIsAskedForNothingMore()
    {
        QFETCH(FileError::Kind, kind);
        Device other(m_files);
        Device device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        other.save(note(1));
        other.engine.sync();
        device.store.setFaults(
            failing(fileIn(*m_files, other.epochFolder()), { kind, 401, std::nullopt, {} }));
        device.save(note(2));

        QCOMPARE(device.engine.sync().result, Result::Failed);

        QCOMPARE(device.store.requests().last().operation, Operation::Get);
    }

    void aFileThatCannotBeReadIsTriedAgainAfterAWhile()
    {
        Device other(m_files);
        Device device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        other.save(note(1));
        other.engine.sync();
        device.store.setFaults(failing(fileIn(*m_files, other.epochFolder()),
            { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.engine.sync();

        QCOMPARE(requestsIn(device, [&] { device.syncs(4, 1s); }), 4); // listings
        device.now += 1s;
        QCOMPARE(requestsIn(device, [&] { device.engine.sync(); }), 2);
        device.store.setFaults({});
        device.now += 15s;
        QCOMPARE(device.engine.sync().records.doubtfulFiles, 0);

        QCOMPARE(idsOf(device), std::set { identity(1) });
    }

    void aFileThatIsWrittenAnewIsReadAtOnce()
    {
        Device other(m_files);
        Device device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        other.save(note(1));
        other.engine.sync();
        const QString path = fileIn(*m_files, other.epochFolder());
        const QByteArray bytes = std::exchange(m_files->files[path], "half");
        device.store.setFaults(failing(path, { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.engine.sync();

        m_files->files[path] = bytes;
        device.store.setFaults({});
        device.engine.sync();

        QCOMPARE(idsOf(device), std::set { identity(1) });
    }

    void filesBeyondTheLimitAreCountedAndNotRead()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        for (int i = 0; i < 260; ++i)
            addFile(*m_files, device.epochFolder(), "file " + QByteArray::number(i));

        SyncReport report;
        const qsizetype requests = requestsIn(device, [&] { report = device.engine.sync(); });

        QCOMPARE(report.records.ignoredFiles, 4);
        QCOMPARE(requests, 1 + 256);
    }

    void bytesBeyondTheLimitAreCountedAndNotRead()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        for (int i = 0; i < 9; ++i)
            addFile(*m_files, device.epochFolder(),
                QByteArray(FileLimits::ReadBytes, char('a' + i))); // 8 MiB each

        QCOMPARE(device.engine.sync().records.ignoredFiles, 1);
    }

    void twoDevicesThatJoinTheSameFilesLeaveWhatTheySaid()
    {
        Device first(m_files);
        Device second(m_files);
        QVERIFY(second.engine.setDevice(DeviceId(2)));
        first.save(note(1));
        QVERIFY(first.engine.switchOn() && second.engine.switchOn());
        first.engine.sync(); // writes what it will write again if it joins files
        for (const quint64 writer : { 1U, 2U, 3U, 4U })
            addFile(*m_files, first.epochFolder(),
                writeRecords(std::array { note(1) }, noteSchema(), { {}, WriterId(writer) }).bytes);
        second.engine.sync();
        bool isBetween = false;
        second.store.setFaults([&](const auto& request) -> std::optional<MemoryFileStore::Fault> {
            // After the second one wrote, and before it deletes what it read.
            if (request.operation == Operation::Remove && !std::exchange(isBetween, true))
                first.syncs(2, 5min);
            return std::nullopt;
        });

        second.engine.sync();

        QVERIFY(isBetween);
        Device third(m_files);
        QVERIFY(third.engine.switchOn());
        third.engine.sync();
        QCOMPARE(idsOf(third), std::set { identity(1) });
        QCOMPARE(m_files->files.size(), 2); // the README, and what the first one wrote
    }

    void aServerThatKeepsOnlyHalvesIsNotFilledWithThem()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults([](const auto& request) {
            return request.operation == Operation::Put ? std::optional(MemoryFileStore::Fault {
                       .when = MemoryFileStore::Fault::When::Midway, .part = 10, .error = {} })
                                                       : std::nullopt;
        });

        device.syncs(50, 16min);

        QCOMPARE(m_files->files.size(), 1 + 5 + 1); // the README, the files, and one half
    }

    void aServerThatDeletesNothingIsNotFilledWithJoinedFiles_data() { refusals(); }
    void aServerThatDeletesNothingIsNotFilledWithJoinedFiles()
    {
        QFETCH(FileError::Kind, kind);
        QFETCH(int, status);
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults(refusing(Operation::Remove, { kind, status, std::nullopt, {} }));

        QCOMPARE(device.syncs(100, 16min).result, Result::Done);

        QCOMPARE(m_files->files.size(), 1 + 5 + 1); // the README, the files, and what they say
        device.store.setFaults({});
        device.syncs(2, 25h);
        QCOMPARE(m_files->files.size(), 1 + 1);
    }

    void whatIsNoLongerWrittenElsewhereIsNotDeletedLater()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        const MemoryFiles before = *m_files;
        device.store.setFaults(
            refusing(Operation::Remove, { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.syncs(2, 1min);
        *m_files = before; // the server was set back
        device.store.setFaults({});

        device.syncs(4, 10min);

        Device other(m_files);
        QVERIFY(other.engine.switchOn());
        other.engine.sync();
        QCOMPARE(idsOf(other), idsOf(device));
    }

    void tidyingThatIsRefusedKeepsNobodyFromMirroring_data() { refusals(); }
    void tidyingThatIsRefusedKeepsNobodyFromMirroring()
    {
        QFETCH(FileError::Kind, kind);
        QFETCH(int, status);
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults(refusing(Operation::Get, { kind, status, std::nullopt, {} }));

        QCOMPARE(device.syncs(3, 1min).result, Result::Done);

        QCOMPARE(m_files->files.size(), 1 + 5);
    }

    void partsAreHalvedUntilThereIsRoom()
    {
        Device device(m_files);
        for (quint32 number = 1; number <= 2000; ++number)
            device.save(note(number));
        device.store.setFaults([&](const auto& request) {
            const bool isFirst = request.operation == Operation::Put && m_refusals > 0
                && request.path.endsWith(QStringLiteral(".jsonl"));
            m_refusals -= isFirst ? 1 : 0;
            return isFirst ? std::optional(MemoryFileStore::Fault {
                       .error = FileError { FileError::Kind::TooLarge, 413, std::nullopt, {} } })
                           : std::nullopt;
        });
        QVERIFY(device.engine.switchOn());

        QCOMPARE(device.engine.sync().records.rowsPublished, 2000);

        QCOMPARE(m_refusals, 0);
        for (const QByteArray& bytes : m_files->files)
            QVERIFY(bytes.size() <= FileLimits::WrittenBytes / 8);
    }

    void partsGrowAgainAfterAnHour()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        device.store.setFaults([&](const auto& request) {
            const bool isRefused = request.operation == Operation::Put && m_refusals > 0;
            m_refusals -= isRefused ? 1 : 0;
            return isRefused ? std::optional(MemoryFileStore::Fault {
                       .error = FileError { FileError::Kind::TooLarge, 413, std::nullopt, {} } })
                             : std::nullopt;
        });
        for (quint32 number = 1; number <= 2000; ++number)
            device.save(note(number));
        device.engine.sync();
        device.now += 1h;
        m_files->files.clear();
        device.syncs(2, 1min); // what has vanished is written again

        QVERIFY(longestIn(*m_files) > FileLimits::WrittenBytes / 8);
    }

    void aMissingFolderIsMadeAgainAfterTenMinutes()
    {
        Device device(m_files);
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
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->collections.clear();

        const SyncReport report = device.syncs(20, 5min);

        QCOMPARE(report.result, Result::Failed);
        QVERIFY(m_files->collections.empty());
    }

    void aDeletedZoneStopsTheOthersAndKeepsTheirRows()
    {
        Device first(m_files);
        Device second(m_files);
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
        QCOMPARE(idsOf(second), std::set { identity(1) });
    }

    void whoeverDeletesTheZoneHasSwitchedMirroringOff()
    {
        Device device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();

        QVERIFY(device.engine.deleteZone());

        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Off);
        const SyncReport report = device.engine.sync();
        QCOMPARE(report.result, Result::Done);
        QCOMPARE(report.phase, MirrorPhase::Off);
        QVERIFY(!report.isDeletionPending);
        QCOMPARE(idsOf(device), std::set { identity(1) });
    }

    void aStoppedDeviceJoinsTheEpochThatAnotherOneBegins()
    {
        Device first(m_files);
        Device second(m_files);
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
        QCOMPARE(idsOf(second), (std::set { identity(1), identity(2), identity(3) }));
        QCOMPARE(idsOf(first), idsOf(second));
    }

    void aStoppedDeviceLooksAtTheZoneAtItsStartAndAtEveryTenthPoll()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->files.insert(
            folders.zone() + device.local.data().memory.epoch->closedMarkerName(), "{}\n");
        device.syncs(10, 5min);
        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Deleted);
        Device started(m_files);
        started.local.setData(device.local.data());

        QCOMPARE(started.syncs(21, 5min).result, Result::Stopped);

        const auto& requests = started.store.requests();
        QCOMPARE(std::ranges::count(requests, folders.zone(), &MemoryFileStore::Request::path), 3);
        QVERIFY(std::ranges::all_of(requests, [](const auto& request) {
            return request.operation == Operation::List && !request.path.contains(u"/e-");
        }));
    }

    void aStoppedDeviceMakesNothingOfItsOwn()
    {
        Device device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        m_files->files.insert(
            folders.zone() + device.local.data().memory.epoch->closedMarkerName(), "{}\n");
        device.syncs(10, 5min);
        *m_files = {};

        const SyncReport report = device.syncs(30, 5min);

        QCOMPARE(report.phase, MirrorPhase::Deleted);
        QVERIFY(m_files->files.isEmpty() && m_files->collections.empty());
    }

    void whatIsOffNeverLooksAtTheZone()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QVERIFY(device.engine.switchOff());
        const auto before = device.store.requests().size();

        device.syncs(25, 5min);

        for (const auto& request : device.store.requests().sliced(before))
            QVERIFY2(!request.path.startsWith(folders.zone()), qPrintable(request.path));
    }

    void whatIsSwitchedOffDuringASyncStaysOff()
    {
        Device device(m_files);
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
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString later = folders.epoch({ 9'999'999'999'999, 1 });
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
        Device device(m_files);
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
        Device device(m_files);
        QVERIFY(device.engine.switchOff());
        QVERIFY(device.engine.switchOn() && device.engine.deleteZone());

        QVERIFY(device.engine.switchOff());

        QCOMPARE(device.local.data().memory.phase, MirrorPhase::Off);
        QVERIFY(device.local.data().memory.deletion.has_value());
    }

    void aZoneDeletedAndSwitchedOnAgainBeginsAnew()
    {
        Device device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const QString before = device.epochFolder();
        device.now += 1s;

        QVERIFY(device.engine.deleteZone() && device.engine.switchOn());
        const SyncReport report = device.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QVERIFY(!report.isDeletionPending);
        QVERIFY(device.epochFolder() != before);
        QCOMPARE(report.records.rowsPublished, 1);
        QVERIFY(!m_files->collections.contains(before));
    }

    void aDeletionDoesNotWaitForAFolderThatIsGone()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QVERIFY(device.engine.deleteZone() && device.engine.switchOn());
        *m_files = {};
        device.now += 1s;

        const SyncReport report = device.engine.sync();

        QCOMPARE(report.phase, MirrorPhase::Mirroring);
        QVERIFY(!report.isDeletionPending);
    }

    void aDeletionThatIsDecidedBeforeTheFirstSyncIsDone()
    {
        Device first(m_files);
        QVERIFY(first.engine.switchOn());
        first.engine.sync();
        Device second(m_files); // which knows its account
        QVERIFY(second.engine.deleteZone());

        QVERIFY(!second.engine.sync().isDeletionPending);

        QCOMPARE(first.engine.sync().phase, MirrorPhase::Deleted);
    }

    void aDeletionThatIsDecidedWithoutAnAccountConcernsNoLaterOne()
    {
        Device first(m_files);
        first.save(note(1));
        QVERIFY(first.engine.switchOn());
        first.engine.sync();
        Device second(m_files, QString()); // without one
        QVERIFY(second.engine.deleteZone());
        MirrorEngine later = second.engineFor(QStringLiteral("someone"));

        QVERIFY(!later.sync().isDeletionPending);
        QVERIFY(later.switchOn());
        later.sync();

        QCOMPARE(idsOf(second), std::set { identity(1) });
        QCOMPARE(first.engine.sync().phase, MirrorPhase::Mirroring);
    }

    void aDeletionIsFinishedAfterAFailure()
    {
        Device device(m_files);
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
        Device device(m_files);
        device.save(note(1));
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const auto others = std::make_shared<MemoryFiles>();
        Device moved(others, QStringLiteral("another"));
        moved.local.setData(device.local.data());

        QCOMPARE(moved.engine.sync().phase, MirrorPhase::OtherAccount);
        QVERIFY(others->collections.empty());

        QVERIFY(moved.engine.switchOn());
        QCOMPARE(moved.engine.sync().records.rowsPublished, 1);
    }

    void anotherAccountStopsNothingThatIsOff()
    {
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        QVERIFY(device.engine.switchOff());
        Device moved(std::make_shared<MemoryFiles>(), QStringLiteral("another"));
        moved.local.setData(device.local.data());

        QCOMPARE(moved.engine.sync().phase, MirrorPhase::Off);
        QCOMPARE(moved.local.data().memory.account, QStringLiteral("another"));
    }

    void whoIsNotLetInWaitsForOtherCredentials()
    {
        Device device(m_files);
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
        Device device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        const Epoch later { 9'999'999'999'999, 1 };
        m_files->collections.insert(folders.epoch(later));
        const QByteArray bytes
            = writeRecords(std::array { note(5) }, noteSchema(), someOrigin()).bytes;
        addFile(*m_files, folders.epoch(later), bytes);
        const QString mine = device.epochFolder();

        device.syncs(12, 5min);

        QCOMPARE(device.epochFolder(), mine);
        QCOMPARE(idsOf(device), std::set { identity(5) });
        QVERIFY(device.local.data().records.rows.at(identity(5)).carrier->folder == mine);
    }

    void theServersClockCorrectsOurs()
    {
        Device device(m_files);
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
        Device device(m_files);
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
    int m_refusals = 3;
    bool m_isDecided = false;
};

QTEST_APPLESS_MAIN(MirrorEngineTest)
#include "MirrorEngineTest.moc"
