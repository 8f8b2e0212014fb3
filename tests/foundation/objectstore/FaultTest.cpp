#include "FaultyVfs.h"
#include "StoreFixture.h"

#include <QTest>

#include <csignal>
#include <random>
#include <set>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// How often a fault is tried: as often as the environment says, so that a
/// longer run by hand needs no other program.
int roundsOf(const char* variable, int usual)
{
    const int wanted = qEnvironmentVariableIntValue(variable);
    return wanted > 0 ? wanted : usual;
}

/// What PRAGMA integrity_check says of a file: "ok" where nothing is wrong.
QString integrityOf(const QString& path)
{
    sqlite3* database = nullptr;
    QString answer = QStringLiteral("cannot open");
    if (sqlite3_open(path.toUtf8().constData(), &database) == SQLITE_OK)
        sqlite3_exec(
            database, "PRAGMA integrity_check",
            [](void* out, int, char** values, char**) {
                *static_cast<QString*>(out) = QString::fromUtf8(values[0]);
                return 0;
            },
            &answer, nullptr);
    sqlite3_close(database);
    return answer;
}

std::set<int> storedCounts(const QString& file)
{
    const auto container = openContainer(file);
    std::set<int> counts;
    const auto notes = container->viewContext().fetch({ QStringLiteral("Note"), {}, {} });
    for (const auto& note : *notes)
        counts.insert(note->value(QStringLiteral("count")).toInt());
    return counts;
}

/// Saves records in pairs, and reports each save, until the process is killed.
void saveAndReport(const QString& file, int first, int pipe)
{
    const auto container = openContainer(file);
    for (int i = first;; i += 2) {
        for (const int number : { i, i + 1 })
            addNote(container->viewContext(), QString(200, QLatin1Char('x')), number)
                ->setValue(number, QStringLiteral("count"));
        mustSave(container->viewContext());
        (void)!::write(pipe, &i, sizeof i);
    }
}

/// Lets a child process save until it is killed after so many microseconds.
std::vector<int> savesBeforeTheKill(const QString& file, int first, unsigned microseconds)
{
    int ends[2] = {};
    if (::pipe(ends) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        saveAndReport(file, first, ends[1]);
        ::_exit(0);
    }
    ::close(ends[1]);
    // The first report shows that the store is open; the kill falls at random
    // after it.
    std::vector<int> saved;
    int number = 0;
    if (::read(ends[0], &number, sizeof number) == sizeof number)
        saved.push_back(number);
    ::usleep(microseconds);
    ::kill(child, SIGKILL);
    while (::read(ends[0], &number, sizeof number) == sizeof number)
        saved.push_back(number);
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return saved;
}

} // namespace

class FaultTest : public QObject {
    Q_OBJECT

private:
    static void addPair(NSManagedObjectContext& context, int number)
    {
        for (const int each : { number, number + 1 })
            addNote(context, QString(300, QLatin1Char('x')), each)
                ->setValue(each, QStringLiteral("count"));
    }

private Q_SLOTS:
    void init() { FaultyVfs::install().wipe(); }

    void whatWasSavedSurvivesAPowerCut()
    {
        FaultyVfs& disk = FaultyVfs::install();
        std::random_device device;
        const unsigned seed = device();
        std::mt19937 random(seed);
        for (int round = 0; round < roundsOf("OBJECTSTORE_POWER_CUTS", 500); ++round) {
            disk.wipe();
            const StoreFolder folder;
            std::set<int> saved;
            int number = 0;
            disk.cutPowerAt(1 + static_cast<int>(random() % 120), static_cast<unsigned>(random()));
            if (const auto container
                = std::make_unique<NSPersistentContainer>(QStringLiteral("Notes"), noteModel())) {
                container->persistentStoreDescriptions().front().setURL(
                    QUrl::fromLocalFile(folder.file()));
                container->loadPersistentStores([](const auto&, const auto&) {});
                NSManagedObjectContext& context = container->viewContext();
                for (addPair(context, number); context.save(); addPair(context, number)) {
                    saved.insert({ number, number + 1 });
                    number += 2;
                }
            }
            QVERIFY(disk.isPowerCut());
            disk.restorePower();

            const std::set<int> stored = storedCounts(folder.file());

            const QByteArray where
                = "seed " + QByteArray::number(seed) + ", round " + QByteArray::number(round);
            // The save that was cut off may have reached the disk, but only as a
            // whole.
            std::set<int> orOneMore = saved;
            orOneMore.insert({ number, number + 1 });
            QVERIFY2(stored == saved || stored == orOneMore, where.constData());
            QVERIFY2(integrityOf(folder.file()) == QLatin1String("ok"), where.constData());
        }
    }

    void aWriteThatFailsAtAnyPointOfASaveIsReportedAndLeavesNothing_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<StoreError::Code>("expected");
        QTest::newRow("disk full") << SQLITE_FULL << StoreError::Code::DiskFull;
        QTest::newRow("I/O error") << SQLITE_IOERR_WRITE << StoreError::Code::InputOutput;
    }

    void aWriteThatFailsAtAnyPointOfASaveIsReportedAndLeavesNothing()
    {
        QFETCH(const int, code);
        QFETCH(const StoreError::Code, expected);
        FaultyVfs& disk = FaultyVfs::install();
        int failures = 0;
        for (int point = 1;; ++point) {
            disk.wipe();
            const StoreFolder folder;
            const auto container = openContainer(folder.file());
            NSManagedObjectContext& context = container->viewContext();
            addPair(context, 0);
            mustSave(context);
            for (int i = 2; i < 40; i += 2)
                addPair(context, i);

            disk.refuseWritesFrom(point, code);
            const Result<void> saved = context.save();
            disk.allowWrites();

            if (saved) { // every write of the save was refused once
                QVERIFY(!disk.hasRefused());
                break;
            }
            ++failures;
            QCOMPARE(saved.error().code, expected);
            QVERIFY(context.hasChanges());
            QCOMPARE(storedCounts(folder.file()), (std::set<int> { 0, 1 }));
            mustSave(context);
            QCOMPARE(storedCounts(folder.file()).size(), std::size_t(40));
            QCOMPARE(integrityOf(folder.file()), QStringLiteral("ok"));
        }
        QVERIFY(failures > 5);
    }

    void aStoreThatCannotBeMadeForAFullDiskIsMadeLater()
    {
        FaultyVfs& disk = FaultyVfs::install();
        int failures = 0;
        for (int point = 1;; ++point) {
            disk.wipe();
            const StoreFolder folder;

            disk.refuseWritesFrom(point, SQLITE_FULL);
            const auto error = openError(folder.file());
            disk.allowWrites();

            if (!error)
                break;
            ++failures;
            QCOMPARE(error->code, StoreError::Code::DiskFull);
            const auto container = openContainer(folder.file());
            addPair(container->viewContext(), 0);
            mustSave(container->viewContext());
            QCOMPARE(integrityOf(folder.file()), QStringLiteral("ok"));
        }
        QVERIFY(failures > 5);
    }

    void aNewRecordThatCannotBeSavedCanBeTakenOutAgain()
    {
        FaultyVfs& disk = FaultyVfs::install();
        const StoreFolder folder;
        const auto container = openContainer(folder.file());
        NSManagedObjectContext& context = container->viewContext();
        const auto note = addNote(context, QStringLiteral("a"));
        disk.refuseWritesFrom(1, SQLITE_FULL);
        QVERIFY(!context.save());
        disk.allowWrites();

        context.deleteObject(*note);

        QVERIFY(!context.hasChanges());
        QCOMPARE(titles(context), QStringList());
        addNote(context, QStringLiteral("b"));
        mustSave(context);
        QCOMPARE(titles(context), words("b"));
    }

    void aBatchDeletionThatFailsDeletesNothing()
    {
        FaultyVfs& disk = FaultyVfs::install();
        const StoreFolder folder;
        const auto container = openContainer(folder.file());
        NSManagedObjectContext& context = container->viewContext();
        addPair(context, 0);
        mustSave(context);
        disk.refuseWritesFrom(1, SQLITE_IOERR_WRITE);

        const auto result = context.execute(
            NSBatchDeleteRequest(NSFetchRequest { QStringLiteral("Note"), {}, {} }));
        disk.allowWrites();

        QCOMPARE(result.error().code, StoreError::Code::InputOutput);
        QCOMPARE(storedCounts(folder.file()).size(), std::size_t(2));
    }
};

/// On the real file system.
class KillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStoreWhoseMakingWasKilledCanBeOpened()
    {
        std::mt19937 random(std::random_device {}());
        for (int round = 0; round < roundsOf("OBJECTSTORE_KILLS", 200) / 4; ++round) {
            const StoreFolder folder;
            const pid_t child = ::fork();
            if (child == 0) {
                saveAndReport(folder.file(), 0, -1);
                ::_exit(0);
            }
            ::usleep(static_cast<unsigned>(random() % 4000)); // opening takes about two thousand
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);

            const auto error = openError(folder.file());

            QVERIFY2(!error, error ? qPrintable(error->toString()) : "");
            QCOMPARE(integrityOf(folder.file()), QStringLiteral("ok"));
        }
    }

    void whatWasSavedSurvivesAKill()
    {
        constexpr int roundsOfAFile = 200; // every round reads all that the file holds
        StoreFolder folder;
        std::mt19937 random(std::random_device {}());
        std::set<int> reported;
        int first = 0;
        for (int round = 0; round < roundsOf("OBJECTSTORE_KILLS", 200); ++round) {
            if (round % roundsOfAFile == 0) {
                folder = StoreFolder();
                reported.clear();
                first = 0;
            }
            const auto saved
                = savesBeforeTheKill(folder.file(), first, static_cast<unsigned>(random() % 20000));
            QVERIFY(!saved.empty());
            for (const int number : saved)
                reported.insert({ number, number + 1 });
            first = saved.back() + 4; // beyond a save that was not reported any more

            const std::set<int> stored = storedCounts(folder.file());

            QVERIFY(std::includes(stored.begin(), stored.end(), reported.begin(), reported.end()));
            for (const int number : stored)
                QVERIFY(stored.count(number ^ 1) != 0); // a save is there whole or not at all
            QCOMPARE(integrityOf(folder.file()), QStringLiteral("ok"));
        }
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    KillTest kill;
    const int killed = QTest::qExec(&kill, argc, argv);
    FaultTest fault;
    return killed + QTest::qExec(&fault, argc, argv);
}

#include "FaultTest.moc"
