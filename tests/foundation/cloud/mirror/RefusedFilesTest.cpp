#include "EngineDevice.h"

#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;
using Result = SyncReport::Result;
using Operation = MemoryFileStore::Operation;

namespace {

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
void saveOneByOne(EngineDevice& device, quint32 count)
{
    for (quint32 number = 1; number <= count; ++number) {
        device.save(note(number));
        device.engine.sync();
    }
}

} // namespace

/// Files that are not understood, refused, too many or too large: what a device makes of them.
class RefusedFilesTest : public QObject {
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

    /// The first file of the epoch that the device began with its first record.
    QString publishedBy(EngineDevice& device)
    {
        device.save(note(1));
        device.engine.sync();
        return fileIn(*m_files, device.epochFolder());
    }

    /// The server has no room for the next three files.
    MemoryFileStore::Faults noRoom()
    {
        return [this](const auto& request) {
            const bool isRefused = request.operation == Operation::Put && m_refusals > 0
                && request.path.endsWith(QStringLiteral(".jsonl"));
            m_refusals -= isRefused ? 1 : 0;
            return isRefused ? std::optional(MemoryFileStore::Fault {
                       .error = FileError { FileError::Kind::TooLarge, 413, std::nullopt, {} } })
                             : std::nullopt;
        };
    }

private Q_SLOTS:
    void init()
    {
        m_files = std::make_shared<MemoryFiles>();
        m_refusals = 3;
    }

    void whatIsNotUnderstoodIsNeverDeleted()
    {
        EngineDevice device(m_files);
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
        EngineDevice other(m_files);
        EngineDevice device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        const QString withheld = publishedBy(other);
        other.save(note(2));
        other.engine.sync();
        device.store.setFaults(failing(withheld, { kind, status, std::nullopt, {} }));
        device.save(note(3));

        const SyncReport report = device.engine.sync();
        other.engine.sync();

        QCOMPARE(report.result, Result::Done);
        QCOMPARE(report.records.doubtfulFiles, 1);
        QCOMPARE(device.ids(), (std::set { identity(2), identity(3) }));
        QCOMPARE(other.ids(), (std::set { identity(1), identity(2), identity(3) }));
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
        EngineDevice other(m_files);
        EngineDevice device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        device.store.setFaults(failing(publishedBy(other), { kind, 401, std::nullopt, {} }));
        device.save(note(2));

        QCOMPARE(device.engine.sync().result, Result::Failed);

        QCOMPARE(device.store.requests().last().operation, Operation::Get);
    }

    void aFileThatCannotBeReadIsTriedAgainAfterAWhile()
    {
        EngineDevice other(m_files);
        EngineDevice device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        device.store.setFaults(
            failing(publishedBy(other), { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.engine.sync();

        QCOMPARE(requestsIn(device, [&] { device.syncs(4, 1s); }), 4); // listings
        device.now += 1s;
        QCOMPARE(requestsIn(device, [&] { device.engine.sync(); }), 2);
        device.store.setFaults({});
        device.now += 15s;
        QCOMPARE(device.engine.sync().records.doubtfulFiles, 0);

        QCOMPARE(device.ids(), std::set { identity(1) });
    }

    void aFileThatIsWrittenAnewIsReadAtOnce()
    {
        EngineDevice other(m_files);
        EngineDevice device(m_files);
        QVERIFY(other.engine.switchOn() && device.engine.switchOn());
        const QString path = publishedBy(other);
        const QByteArray bytes = std::exchange(m_files->files[path], "half");
        device.store.setFaults(failing(path, { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.engine.sync();

        m_files->files[path] = bytes;
        device.store.setFaults({});
        device.engine.sync();

        QCOMPARE(device.ids(), std::set { identity(1) });
    }

    void filesBeyondTheLimitAreCountedAndNotRead()
    {
        EngineDevice device(m_files);
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
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        for (int i = 0; i < 9; ++i)
            addFile(*m_files, device.epochFolder(),
                QByteArray(FileLimits::ReadBytes, char('a' + i))); // 8 MiB each

        QCOMPARE(device.engine.sync().records.ignoredFiles, 1);
    }

    void twoDevicesThatJoinTheSameFilesLeaveWhatTheySaid()
    {
        EngineDevice first(m_files);
        EngineDevice second(m_files);
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
        EngineDevice third(m_files);
        QVERIFY(third.engine.switchOn());
        third.engine.sync();
        QCOMPARE(third.ids(), std::set { identity(1) });
        QCOMPARE(m_files->files.size(), 2); // the README, and what the first one wrote
    }

    void aServerThatKeepsOnlyHalvesIsNotFilledWithThem()
    {
        EngineDevice device(m_files);
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
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults(refusing(Operation::Remove, { kind, status, std::nullopt, {} }));

        QCOMPARE(device.syncs(100, 16min).result, Result::Done);

        QCOMPARE(m_files->files.size(), 1 + 5 + 1); // the README, the files, and what they say
        device.store.setFaults({});
        QCOMPARE(device.syncs(3, 25h).records.rowsPublished, 0);
        MirrorEngine nextStart = device.engineFor(QStringLiteral("someone"));
        for (int i = 0; i < 3; ++i) {
            nextStart.sync();
            device.now += 10min;
        }
        QCOMPARE(m_files->files.size(), 1 + 1);
    }

    void whatIsDeletedLateIsNotPublishedAgain()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults(
            refusing(Operation::Remove, { FileError::Kind::Locked, 423, std::nullopt, {} }));
        device.syncs(2, 1min);
        QCOMPARE(m_files->files.size(), 1 + 5 + 1);
        device.store.setFaults({});

        QCOMPARE(device.syncs(4, 10min).records.rowsPublished, 0);

        QCOMPARE(m_files->files.size(), 1 + 1);
    }

    void aFileThatCannotBeDeletedKeepsNoOther()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        const QString locked = fileIn(*m_files, device.epochFolder());
        device.store.setFaults([&](const auto& request) {
            return request.operation == Operation::Remove && request.path == locked
                ? std::optional(MemoryFileStore::Fault {
                    .error = FileError { FileError::Kind::Locked, 423, std::nullopt, {} } })
                : std::nullopt;
        });
        device.syncs(4, 10min);
        QCOMPARE(
            m_files->files.size(), 1 + 1 + 1); // the README, the locked one, and the joined one

        for (quint32 number = 6; number <= 12; ++number) {
            device.save(note(number));
            device.syncs(2, 16min);
        }

        QVERIFY(m_files->files.size() < 1 + 1 + 7);
        QVERIFY(m_files->files.contains(locked));
    }

    void aServerThatKeepsNothingNewIsNotFilledWithJoinedFiles_data() { refusals(); }
    void aServerThatKeepsNothingNewIsNotFilledWithJoinedFiles()
    {
        QFETCH(FileError::Kind, kind);
        QFETCH(int, status);
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        const QList<QString> before = m_files->files.keys();
        // A scanner keeps everybody from what is new.
        device.store.setFaults([&](const auto& request) {
            return request.operation == Operation::Get && !before.contains(request.path)
                ? std::optional(MemoryFileStore::Fault {
                    .error = FileError { kind, status, std::nullopt, {} } })
                : std::nullopt;
        });

        device.syncs(50, 16min);

        QCOMPARE(m_files->files.size(), 1 + 5 + 1);
    }

    void whatIsNoLongerWrittenElsewhereIsNotDeletedLater()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        const MemoryFiles before = *m_files;
        device.store.setFaults(
            refusing(Operation::Remove, { FileError::Kind::Server, 500, std::nullopt, {} }));
        device.syncs(2, 1min);
        *m_files = before; // the server was set back
        device.store.setFaults({});

        device.syncs(4, 10min);

        EngineDevice other(m_files);
        QVERIFY(other.engine.switchOn());
        other.engine.sync();
        QCOMPARE(other.ids(), device.ids());
    }

    void tidyingThatIsRefusedKeepsNobodyFromMirroring_data() { refusals(); }
    void tidyingThatIsRefusedKeepsNobodyFromMirroring()
    {
        QFETCH(FileError::Kind, kind);
        QFETCH(int, status);
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        saveOneByOne(device, 5);
        device.store.setFaults(refusing(Operation::Get, { kind, status, std::nullopt, {} }));

        QCOMPARE(device.syncs(3, 1min).result, Result::Done);

        QCOMPARE(m_files->files.size(), 1 + 5);
    }

    void partsAreHalvedUntilThereIsRoom()
    {
        EngineDevice device(m_files);
        for (quint32 number = 1; number <= 2000; ++number)
            device.save(note(number));
        device.store.setFaults(noRoom());
        QVERIFY(device.engine.switchOn());

        QCOMPARE(device.engine.sync().records.rowsPublished, 2000);

        QCOMPARE(m_refusals, 0);
        for (const QByteArray& bytes : m_files->files)
            QVERIFY(bytes.size() <= FileLimits::WrittenBytes / 8);
    }

    void partsGrowAgainAfterAnHour()
    {
        EngineDevice device(m_files);
        QVERIFY(device.engine.switchOn());
        device.engine.sync();
        device.store.setFaults(noRoom());
        for (quint32 number = 1; number <= 2000; ++number)
            device.save(note(number));
        device.engine.sync();
        device.now += 1h;
        m_files->files.clear();
        device.syncs(2, 1min); // what has vanished is written again

        QVERIFY(longestIn(*m_files) > FileLimits::WrittenBytes / 8);
    }

private:
    std::shared_ptr<MemoryFiles> m_files;
    int m_refusals = 0;
};

QTEST_APPLESS_MAIN(RefusedFilesTest)
#include "RefusedFilesTest.moc"
