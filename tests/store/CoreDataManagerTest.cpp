#include "CoreDataManager.h"
#include "CapturedOutput.h"
#include "NSFetchedResultsController.h"
#include "PersistenceController.h"
#include "PersistentContainer.h"
#include "StoreFiles.h"

#include <QSignalSpy>
#include <QTest>

namespace {

NSFetchRequest itemsCalled(const QString& ref)
{
    NSFetchRequest request = Item::fetchRequest();
    request.predicate = Predicate { QStringLiteral("ref"), Predicate::Comparison::Equal, ref };
    return request;
}

/// A container whose store was not loaded: whatever is asked of it fails.
std::shared_ptr<NSPersistentContainer> unloadedContainer()
{
    const auto made = PersistentContainer::get(false);
    return std::get<std::shared_ptr<NSPersistentContainer>>(made);
}

std::shared_ptr<Item> itemOf(const NSFetchedResultsController& list, int row)
{
    return std::static_pointer_cast<Item>(list.object(row));
}

} // namespace

class CoreDataManagerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TemporaryHome> m_home;
    std::shared_ptr<NSPersistentContainer> m_container;

    NSManagedObjectContext& context() { return m_container->viewContext(); }

    std::shared_ptr<NSManagedObjectContext> sharedContext() const
    {
        return { m_container, &m_container->viewContext() };
    }

    void saveItems(const QStringList& names)
    {
        for (const QString& name : names)
            (void)addItem(context(), name);
        mustSave(context());
    }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TemporaryHome>();
        m_container = store::setupContainer(false);
    }

    void cleanup() { m_container.reset(); }

    // Batch deletion

    void aBatchDeletionDropsItsRecordsFromTheContextAtOnce()
    {
        saveItems({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a") });
        const auto items = context().fetch(Item::fetchRequest());

        const auto done = executeAndMergeChanges(
            context(), NSBatchDeleteRequest(itemsCalled(QStringLiteral("a"))));

        QVERIFY(done);
        QVERIFY(items->at(0)->isDeleted());
        QVERIFY(!items->at(1)->isDeleted());
        QVERIFY(items->at(2)->isDeleted());
        QCOMPARE(refs(context()), QStringList { QStringLiteral("b") });
        QVERIFY(!context().hasChanges());
    }

    void aListOnTheContextDropsTheRowsWithoutAnotherFetch()
    {
        saveItems({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a") });
        NSFetchedResultsController list(Item::fetchRequest(), context());
        QVERIFY(list.performFetch());
        QCOMPARE(list.rowCount(), 3);
        QSignalSpy removals(&list, &QAbstractItemModel::rowsRemoved);

        QVERIFY(executeAndMergeChanges(
            context(), NSBatchDeleteRequest(itemsCalled(QStringLiteral("a")))));

        QCOMPARE(list.rowCount(), 1);
        QCOMPARE(std::static_pointer_cast<Item>(list.object(0))->ref(), QStringLiteral("b"));
        QVERIFY(!removals.isEmpty());
    }

    void aBatchDeletionOfEverythingEmptiesTheStore()
    {
        saveItems({ QStringLiteral("a"), QStringLiteral("b") });

        QVERIFY(executeAndMergeChanges(context(), NSBatchDeleteRequest(Item::fetchRequest())));

        QVERIFY(refs(context()).isEmpty());
        QVERIFY(refs(store::setupContainer(false)->viewContext()).isEmpty());
    }

    void aBatchDeletionThatMatchesNothingLeavesTheContextUnchanged()
    {
        saveItems({ QStringLiteral("a") });
        const auto unsaved = addItem(context(), QStringLiteral("unsaved"));
        context().processPendingChanges();
        QSignalSpy changes(&context(), &NSManagedObjectContext::objectsDidChange);

        QVERIFY(executeAndMergeChanges(
            context(), NSBatchDeleteRequest(itemsCalled(QStringLiteral("other")))));

        QCOMPARE(changes.count(), 0);
        QVERIFY(context().hasChanges());
        QCOMPARE(unsaved->state(), NSManagedObject::State::Inserted);
        QCOMPARE(refs(context()), (QStringList { QStringLiteral("a"), QStringLiteral("unsaved") }));
    }

    void aBatchDeletionOnAnEmptyStoreIsNoError()
    {
        QVERIFY(executeAndMergeChanges(context(), NSBatchDeleteRequest(Item::fetchRequest())));

        QVERIFY(refs(context()).isEmpty());
    }

    void otherContextsAreNotTold()
    {
        saveItems({ QStringLiteral("a") });
        const auto other = m_container->newContext();
        const auto theirs = other->fetch(Item::fetchRequest());
        QSignalSpy changes(other.get(), &NSManagedObjectContext::objectsDidChange);

        QVERIFY(executeAndMergeChanges(context(), NSBatchDeleteRequest(Item::fetchRequest())));

        QCOMPARE(changes.count(), 0);
        QVERIFY(!theirs->front()->isDeleted());
        QCOMPARE(std::static_pointer_cast<Item>(theirs->front())->ref(), QStringLiteral("a"));
    }

    void aContextThatMergesAutomaticallyIsNotToldEither()
    {
        const auto mirrored = store::setupContainer(true);
        (void)addItem(mirrored->viewContext(), QStringLiteral("a"));
        mustSave(mirrored->viewContext());
        const auto item = mirrored->viewContext().fetch(Item::fetchRequest())->front();
        const auto other = mirrored->newContext();

        QVERIFY(executeAndMergeChanges(*other, NSBatchDeleteRequest(Item::fetchRequest())));

        QVERIFY(!item->isDeleted());
    }

    void theResultTypeOfTheRequestDoesNotMatter_data()
    {
        using Type = NSBatchDeleteRequestResultType;
        QTest::addColumn<int>("type");
        QTest::newRow("status") << static_cast<int>(Type::resultTypeStatusOnly);
        QTest::newRow("identities") << static_cast<int>(Type::resultTypeObjectIDs);
        QTest::newRow("count") << static_cast<int>(Type::resultTypeCount);
    }

    void theResultTypeOfTheRequestDoesNotMatter()
    {
        QFETCH(const int, type);
        saveItems({ QStringLiteral("a") });
        const auto item = context().fetch(Item::fetchRequest())->front();
        NSBatchDeleteRequest request(Item::fetchRequest());
        request.resultType = static_cast<NSBatchDeleteRequestResultType>(type);

        QVERIFY(executeAndMergeChanges(context(), request));

        QVERIFY(item->isDeleted());
    }

    void unsavedChangesOfOtherRecordsSurviveABatchDeletion()
    {
        saveItems({ QStringLiteral("a"), QStringLiteral("b") });
        const auto items = context().fetch(Item::fetchRequest());
        std::static_pointer_cast<Item>(items->at(1))->setPeople(9);

        QVERIFY(executeAndMergeChanges(
            context(), NSBatchDeleteRequest(itemsCalled(QStringLiteral("a")))));

        QVERIFY(context().hasChanges());
        mustSave(context());
        QCOMPARE(std::static_pointer_cast<Item>(items->at(1))->people(), 9);
    }

    void aFailedBatchDeletionPassesTheErrorOnAndMergesNothing_data()
    {
        QTest::addColumn<QString>("entity");
        QTest::addColumn<QString>("attribute");
        QTest::newRow("no such entity") << QStringLiteral("Bill") << QStringLiteral("ref");
        QTest::newRow("no such attribute") << QStringLiteral("Item") << QStringLiteral("zone");
    }

    void aFailedBatchDeletionPassesTheErrorOnAndMergesNothing()
    {
        QFETCH(const QString, entity);
        QFETCH(const QString, attribute);
        saveItems({ QStringLiteral("a") });
        const auto item = context().fetch(Item::fetchRequest())->front();
        NSFetchRequest request;
        request.entityName = entity;
        request.predicate
            = Predicate { attribute, Predicate::Comparison::Equal, QStringLiteral("a") };
        const auto expected = context().execute(NSBatchDeleteRequest(request));
        QVERIFY(!expected);
        QSignalSpy changes(&context(), &NSManagedObjectContext::objectsDidChange);

        const auto done = executeAndMergeChanges(context(), NSBatchDeleteRequest(request));

        QVERIFY(!done);
        QCOMPARE(done.error().code, expected.error().code);
        QCOMPARE(done.error().description.english(), expected.error().description.english());
        QCOMPARE(done.error().userInfo, expected.error().userInfo);
        QCOMPARE(changes.count(), 0);
        QVERIFY(!item->isDeleted());
        QCOMPARE(refs(context()), QStringList { QStringLiteral("a") });
    }

    void aBatchDeletionWithoutAStoreFails()
    {
        const auto container = unloadedContainer();

        const auto done = executeAndMergeChanges(
            container->viewContext(), NSBatchDeleteRequest(Item::fetchRequest()));

        QVERIFY(!done);
        QCOMPARE(done.error().code, StoreError::Code::NoStore);
    }

    // Fetching all

    void fetchingAllOfAnEmptyStoreGivesAnEmptyListAndNoLine()
    {
        int count = -1;
        QByteArrayList lines;
        {
            const CapturedOutput output;
            count = CoreDataManager(sharedContext()).fetchAllItems()->rowCount();
            lines = output.lines();
        }

        QCOMPARE(count, 0);
        QCOMPARE(lines, QByteArrayList());
    }

    void fetchingAllGivesEveryBillInTheStoresOrder()
    {
        saveItems({ QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b") });

        const auto items = CoreDataManager(sharedContext()).fetchAllItems();

        QStringList names;
        for (int row = 0; row < items->rowCount(); ++row)
            names.append(*itemOf(*items, row)->ref());
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("c a b"));
    }

    void fetchingAllHandsOutTheObjectsOfTheContext()
    {
        const auto item = addItem(context(), QStringLiteral("a"));
        mustSave(context());

        QCOMPARE(CoreDataManager(sharedContext()).fetchAllItems()->object(0),
            NSManagedObjectContext::Object(item));
    }

    void aFailedFetchPrintsOneLineAndGivesAnEmptyList()
    {
        const auto container = unloadedContainer();
        const auto expected = container->viewContext().fetch(Item::fetchRequest());
        QVERIFY(!expected);
        const CoreDataManager manager({ container, &container->viewContext() });

        bool isEmpty = false;
        QByteArrayList lines;
        {
            const CapturedOutput output;
            isEmpty = manager.fetchAllItems()->rowCount() == 0;
            lines = output.lines();
        }

        QVERIFY(isEmpty);
        QCOMPARE(lines, QByteArrayList { expected.error().toString().toUtf8() });
    }

    void theContextOfAManagerCanBeReplaced()
    {
        saveItems({ QStringLiteral("a") });
        const auto container = unloadedContainer();
        CoreDataManager manager({ container, &container->viewContext() });

        manager.moc = sharedContext();

        QCOMPARE(manager.fetchAllItems()->rowCount(), 1);
    }

    void aManagerKeepsItsContextAlive()
    {
        saveItems({ QStringLiteral("a") });
        const CoreDataManager manager(sharedContext());

        m_container.reset();

        QCOMPARE(itemOf(*manager.fetchAllItems(), 0)->ref(), QStringLiteral("a"));
    }
};

QTEST_GUILESS_MAIN(CoreDataManagerTest)
#include "CoreDataManagerTest.moc"
