#include "StoreFixture.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

/// Persistent history, batch deletion, and what contexts learn of one another.
class HistoryTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    NSManagedObjectContext* m_context = nullptr;

    std::vector<PersistentHistoryTransaction> history(qint64 after = 0)
    {
        return m_container->persistentStoreCoordinator().persistentHistory(after).value();
    }

    static NSBatchDeleteRequest deletionBefore(qint64 stamp)
    {
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.predicate
            = Predicate { QStringLiteral("stamp"), Predicate::Comparison::LessThan, at(stamp) };
        NSBatchDeleteRequest deletion(request);
        deletion.resultType = NSBatchDeleteRequestResultType::resultTypeObjectIDs;
        return deletion;
    }

    static std::vector<NSManagedObjectID> idsOf(const NSBatchDeleteResult& result)
    {
        return std::get<std::vector<NSManagedObjectID>>(result.result);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_container = openContainer(m_folder.file());
        m_context = &m_container->viewContext();
    }

    void cleanup() { m_container.reset(); }

    void eachSaveIsOneTransactionWithItsChanges()
    {
        m_context->setTransactionAuthor(QStringLiteral("importer"));
        const auto first = addNote(*m_context, QStringLiteral("first"));
        const auto second = addNote(*m_context, QStringLiteral("second"));
        mustSave(*m_context);
        const NSManagedObjectID deleted = second->objectID();
        first->setValue(QStringLiteral("renamed"), QStringLiteral("title"));
        first->setValue(4, QStringLiteral("count"));
        m_context->deleteObject(*second);
        mustSave(*m_context);

        const auto transactions = history();

        QCOMPARE(transactions.size(), std::size_t(2));
        QVERIFY(transactions[0].number < transactions[1].number);
        QCOMPARE(transactions[0].author, QStringLiteral("importer"));
        QVERIFY(qAbs(transactions[0].stamp.secsTo(QDateTime::currentDateTimeUtc())) < 60);
        QCOMPARE(transactions[0].changes.size(), std::size_t(2));
        QCOMPARE(transactions[0].changes[0].kind, PersistentHistoryChangeKind::Insert);
        QCOMPARE(transactions[0].changes[0].id, first->objectID());
        QCOMPARE(transactions[1].changes.size(), std::size_t(2));
        const NSEntityDescription& entity = first->entity();
        QCOMPARE(transactions[1].changes[0].kind, PersistentHistoryChangeKind::Update);
        QCOMPARE(transactions[1].changes[0].attributes,
            quint64(1) << *entity.indexOfAttribute(QStringLiteral("title"))
                | quint64(1) << *entity.indexOfAttribute(QStringLiteral("count")));
        QCOMPARE(transactions[1].changes[1].kind, PersistentHistoryChangeKind::Delete);
        QCOMPARE(transactions[1].changes[1].id, deleted);
        QCOMPARE(history(transactions[0].number).size(), std::size_t(1));
    }

    void withoutTheOptionNothingIsRecorded()
    {
        m_container = openContainer(m_folder.file(), noteModel(), {});
        addNote(m_container->viewContext(), QStringLiteral("a"));
        mustSave(m_container->viewContext());

        QVERIFY(history().empty());
    }

    void aContainerCanRequireTheHistoryItself()
    {
        class MirroringContainer : public NSPersistentContainer {
        public:
            using NSPersistentContainer::NSPersistentContainer;

        protected:
            [[nodiscard]] NSPersistentStoreCoordinator::History history() const override
            {
                return NSPersistentStoreCoordinator::History::Required;
            }
        };
        MirroringContainer container(QStringLiteral("Notes"), noteModel());
        container.persistentStoreDescriptions().front().setURL(
            QUrl::fromLocalFile(m_folder.file()));
        container.loadPersistentStores([](const auto&, const auto& error) { QVERIFY(!error); });
        addNote(container.viewContext(), QStringLiteral("a"));
        mustSave(container.viewContext());

        QCOMPARE(history().size(), std::size_t(1));
    }

    void pruningKeepsDeletionsAndTheLastNumber()
    {
        const auto kept = addNote(*m_context, QStringLiteral("kept"));
        const auto deleted = addNote(*m_context, QStringLiteral("deleted"));
        mustSave(*m_context);
        m_context->deleteObject(*deleted);
        mustSave(*m_context);
        kept->setValue(1, QStringLiteral("count"));
        mustSave(*m_context);
        kept->setValue(2, QStringLiteral("count"));
        mustSave(*m_context);
        const qint64 last = history().back().number;

        QVERIFY(m_container->persistentStoreCoordinator().prunePersistentHistory(last));

        const auto left = history();
        QCOMPARE(left.size(), std::size_t(2));
        QCOMPARE(left[0].changes.front().kind, PersistentHistoryChangeKind::Delete);
        QCOMPARE(left[1].number, last);
    }

    void pruningForgetsTransactionsOnlyAsAWhole()
    {
        const auto kept = addNote(*m_context, QStringLiteral("kept"));
        const auto deleted = addNote(*m_context, QStringLiteral("deleted"));
        mustSave(*m_context);
        m_context->deleteObject(*deleted);
        mustSave(*m_context);
        for (int i = 1; i <= 2; ++i) { // an insertion and a change each
            addNote(*m_context, QStringLiteral("new"));
            kept->setValue(i, QStringLiteral("count"));
            mustSave(*m_context);
        }
        const auto before = history();
        QCOMPARE(before.size(), std::size_t(4));

        auto& coordinator = m_container->persistentStoreCoordinator();
        QVERIFY(coordinator.prunePersistentHistory(before[2].number));
        QCOMPARE(history().size(), std::size_t(2));
        QCOMPARE(history()[0].changes.size(), std::size_t(1)); // the deletion
        QVERIFY(coordinator.prunePersistentHistory(before[3].number));

        QCOMPARE(history().size(), std::size_t(2));
        QCOMPARE(history()[0].changes.size(), std::size_t(1));
        QCOMPARE(history()[1].number, before[3].number);
        QCOMPARE(history()[1].changes.size(), std::size_t(2));
    }

    void identifiersOfRecordsDifferAndLast()
    {
        QSet<QUuid> identifiers;
        const auto note = addNote(*m_context, QStringLiteral("first"));
        mustSave(*m_context);
        const NSManagedObjectID id = note->objectID();
        const QUuid before = *m_container->persistentStoreCoordinator().identifierOf(id);
        m_container = openContainer(m_folder.file());
        for (int i = 0; i < 50; ++i)
            addNote(m_container->viewContext(), QString::number(i));
        mustSave(m_container->viewContext());

        const auto notes = m_container->viewContext().fetch({ QStringLiteral("Note"), {}, {} });
        for (const auto& each : *notes)
            identifiers.insert(
                *m_container->persistentStoreCoordinator().identifierOf(each->objectID()));

        QCOMPARE(identifiers.size(), 51);
        QCOMPARE(*m_container->persistentStoreCoordinator().identifierOf(id), before);
    }

    void twoCopiesOfAFileGiveTheirNewRecordsDifferentIdentifiers()
    {
        addNote(*m_context, QStringLiteral("common"));
        mustSave(*m_context);
        m_container.reset();
        const StoreFolder elsewhere;
        QVERIFY(QFile::copy(m_folder.file(), elsewhere.file()));
        m_container = openContainer(m_folder.file());
        const auto copy = openContainer(elsewhere.file());
        const auto ours = addNote(m_container->viewContext(), QStringLiteral("ours"));
        const auto theirs = addNote(copy->viewContext(), QStringLiteral("theirs"));
        mustSave(m_container->viewContext());
        mustSave(copy->viewContext());

        QCOMPARE(ours->objectID(), theirs->objectID());
        QVERIFY(*m_container->persistentStoreCoordinator().identifierOf(ours->objectID())
            != *copy->persistentStoreCoordinator().identifierOf(theirs->objectID()));
    }

    void aBatchDeletionAnswersAsItWasAsked()
    {
        const auto old = addNote(*m_context, QStringLiteral("old"), 99);
        addNote(*m_context, QStringLiteral("at"), 100);
        addNote(*m_context, QStringLiteral("new"), 101);
        mustSave(*m_context);

        QCOMPARE(idsOf(*m_context->execute(deletionBefore(100))),
            (std::vector<NSManagedObjectID> { old->objectID() }));

        NSBatchDeleteRequest count = deletionBefore(101);
        count.resultType = NSBatchDeleteRequestResultType::resultTypeCount;
        QCOMPARE(std::get<qint64>(m_context->execute(count)->result), 1);
        NSBatchDeleteRequest status = deletionBefore(1000);
        status.resultType = NSBatchDeleteRequestResultType::resultTypeStatusOnly;
        QVERIFY(std::get<bool>(m_context->execute(status)->result));
        QCOMPARE(*m_context->count({ QStringLiteral("Note"), {}, {} }), 0);
    }

    void aBatchDeletionHonoursTheLimit()
    {
        for (int i = 0; i < 4; ++i)
            addNote(*m_context, QString::number(i), i);
        mustSave(*m_context);
        NSBatchDeleteRequest deletion = deletionBefore(100);
        deletion.fetchRequest.sortDescriptors
            = { { QStringLiteral("stamp"), SortDescriptor::Order::Descending } };
        deletion.fetchRequest.fetchLimit = 3;

        QCOMPARE(idsOf(*m_context->execute(deletion)).size(), std::size_t(3));

        QCOMPARE(titles(*m_context), words("0"));
    }

    void aBatchDeletionOfTheFirstFewTakesThoseThatAFetchGives()
    {
        for (const QString& name : words("a b c d"))
            addNote(*m_context, name, 7);
        mustSave(*m_context);
        NSFetchRequest firstTwo = notesByDate(SortDescriptor::Order::Descending);
        firstTwo.fetchLimit = 2;
        QCOMPARE(titles(*m_context, firstTwo), words("a b"));

        QVERIFY(m_context->execute(NSBatchDeleteRequest(firstTwo)));

        QCOMPARE(titles(*m_container->newContext()), words("c d"));
    }

    void aBatchDeletionLeavesTombstones()
    {
        for (int i = 0; i < 300; ++i)
            addNote(*m_context, QString::number(i), i);
        mustSave(*m_context);
        const qint64 before = history().back().number;

        const auto deleted = idsOf(*m_context->execute(deletionBefore(200)));

        const auto transactions = history(before);
        QCOMPARE(transactions.size(), std::size_t(1));
        QCOMPARE(transactions[0].changes.size(), std::size_t(200));
        for (std::size_t i = 0; i < 200; ++i) {
            QCOMPARE(transactions[0].changes[i].id, deleted[i]);
            QCOMPARE(transactions[0].changes[i].kind, PersistentHistoryChangeKind::Delete);
        }
    }

    void aBatchDeletionOfAnUnknownEntityIsAnError()
    {
        const auto result = m_context->execute(
            NSBatchDeleteRequest(NSFetchRequest { QStringLiteral("Nothing"), {}, {} }));

        QCOMPARE(result.error().code, StoreError::Code::InvalidRequest);
    }

    void mergedDeletionsTakeTheirObjectsOutOfTheContextOnly()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"), 1);
        mustSave(*m_context);
        const auto other = m_container->newContext();
        const auto theirs = *other->existingObject(note->objectID());
        note->setValue(QStringLiteral("unsaved"), QStringLiteral("title"));
        const auto deleted = idsOf(*m_context->execute(deletionBefore(100)));

        NSManagedObjectContext::mergeChanges({ { NSDeletedObjectsKey, deleted } }, { m_context });

        QVERIFY(note->isDeleted());
        QVERIFY(!m_context->hasChanges());
        QVERIFY(!theirs->isDeleted());
        QCOMPARE(title(*theirs), QStringLiteral("a"));
    }

    void anEmptyMergeChangesNothing()
    {
        addNote(*m_context, QStringLiteral("a"), 1);
        QSignalSpy changed(m_context, &NSManagedObjectContext::objectsDidChange);
        m_context->processPendingChanges();
        changed.clear();

        NSManagedObjectContext::mergeChanges({ { NSDeletedObjectsKey, {} } }, { m_context });

        QCOMPARE(changed.size(), 0);
        QVERIFY(m_context->hasChanges());
    }

    void aMergedChangeIsReadAfreshAndKeepsUnsavedValues()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        const auto other = m_container->newContext();
        const auto theirs = *other->existingObject(note->objectID());
        theirs->setValue(5, QStringLiteral("count"));
        theirs->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        mustSave(*other);
        note->setValue(QStringLiteral("ours"), QStringLiteral("title"));

        NSManagedObjectContext::mergeChanges(
            { { NSUpdatedObjectsKey, { note->objectID() } } }, { m_context });

        QCOMPARE(note->value(QStringLiteral("count")).toInt(), 5);
        QCOMPARE(title(*note), QStringLiteral("ours"));
        mustSave(*m_context);
    }

    void aContextMergesItsSiblingsSavesWhereItWants_data()
    {
        QTest::addColumn<bool>("merges");
        QTest::newRow("automatically") << true;
        QTest::newRow("not at all") << false;
    }

    void aContextMergesItsSiblingsSavesWhereItWants()
    {
        QFETCH(const bool, merges);
        const auto changed = addNote(*m_context, QStringLiteral("a"));
        const auto deleted = addNote(*m_context, QStringLiteral("b"));
        mustSave(*m_context);
        m_context->setAutomaticallyMergesChangesFromParent(merges);
        const auto other = m_container->newContext();
        (*other->existingObject(changed->objectID()))
            ->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        other->deleteObject(**other->existingObject(deleted->objectID()));

        mustSave(*other);

        QCOMPARE(title(*changed), merges ? QStringLiteral("theirs") : QStringLiteral("a"));
        QCOMPARE(deleted->isDeleted(), merges);
    }
};

QTEST_GUILESS_MAIN(HistoryTest)
#include "HistoryTest.moc"
