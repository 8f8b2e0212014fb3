#include "MemoryFileStore.h"
#include "MirrorEngine.h"
#include "RecordLine.h"
#include "SqliteLocalMirror.h"
#include "StoreFixture.h"

#include <QTest>
#include <QThread>

#include <cmath>
#include <limits>
#include <random>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

const MirrorFolders folders { QStringLiteral("org.example.notes/") };
const QString Title = QStringLiteral("title");

/// The program on one device: the container that its screens work on, and the mirror beside it.
class Device {
public:
    explicit Device(std::shared_ptr<MemoryFiles> files)
        : store(std::make_shared<MemoryFileStore>(std::move(files)))
        , container(openContainer(folder.file(), model))
        , mapping(*model->entity(QStringLiteral("Note")), "notes", Title)
        , local(std::move(*SqliteLocalMirror::open(folder.file(), *model, mapping)))
        , engine({ *store, *local, mapping.schema(), [this] { return now; },
                     [this] { return random(); } },
              { folders, QStringLiteral("someone"), "Ours.\n", WriterId(random()),
                  { .delay = 0ms } })
    {
        if (!engine.setDevice(DeviceId(random())) || !engine.switchOn())
            qFatal("The mirror cannot be used.");
    }

    NSManagedObjectContext& context() { return container->viewContext(); }
    NSManagedObjectContext::Object add(const QString& title)
    {
        auto note = addNote(context(), title);
        mustSave(context());
        return note;
    }
    NSManagedObjectContext::Object note(const QString& title)
    {
        NSFetchRequest request = notesByDate(SortDescriptor::Order::Ascending);
        const auto found = context().fetch(request);
        for (const auto& each : *found) {
            if (::title(*each) == title)
                return each;
        }
        qFatal("There is no such note.");
    }
    void rename(const QString& before, const QString& after)
    {
        note(before)->setValue(after, Title);
        mustSave(context());
    }
    void remove(const QString& title)
    {
        context().deleteObject(*note(title));
        mustSave(context());
    }
    /// What the store has, in alphabetical order.
    QStringList notes()
    {
        (void)container->persistentStoreCoordinator().pollRemoteChanges();
        QStringList list = titles(context());
        list.sort();
        return list;
    }
    SyncReport sync()
    {
        now += 1min;
        SyncReport report = engine.sync();
        if (report.result != SyncReport::Result::Done)
            qWarning("%s", qPrintable(report.error ? report.error->sentence : QString()));
        context().refreshAllObjects();
        return report;
    }
    std::optional<Record> record(const QUuid& id)
    {
        const LocalTransaction reading(*local);
        return local->records().find(id);
    }
    QUuid idOf(const NSManagedObject& object)
    {
        return *container->persistentStoreCoordinator().identifierOf(object.objectID());
    }

    std::mt19937_64 random { std::random_device()() };
    WallTime now { std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch()) };
    StoreFolder folder;
    std::shared_ptr<NSManagedObjectModel> model = noteModel();
    std::shared_ptr<MemoryFileStore> store;
    std::unique_ptr<NSPersistentContainer> container;
    RecordMapping mapping;
    std::unique_ptr<SqliteLocalMirror> local;
    MirrorEngine engine;
};

RecordState blank(const RecordMapping& mapping)
{
    return LiveRecord { { HybridTime(), *mapping.attributes(mapping.entity().defaultValues()) }, {},
        {} };
}

} // namespace

/// What the mirror remembers beside the records themselves, in one file with them.
class LocalMirrorTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<MemoryFiles> m_files;

    /// Of the one file of records.
    [[nodiscard]] QString fileName() const
    {
        for (auto file = m_files->files.keyBegin(); file != m_files->files.keyEnd(); ++file) {
            QString name = file->section(QLatin1Char('/'), -1);
            if (name.startsWith(QLatin1String("b1-")))
                return name;
        }
        qFatal("There is no file of records.");
    }

private Q_SLOTS:
    void init() { m_files = std::make_shared<MemoryFiles>(); }

    void aRecordThatIsSavedComesToTheOtherDevice()
    {
        Device first(m_files);
        Device second(m_files);
        first.add(QStringLiteral("a"));

        QCOMPARE(first.sync().records.rowsPublished, 1);
        QCOMPARE(second.sync().records.rowsChanged, 1);

        QCOMPARE(second.notes(), words("a"));
        QCOMPARE(second.sync().records.rowsPublished, 0); // what came is not sent back
    }

    void everyValueComesAsItWas()
    {
        Device first(m_files);
        Device second(m_files);
        const auto note = addNote(first.context(), QStringLiteral("a"), 1'763'690'400'000);
        note->setValue(-0.0, QStringLiteral("weight"));
        note->setValue(-7, QStringLiteral("count"));
        note->setValue(true, QStringLiteral("isDone"));
        mustSave(first.context());

        first.sync();
        second.sync();

        const auto came = second.note(QStringLiteral("a"));
        QVERIFY(std::signbit(came->value(QStringLiteral("weight")).toDouble()));
        QCOMPARE(came->value(QStringLiteral("count")).toInt(), -7);
        QCOMPARE(came->value(QStringLiteral("isDone")).toBool(), true);
        QCOMPARE(came->value(QStringLiteral("stamp")).toDateTime(), at(1'763'690'400'000));
    }

    void recordsThatWereThereBeforeAreMirrored()
    {
        Device first(m_files);
        Device second(m_files);
        QVERIFY(first.engine.switchOff());
        for (int i = 0; i < 4'321; ++i) // taken in by several transactions
            addNote(first.context(), QString::number(i));
        mustSave(first.context());

        QVERIFY(first.engine.switchOn());
        first.sync();
        second.sync();

        QCOMPARE(second.notes().size(), 4'321);
        QCOMPARE(second.notes(), first.notes());
    }

    void theLaterOfTwoRenamingsHolds()
    {
        Device first(m_files);
        Device second(m_files);
        first.add(QStringLiteral("a"));
        first.sync();
        second.sync();

        second.rename(QStringLiteral("a"), QStringLiteral("earlier"));
        QThread::msleep(2); // the stamps have milliseconds
        first.rename(QStringLiteral("a"), QStringLiteral("later"));
        first.sync();
        second.sync();
        first.sync();

        QCOMPARE(first.notes(), words("later"));
        QCOMPARE(second.notes(), words("later"));
    }

    void aRenamingIsStampedWithTheTimeOfItsSave()
    {
        Device device(m_files);
        const auto note = device.add(QStringLiteral("a"));
        device.sync(); // the first one stamps all that there is with its own time
        const qint64 before = QDateTime::currentMSecsSinceEpoch();
        device.rename(QStringLiteral("a"), QStringLiteral("b"));
        const qint64 after = QDateTime::currentMSecsSinceEpoch();

        const auto record = device.record(device.idOf(*note));

        const HybridTime time = std::get<LiveRecord>(record->state).renaming.time;
        QVERIFY(time.milliseconds() >= before);
        QVERIFY(time.milliseconds() <= after);
    }

    void aDeletionDeletesEverywhereAndForEver()
    {
        Device first(m_files);
        Device second(m_files);
        first.add(QStringLiteral("a"));
        first.add(QStringLiteral("b"));
        first.sync();
        second.sync();

        second.remove(QStringLiteral("a"));
        first.rename(QStringLiteral("a"), QStringLiteral("renamed"));
        second.sync();
        first.sync();
        second.sync();

        QCOMPARE(first.notes(), words("b"));
        QCOMPARE(second.notes(), words("b"));
    }

    void recordsDeletedAtOnceAreDeletedEverywhere()
    {
        Device first(m_files);
        Device second(m_files);
        for (int i = 0; i < 2'500; ++i)
            addNote(first.context(), QString::number(i));
        mustSave(first.context());
        first.sync();
        second.sync();
        NSFetchRequest all = notesByDate(SortDescriptor::Order::Ascending);

        QVERIFY(second.context().execute(NSBatchDeleteRequest(all)));
        second.sync();
        first.sync();

        QCOMPARE(first.notes(), QStringList());
    }

    void whatChangesWhileItIsSentIsSentAgain_data()
    {
        QTest::addColumn<QString>("sql");

        QTest::newRow("nothing") << QString();
        QTest::newRow("renamed, past the history")
            << QStringLiteral("UPDATE Note SET title = 'b', _version = _version + 1");
        QTest::newRow("renamed, past the version") << QStringLiteral("UPDATE Note SET title = 'b'");
        QTest::newRow("another value") << QStringLiteral("UPDATE Note SET count = 5");
        QTest::newRow("gone") << QStringLiteral("DELETE FROM Note");
    }
    void whatChangesWhileItIsSentIsSentAgain()
    {
        QFETCH(const QString, sql);
        Device device(m_files);
        device.add(QStringLiteral("a"));
        device.store->setFaults([&](const auto& request) {
            if (request.operation == MemoryFileStore::Operation::Put
                && request.path.endsWith(QLatin1String(".jsonl")))
                SQLite::Database(device.folder.file().toStdString(), SQLite::OPEN_READWRITE)
                    .exec(sql.toStdString());
            return std::nullopt;
        });
        QCOMPARE(device.sync().records.rowsPublished, 1);

        const LocalTransaction reading(*device.local);
        const auto carried = device.local->records().carriedBy(
            { folders.epoch(*device.local->memory().epoch), fileName() });

        QCOMPARE(carried, sql.isEmpty() ? 1 : 0);
    }

    void aRenamingWhileItsRecordIsSentIsSentToo()
    {
        Device first(m_files);
        Device second(m_files);
        for (int i = 0; i < 3; ++i)
            first.add(QString::number(i));
        bool isFirst = true;
        first.store->setFaults([&](const auto& request) {
            if (request.operation == MemoryFileStore::Operation::Put
                && request.path.endsWith(QLatin1String(".jsonl")) && std::exchange(isFirst, false))
                first.rename(QStringLiteral("1"), QStringLiteral("b"));
            return std::nullopt;
        });

        QCOMPARE(first.sync().records.rowsPublished, 3);
        QCOMPARE(first.sync().records.rowsPublished, 1);
        second.sync();

        QCOMPARE(second.notes(), words("0 2 b"));
        QCOMPARE(first.sync().records.rowsPublished, 0);
    }

    void aRevisionIsAnotherOneAfterAnyChange()
    {
        Device device(m_files);
        const auto note = device.add(QStringLiteral("a"));
        device.sync();
        const auto revision = [&] {
            const LocalTransaction reading(*device.local);
            return device.local->revision();
        };
        const qint64 first = revision();
        QCOMPARE(revision(), first);
        QVERIFY(device.record(device.idOf(*note)));
        QCOMPARE(revision(), first);

        device.rename(QStringLiteral("a"), QStringLiteral("b")); // by the container
        const qint64 second = revision();
        QVERIFY(second != first);
        SQLite::Database(device.folder.file().toStdString(), SQLite::OPEN_READWRITE)
            .exec("UPDATE Note SET count = 7"); // by another program
        const qint64 third = revision();
        QVERIFY(third != second);
        {
            LocalTransaction writing(*device.local);
            device.local->records().store(
                { QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11), blank(device.mapping) });
            QVERIFY(writing.commit()); // by the mirror itself
        }
        QVERIFY(revision() != third);
    }

    void aTextThatIsTooLongForTheFilesStaysWhole()
    {
        Device first(m_files);
        Device second(m_files);
        const QString title(5'000, QLatin1Char('x'));
        first.add(title);

        first.sync();
        second.sync();
        second.add(QStringLiteral("other"));
        second.sync();
        first.sync();

        QVERIFY(first.notes().contains(title));
        QVERIFY(second.notes().contains(title.left(Text::MaxBytes)));
    }

    void whatCannotBeMirroredStaysHere()
    {
        Device first(m_files);
        Device second(m_files);
        const auto endless = addNote(first.context(), QStringLiteral("endless"));
        endless->setValue(std::numeric_limits<double>::infinity(), QStringLiteral("weight"));
        first.add(QStringLiteral("b"));

        QCOMPARE(first.sync().records.rowsPublished, 1);
        second.sync();

        QCOMPARE(first.notes(), words("b endless"));
        QCOMPARE(second.notes(), words("b"));
    }

    void whatANewerVersionAddedIsKeptThroughARenaming()
    {
        Device device(m_files);
        device.sync();
        const QByteArray known = R"({"id":"00000000-0000-0000-0000-000000000001","c":[)"
                                 R"("1763690400000-00000",{"count":1,"isDone":false,"mood":3,)"
                                 R"("stamp":null,"weight":"2"}],"r":["1763690400000-00000",)"
                                 R"("00000000000000aa","a"],"zeal":[1]})";
        {
            LocalTransaction writing(*device.local);
            device.local->records().store(*readRecordLine(known, device.mapping.schema()));
            QVERIFY(writing.commit());
        }
        device.sync();

        device.rename(QStringLiteral("a"), QStringLiteral("b"));

        const auto record
            = device.record(QUuid(QStringLiteral("00000000-0000-0000-0000-000000000001")));
        const QByteArray line = recordLine(*record);
        QVERIFY2(line.contains("\"mood\":3") && line.contains("\"zeal\":[1]")
                && line.contains(",\"b\"]"),
            line.constData());
    }

    void whatIsMissingThoughNobodyDeletedItComesAgain()
    {
        Device first(m_files);
        Device second(m_files);
        first.add(QStringLiteral("a"));
        first.sync();
        second.sync();
        {
            SQLite::Database file(second.folder.file().toStdString(), SQLite::OPEN_READWRITE);
            file.exec("DELETE FROM Note");
        }
        QCOMPARE(second.notes(), QStringList());

        first.rename(QStringLiteral("a"), QStringLiteral("b")); // so that it is sent again
        first.sync();
        second.sync();

        QCOMPARE(second.notes(), words("b"));
    }

    void onlyWhatWasSentIsCarried()
    {
        Device device(m_files);
        for (const QString& title : words("a b c"))
            device.add(title);
        {
            LocalTransaction taking(*device.local); // which makes all three known
            QVERIFY(taking.commit());
        }
        SQLite::Database file(device.folder.file().toStdString(), SQLite::OPEN_READWRITE);
        file.exec("DELETE FROM Note WHERE title = 'b'");

        QCOMPARE(device.sync().records.rowsPublished, 2);

        QCOMPARE(
            file.execAndGet("SELECT count(*) FROM _mirror_record WHERE carrier IS NULL").getInt(),
            1);
        Device other(m_files);
        other.sync();
        QCOMPARE(other.notes(), words("a c"));
    }

    void nothingOfATransactionThatIsUndoneIsLeft()
    {
        Device device(m_files);
        device.sync();
        {
            const LocalTransaction undone(*device.local);
            device.local->records().store(
                { QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11), blank(device.mapping) });
        }

        QCOMPARE(device.notes(), QStringList());
        QVERIFY(!device.record(QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)));
    }

    void aFileThatWasReplacedTakesNothing()
    {
        Device device(m_files);
        QVERIFY(QFile::rename(device.folder.file(), device.folder.file() + QLatin1String(".old")));

        LocalTransaction writing(*device.local);
        device.local->setMemory({});

        QVERIFY(!writing.commit());
    }

    void localChangesAreSeenBeforeTheyAreTakenIn()
    {
        Device device(m_files);
        device.sync();
        QVERIFY(!device.local->hasLocalChanges());

        device.add(QStringLiteral("a"));

        QVERIFY(device.local->hasLocalChanges());
        device.sync();
        QVERIFY(!device.local->hasLocalChanges());
    }

    void oldHistoryIsForgottenOnceItWasTakenIn()
    {
        Device first(m_files);
        Device second(m_files);
        first.add(QStringLiteral("a"));
        const auto history = [&] {
            return first.container->persistentStoreCoordinator().persistentHistory(0)->size();
        };

        first.local->forgetHistory(QDateTime::currentDateTimeUtc().addDays(1));
        QCOMPARE(history(), 1); // not yet taken in
        first.sync();
        first.add(QStringLiteral("b"));
        first.sync();
        first.local->forgetHistory(QDateTime::currentDateTimeUtc().addDays(1));

        QVERIFY(history() <= 1); // the last number must not be given again
        second.sync();
        QCOMPARE(second.notes(), words("a b"));
    }
};

QTEST_GUILESS_MAIN(LocalMirrorTest)
#include "LocalMirrorTest.moc"
