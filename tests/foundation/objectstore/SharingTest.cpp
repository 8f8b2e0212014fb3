#include "NSFetchedResultsController.h"
#include "StoreFixture.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

/// One store file in several hands: pinned contexts, other containers, other processes.
class SharingTest : public QObject {
    Q_OBJECT

private:
    using QueryGeneration = NSManagedObjectContext::QueryGeneration;

    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_ours;
    std::unique_ptr<NSPersistentContainer> m_theirs;

    NSManagedObjectContext& context() { return m_ours->viewContext(); }
    NSManagedObjectContext& theirContext() { return m_theirs->viewContext(); }
    Result<bool> poll() { return m_ours->persistentStoreCoordinator().pollRemoteChanges(); }

    void open(const QStringList& options)
    {
        m_ours = openContainer(m_folder.file(), noteModel(), options);
        m_theirs = openContainer(m_folder.file(), noteModel(), options);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        open(
            { NSPersistentHistoryTrackingKey, NSPersistentStoreRemoteChangeNotificationOptionKey });
    }

    void cleanup()
    {
        m_ours.reset();
        m_theirs.reset();
    }

    void aContextCannotBePinnedBeforeTheStoreIsLoaded()
    {
        NSPersistentContainer container(QStringLiteral("Notes"), noteModel());

        const auto pinned
            = container.viewContext().setQueryGenerationFrom(QueryGeneration::Current);

        QCOMPARE(pinned.error().code, StoreError::Code::GenerationUnavailable);
        QVERIFY(!container.viewContext().isPinned());
    }

    void aPinnedContextDoesNotSeeWhatOthersSaveUntilItSaves()
    {
        addNote(context(), QStringLiteral("a"));
        mustSave(context());
        QVERIFY(context().setQueryGenerationFrom(QueryGeneration::Current));
        addNote(theirContext(), QStringLiteral("b"));
        mustSave(theirContext());

        QCOMPARE(titles(context()), words("a"));
        addNote(context(), QStringLiteral("c"));
        mustSave(context());

        QCOMPARE(titles(context()), words("a b c"));
        QVERIFY(context().isPinned());
    }

    void aPinnedContextMovesOnWithAMerge()
    {
        addNote(context(), QStringLiteral("a"));
        mustSave(context());
        QVERIFY(context().setQueryGenerationFrom(QueryGeneration::Current));
        const auto note = addNote(theirContext(), QStringLiteral("b"));
        mustSave(theirContext());

        NSManagedObjectContext::mergeChanges(
            { { NSInsertedObjectsKey, { note->objectID() } } }, { &context() });

        QCOMPARE(titles(context()), words("a b"));
    }

    void anUnpinnedContextSeesTheNewestStateAgain()
    {
        QVERIFY(context().setQueryGenerationFrom(QueryGeneration::Current));
        addNote(theirContext(), QStringLiteral("b"));
        mustSave(theirContext());

        QVERIFY(context().setQueryGenerationFrom(QueryGeneration::Unpinned));

        QCOMPARE(titles(context()), words("b"));
    }

    void aPinnedContextThatMovesOnDoesNotKeepTheLogGrowing()
    {
        QVERIFY(context().setQueryGenerationFrom(QueryGeneration::Current));

        for (int i = 0; i < 200; ++i) { // 40 megabytes
            addNote(context(), QString(200'000, QLatin1Char('x')));
            mustSave(context());
        }

        QVERIFY(QFileInfo(m_folder.file() + QStringLiteral("-wal")).size() < 8'000'000);
    }

    void aLookWithoutNewsFindsNothing()
    {
        addNote(context(), QStringLiteral("ours"));
        mustSave(context());

        QCOMPARE(*poll(), false);
    }

    void aLookFindsExactlyWhatOthersChanged()
    {
        const auto changed = addNote(context(), QStringLiteral("changed"));
        const auto deleted = addNote(context(), QStringLiteral("deleted"));
        mustSave(context());
        QSignalSpy remote(
            &m_ours->persistentStoreCoordinator(), &NSPersistentStoreCoordinator::remoteChange);
        (*theirContext().existingObject(changed->objectID()))
            ->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        theirContext().deleteObject(**theirContext().existingObject(deleted->objectID()));
        const auto inserted = addNote(theirContext(), QStringLiteral("inserted"));
        mustSave(theirContext());
        addNote(context(), QStringLiteral("ours"));
        mustSave(context());

        QCOMPARE(*poll(), true);

        QCOMPARE(remote.size(), 1);
        const auto changes = remote.front().front().value<NSObjectIDChanges>();
        using Ids = std::vector<NSManagedObjectID>;
        QCOMPARE(changes.value(NSInsertedObjectsKey), (Ids { inserted->objectID() }));
        QCOMPARE(changes.value(NSUpdatedObjectsKey), (Ids { changed->objectID() }));
        QCOMPARE(changes.value(NSDeletedObjectsKey), (Ids { deleted->objectID() }));
        QCOMPARE(*poll(), false);
        QCOMPARE(title(*changed), QStringLiteral("changed")); // not merged without being asked
    }

    void aLookMergesIntoContextsThatMergeAutomatically()
    {
        const auto note = addNote(context(), QStringLiteral("a"));
        mustSave(context());
        context().setAutomaticallyMergesChangesFromParent(true);
        NSFetchedResultsController list(notesByDate(SortDescriptor::Order::Ascending), context());
        QVERIFY(list.performFetch());
        (*theirContext().existingObject(note->objectID()))
            ->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        addNote(theirContext(), QStringLiteral("b"), 9);
        mustSave(theirContext());

        QCOMPARE(*poll(), true);

        QCOMPARE(title(*note), QStringLiteral("theirs"));
        QCOMPARE(list.rowCount(), 2);
        QCOMPARE(title(*list.object(1)), QStringLiteral("b"));
    }

    void manyChangesAreMergedInSlices()
    {
        context().setAutomaticallyMergesChangesFromParent(true);
        NSFetchedResultsController list(notesByDate(SortDescriptor::Order::Ascending), context());
        QVERIFY(list.performFetch());
        std::vector<std::shared_ptr<NSManagedObject>> theirs;
        for (int i = 0; i < 7; ++i) {
            theirs.push_back(addNote(theirContext(), QString::number(i), i));
            if (i % 3 == 2)
                mustSave(theirContext());
        }
        theirContext().deleteObject(*theirs.front()); // it came and goes within two slices
        mustSave(theirContext());
        using Merge = NSPersistentStoreCoordinator::RemoteChanges;
        QList<int> rows;

        Merge last = Merge::MoreToMerge;
        while (last == Merge::MoreToMerge) {
            last = *m_ours->persistentStoreCoordinator().mergeRemoteChanges(2);
            rows.append(list.rowCount());
        }

        QCOMPARE(list.rowCount(), 6);
        QCOMPARE(title(*list.object(0)), QStringLiteral("1"));
        QVERIFY(rows.size() >= 4); // eight changes by two
        QCOMPARE(*m_ours->persistentStoreCoordinator().mergeRemoteChanges(2), Merge::None);
    }

    void withoutTheOptionALookDoesNotSignal()
    {
        open({ NSPersistentHistoryTrackingKey });
        QSignalSpy remote(
            &m_ours->persistentStoreCoordinator(), &NSPersistentStoreCoordinator::remoteChange);
        addNote(theirContext(), QStringLiteral("b"));
        mustSave(theirContext());

        QCOMPARE(*poll(), true);

        QCOMPARE(remote.size(), 0);
    }

    void withoutHistoryEverythingIsReadAfresh()
    {
        open({ NSPersistentStoreRemoteChangeNotificationOptionKey });
        const auto note = addNote(context(), QStringLiteral("a"));
        mustSave(context());
        context().setAutomaticallyMergesChangesFromParent(true);
        NSFetchedResultsController list(notesByDate(SortDescriptor::Order::Ascending), context());
        QVERIFY(list.performFetch());
        (*theirContext().existingObject(note->objectID()))
            ->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        addNote(theirContext(), QStringLiteral("b"), 9);
        mustSave(theirContext());

        QCOMPARE(*poll(), true);

        QCOMPARE(title(*note), QStringLiteral("theirs"));
        QCOMPARE(list.rowCount(), 2);
    }

    void aStoreThatIsLockedForTooLongIsAnError()
    {
        addNote(context(), QStringLiteral("a"));
        sqlite3* other = nullptr;
        QCOMPARE(sqlite3_open(m_folder.file().toUtf8().constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);

        QElapsedTimer clock;
        clock.start();
        const auto saved = context().save();
        const qint64 waited = clock.elapsed();
        sqlite3_close(other);

        QCOMPARE(saved.error().code, StoreError::Code::Locked);
        QVERIFY(waited >= 4900);
        mustSave(context());
        QCOMPARE(titles(context()), words("a"));
    }

    void aSaveIntoAFileThatIsNoLongerThereIsAnError_data()
    {
        QTest::addColumn<bool>("isReplaced");
        QTest::newRow("deleted") << false;
        QTest::newRow("replaced") << true;
    }

    void aSaveIntoAFileThatIsNoLongerThereIsAnError()
    {
        QFETCH(const bool, isReplaced);
        addNote(context(), QStringLiteral("a"));
        mustSave(context());
        m_theirs.reset();
        QVERIFY(QFile::rename(m_folder.file(), m_folder.file() + QStringLiteral(".old")));
        if (isReplaced)
            QVERIFY(QFile::copy(m_folder.file() + QStringLiteral(".old"), m_folder.file()));
        addNote(context(), QStringLiteral("b"));

        const auto saved = context().save();
        const auto deleted = context().execute(
            NSBatchDeleteRequest(NSFetchRequest { QStringLiteral("Note"), {}, {} }));

        QCOMPARE(saved.error().code, StoreError::Code::CannotOpen);
        QCOMPARE(deleted.error().code, StoreError::Code::CannotOpen);
        QVERIFY(context().hasChanges());
    }

    void severalProcessesMakeOneStoreTogether()
    {
        m_ours.reset();
        m_theirs.reset();
        for (int round = 0; round < 30; ++round) {
            m_folder = StoreFolder();
            std::array<pid_t, 4> children = {};
            for (pid_t& child : children) {
                child = ::fork();
                if (child != 0)
                    continue;
                const auto container = openContainer(m_folder.file());
                addNote(container->viewContext(), QStringLiteral("a"));
                mustSave(container->viewContext());
                ::_exit(0);
            }
            for (const pid_t child : children) {
                int status = -1;
                ::waitpid(child, &status, 0);
                QCOMPARE(status, 0);
            }
            QCOMPARE(titles(openContainer(m_folder.file())->viewContext()).size(), 4);
        }
    }

    void twoProcessesSaveSideBySide()
    {
        constexpr int each = 100;
        m_ours.reset(); // nothing open in the parent while it forks
        m_theirs.reset();
        std::array<pid_t, 2> children = {};
        for (pid_t& child : children) {
            child = ::fork();
            if (child != 0)
                continue;
            const auto container = openContainer(m_folder.file());
            for (int i = 0; i < each; ++i) {
                addNote(container->viewContext(), QString::number(::getpid()), i);
                mustSave(container->viewContext());
            }
            ::_exit(0);
        }
        for (const pid_t child : children) {
            int status = -1;
            ::waitpid(child, &status, 0);
            QCOMPARE(status, 0);
        }

        m_ours = openContainer(m_folder.file());

        const QStringList saved = titles(context());
        for (const pid_t child : children)
            QCOMPARE(saved.count(QString::number(child)), each);
        const auto history = m_ours->persistentStoreCoordinator().persistentHistory(0);
        QCOMPARE(history->size(), std::size_t(2 * each));
    }
};

QTEST_GUILESS_MAIN(SharingTest)
#include "SharingTest.moc"
