#include "DeathTest.h"
#include "StoreFixture.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

#include <bit>
#include <cmath>
#include <limits>

class ContextTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    NSManagedObjectContext* m_context = nullptr;

    static NSFetchRequest notesWhere(
        const QString& attribute, Predicate::Comparison comparison, const QVariant& value)
    {
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.predicate = Predicate { attribute, comparison, value };
        return request;
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_container = openContainer(m_folder.file());
        m_context = &m_container->viewContext();
    }

    void cleanup() { m_container.reset(); }

    void aSavedRecordIsThereAfterReopening()
    {
        const auto note = addNote(*m_context, QStringLiteral("Zürich 🍕"), 1234);
        note->setValue(7, QStringLiteral("count"));
        note->setValue(true, QStringLiteral("isDone"));
        mustSave(*m_context);
        m_container = openContainer(m_folder.file());

        const auto notes = m_container->viewContext().fetch({ QStringLiteral("Note"), {}, {} });

        QCOMPARE(notes->size(), std::size_t(1));
        QCOMPARE(title(*notes->front()), QStringLiteral("Zürich 🍕"));
        QCOMPARE(notes->front()->value(QStringLiteral("count")).toInt(), 7);
        QCOMPARE(notes->front()->value(QStringLiteral("isDone")).toBool(), true);
        QCOMPARE(notes->front()->value(QStringLiteral("stamp")).toDateTime(), at(1234));
    }

    void valuesNeverSetReadAsTheirDefaultsOrAsAbsent()
    {
        const auto id = [&] {
            const auto note = m_context->insertNewObject(QStringLiteral("Note"));
            mustSave(*m_context);
            return note->objectID();
        }();

        const auto note = m_context->objectWithID(id);

        QVERIFY(note->isFault());
        QCOMPARE(note->value(QStringLiteral("count")), QVariant(0));
        QCOMPARE(note->value(QStringLiteral("weight")), QVariant(0.0));
        QVERIFY(!note->value(QStringLiteral("title")).isValid());
        QVERIFY(!note->value(QStringLiteral("stamp")).isValid());
    }

    void doublesRoundTripBitForBit_data()
    {
        QTest::addColumn<double>("number");
        QTest::newRow("minus zero") << -0.0;
        QTest::newRow("whole") << 100.0;
        QTest::newRow("0.1") << 0.1;
        QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
        QTest::newRow("largest") << std::numeric_limits<double>::max();
        QTest::newRow("infinite") << -std::numeric_limits<double>::infinity();
    }

    void doublesRoundTripBitForBit()
    {
        QFETCH(const double, number);
        const auto note = addNote(*m_context, QStringLiteral("a"));
        note->setValue(number, QStringLiteral("weight"));
        mustSave(*m_context);
        m_context->refresh(*note, NSManagedObjectContext::Refresh::DiscardChanges);

        const double read = note->value(QStringLiteral("weight")).toDouble();

        QCOMPARE(std::bit_cast<quint64>(read), std::bit_cast<quint64>(number));
    }

    void integersRoundTripAtTheirEnds()
    {
        for (const qint32 number :
            { std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max() }) {
            const auto note = addNote(*m_context, QStringLiteral("a"));
            note->setValue(number, QStringLiteral("count"));
            mustSave(*m_context);
            m_context->refresh(*note, NSManagedObjectContext::Refresh::DiscardChanges);

            QCOMPARE(note->value(QStringLiteral("count")).toInt(), number);
        }
    }

    void thereIsOneObjectForAnIdentity()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);

        const auto fetched = m_context->fetch({ QStringLiteral("Note"), {}, {} });

        QCOMPARE(fetched->front(), note);
        QCOMPARE(m_context->objectWithID(note->objectID()), note);
    }

    void identitiesAreTemporaryUntilSaved()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        const NSManagedObjectID temporary = note->objectID();
        QSignalSpy becamePermanent(m_context, &NSManagedObjectContext::identitiesBecamePermanent);
        QVERIFY(temporary.isTemporaryID());

        mustSave(*m_context);

        QVERIFY(!note->objectID().isTemporaryID());
        const auto identities = becamePermanent.front().front().value<PermanentIdentities>();
        QCOMPARE(identities, (PermanentIdentities { { temporary, note->objectID() } }));
    }

    void identitiesAreNeverGivenTwice()
    {
        const auto first = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        const NSManagedObjectID id = first->objectID();
        m_context->deleteObject(*first);
        mustSave(*m_context);
        m_container = openContainer(m_folder.file());

        const auto second = addNote(m_container->viewContext(), QStringLiteral("b"));
        mustSave(m_container->viewContext());

        QVERIFY(second->objectID() != id);
    }

    void identitiesOfABatchDeletionAreNotGivenAgainEither()
    {
        const auto first = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        const NSManagedObjectID id = first->objectID();
        QVERIFY(m_context->execute(
            NSBatchDeleteRequest(NSFetchRequest { QStringLiteral("Note"), {}, {} })));

        const auto second = addNote(*m_context, QStringLiteral("b"));
        mustSave(*m_context);

        QVERIFY(second->objectID().number() > id.number());
    }

    void theSameValueAgainIsNoChange()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);

        note->setValue(QStringLiteral("a"), QStringLiteral("title"));

        QVERIFY(!m_context->hasChanges());
    }

    void savingWithoutChangesDoesNotTouchTheStore()
    {
        addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        const auto before = m_container->persistentStoreCoordinator().persistentHistory(0);

        mustSave(*m_context);

        const auto after = m_container->persistentStoreCoordinator().persistentHistory(0);
        QCOMPARE(after->size(), before->size());
    }

    void aValueChangedAndChangedBackIsNotWritten()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        note->setValue(QStringLiteral("b"), QStringLiteral("title"));
        note->setValue(QStringLiteral("a"), QStringLiteral("title"));

        mustSave(*m_context);

        QVERIFY(!m_context->hasChanges());
        const auto history = m_container->persistentStoreCoordinator().persistentHistory(0);
        QCOMPARE(history->size(), std::size_t(1));
    }

    void rollbackGivesUpInsertionsChangesAndDeletions()
    {
        const auto changed = addNote(*m_context, QStringLiteral("changed"));
        const auto deleted = addNote(*m_context, QStringLiteral("deleted"));
        mustSave(*m_context);
        changed->setValue(QStringLiteral("other"), QStringLiteral("title"));
        m_context->deleteObject(*deleted);
        const auto inserted = addNote(*m_context, QStringLiteral("inserted"));

        m_context->rollback();

        QVERIFY(!m_context->hasChanges());
        QVERIFY(inserted->isDeleted());
        QCOMPARE(titles(*m_context), words("changed deleted"));
        QCOMPARE(title(*changed), QStringLiteral("changed"));
    }

    void aRecordInsertedAndDeletedAgainIsNothingToSave()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));

        m_context->deleteObject(*note);

        QVERIFY(!m_context->hasChanges());
        QVERIFY(note->isDeleted());
        QCOMPARE(titles(*m_context), QStringList());
    }

    void aDeletedRecordLeavesFetchesBeforeItIsSaved()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);

        m_context->deleteObject(*note);

        QCOMPARE(titles(*m_context), QStringList());
        QVERIFY(m_context->hasChanges());
        mustSave(*m_context);
        QVERIFY(!m_context->existingObject(note->objectID()));
    }

    void fetchesSeeUnsavedRecordsInTheirPlaces()
    {
        addNote(*m_context, QStringLiteral("old"), 10);
        const auto moved = addNote(*m_context, QStringLiteral("moved"), 20);
        addNote(*m_context, QStringLiteral("new"), 30);
        mustSave(*m_context);
        addNote(*m_context, QStringLiteral("unsaved"), 25);
        moved->setValue(at(40), QStringLiteral("stamp"));

        QCOMPARE(titles(*m_context, notesByDate(SortDescriptor::Order::Descending)),
            words("moved new unsaved old"));
        QCOMPARE(titles(*m_context, notesByDate(SortDescriptor::Order::Ascending)),
            words("old unsaved new moved"));
    }

    void equalSortKeysKeepTheStoresOrder()
    {
        for (const char* name : { "a", "b", "c" })
            addNote(*m_context, QString::fromLatin1(name), 5);
        mustSave(*m_context);
        addNote(*m_context, QStringLiteral("d"), 5);
        addNote(*m_context, QStringLiteral("e"), 5);

        const QStringList expected = words("a b c d e");
        QCOMPARE(titles(*m_context, notesByDate(SortDescriptor::Order::Descending)), expected);
        QCOMPARE(titles(*m_context, notesByDate(SortDescriptor::Order::Ascending)), expected);
        mustSave(*m_context);
        QCOMPARE(titles(*m_context, notesByDate(SortDescriptor::Order::Descending)), expected);
    }

    void aPredicateComparesStrictly()
    {
        addNote(*m_context, QStringLiteral("before"), 99);
        addNote(*m_context, QStringLiteral("at"), 100);
        addNote(*m_context, QStringLiteral("after"), 101);
        const auto undated = addNote(*m_context, QStringLiteral("undated"));
        undated->setValue({}, QStringLiteral("stamp"));
        const QString stamp = QStringLiteral("stamp");
        using Comparison = Predicate::Comparison;

        for (const bool isSaved : { false, true }) {
            if (isSaved)
                mustSave(*m_context);
            const auto where = [&](Comparison comparison, const QVariant& value) {
                return titles(*m_context, notesWhere(stamp, comparison, value));
            };
            QCOMPARE(where(Comparison::LessThan, at(100)), words("before"));
            QCOMPARE(where(Comparison::LessOrEqual, at(100)), words("before at"));
            QCOMPARE(where(Comparison::Equal, at(100)), words("at"));
            QCOMPARE(where(Comparison::GreaterOrEqual, at(100)), words("at after"));
            QCOMPARE(where(Comparison::GreaterThan, at(100)), words("after"));
            QCOMPARE(where(Comparison::Equal, {}), words("undated"));
        }
    }

    void aValueThatIsNoNumberSortsAsAbsent()
    {
        for (const double weight : { 2.0, std::nan(""), 1.0 })
            addNote(*m_context, QString::number(weight))
                ->setValue(weight, QStringLiteral("weight"));
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.sortDescriptors = { { QStringLiteral("weight"), {} } };

        QCOMPARE(titles(*m_context, request), words("nan 1 2"));
        request.predicate
            = Predicate { QStringLiteral("weight"), Predicate::Comparison::GreaterThan, 0.0 };
        QCOMPARE(titles(*m_context, request), words("1 2"));
    }

    void nothingCanBeComparedWithWhatIsNoNumber()
    {
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.predicate
            = Predicate { QStringLiteral("weight"), Predicate::Comparison::Equal, std::nan("") };

        QCOMPARE(m_context->fetch(request).error().code, StoreError::Code::InvalidRequest);
    }

    void anObserverOfNewIdentitiesCanSave()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);
        connect(m_context, &NSManagedObjectContext::identitiesBecamePermanent, m_context, [&] {
            note->setValue(2, QStringLiteral("count"));
            mustSave(*m_context);
        });
        note->setValue(1, QStringLiteral("count"));
        addNote(*m_context, QStringLiteral("b"));

        mustSave(*m_context);

        QVERIFY(!m_context->hasChanges());
        QCOMPARE(note->value(QStringLiteral("count")).toInt(), 2);
    }

    void limitAndOffsetCutTheSortedResult()
    {
        for (int i = 0; i < 6; ++i)
            addNote(*m_context, QString::number(i), i);
        NSFetchRequest request = notesByDate(SortDescriptor::Order::Descending);
        request.fetchOffset = 1;
        request.fetchLimit = 3;

        for (const bool isSaved : { false, true }) {
            if (isSaved)
                mustSave(*m_context);
            QCOMPARE(titles(*m_context, request), words("4 3 2"));
            QCOMPARE(*m_context->count(request), 3);
        }
    }

    void aBatchOfFaultsIsReadTogether()
    {
        for (int i = 0; i < 6; ++i)
            addNote(*m_context, QString::number(i), i);
        mustSave(*m_context);
        NSFetchRequest request = notesByDate(SortDescriptor::Order::Ascending);
        request.fetchBatchSize = 4;
        const auto notes = m_context->fetch(request);
        QVERIFY(std::all_of(
            notes->begin(), notes->end(), [](const auto& note) { return note->isFault(); }));

        QCOMPARE(title(*notes->at(1)), QStringLiteral("1"));

        for (std::size_t i = 0; i < 6; ++i)
            QCOMPARE(notes->at(i)->isFault(), i >= 4);
    }

    void anUnknownNameInARequestIsAnError()
    {
        const auto fetched
            = m_context->fetch(notesWhere(QStringLiteral("nothing"), {}, QVariant(1)));
        const auto counted = m_context->count({ QStringLiteral("Nothing"), {}, {} });

        QCOMPARE(fetched.error().code, StoreError::Code::InvalidRequest);
        QCOMPARE(counted.error().code, StoreError::Code::InvalidRequest);
    }

    void whatTheModelDoesNotAllowIsNotSaved_data()
    {
        QTest::addColumn<QString>("attribute");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("absent") << QStringLiteral("count") << QVariant();
        QTest::newRow("no number")
            << QStringLiteral("weight") << QVariant(std::numeric_limits<double>::quiet_NaN());
    }

    void whatTheModelDoesNotAllowIsNotSaved()
    {
        QFETCH(const QString, attribute);
        QFETCH(const QVariant, value);
        const auto note = addNote(*m_context, QStringLiteral("a"));
        note->setValue(value, attribute);

        const auto saved = m_context->save();

        QCOMPARE(saved.error().code, StoreError::Code::Validation);
        QVERIFY(m_context->hasChanges());
        QCOMPARE(openContainer(m_folder.file())
                     ->viewContext()
                     .count({ QStringLiteral("Note"), {}, {} })
                     .value(),
            0);
    }

    void aValueOfAnotherTypeStopsTheProgram()
    {
        const Death death = deathOf([&] {
            m_context->insertNewObject(QStringLiteral("Note"))
                ->setValue(QStringLiteral("seven"), QStringLiteral("count"));
        });

        QVERIFY(death.aborted);
        QVERIFY(death.message.contains("Note.count"));
    }

    void withoutAStoreReadingAndSavingAreErrors()
    {
        NSPersistentContainer container(QStringLiteral("Notes"), noteModel());
        NSManagedObjectContext& context = container.viewContext();
        addNote(context, QStringLiteral("a"));

        QCOMPARE(context.save().error().code, StoreError::Code::NoStore);
        QCOMPARE(context.fetch({ QStringLiteral("Note"), {}, {} }).error().code,
            StoreError::Code::NoStore);
        const NSManagedObjectID id(noteModel()->entity(QStringLiteral("Note")), 1);
        QCOMPARE(context.existingObject(id).error().code, StoreError::Code::NoStore);
        QVERIFY(context.hasChanges());
    }

    void observersHearOfChangesInTheNextTurnOfTheEventLoop()
    {
        QSignalSpy changed(m_context, &NSManagedObjectContext::objectsDidChange);

        const auto note = addNote(*m_context, QStringLiteral("a"));

        QCOMPARE(changed.size(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.front().front().value<ObjectChanges>().inserted,
            (std::vector<NSManagedObjectID> { note->objectID() }));
    }

    void performedWorkRunsLaterOnTheContextsQueue()
    {
        QStringList order;
        m_context->perform([&] { order.append(QStringLiteral("work")); });
        order.append(QStringLiteral("caller"));

        QCoreApplication::processEvents();

        QCOMPARE(order, words("caller work"));
    }

    void resetForgetsEverything()
    {
        const auto saved = addNote(*m_context, QStringLiteral("saved"));
        mustSave(*m_context);
        const auto id = saved->objectID();
        saved->setValue(QStringLiteral("changed"), QStringLiteral("title"));
        addNote(*m_context, QStringLiteral("unsaved"));

        m_context->reset();

        QVERIFY(!m_context->hasChanges());
        QCOMPARE(saved->state(), NSManagedObject::State::Gone);
        QVERIFY(m_context->objectWithID(id) != saved);
        QCOMPARE(titles(*m_context), words("saved"));
    }

    void anObjectOutlivesItsContext()
    {
        const auto note = addNote(*m_context, QStringLiteral("a"));
        mustSave(*m_context);

        m_container.reset();

        QCOMPARE(title(*note), QStringLiteral("a"));
        QVERIFY(note->managedObjectContext() == nullptr);
    }

    void anEntityCanHaveItsOwnClass()
    {
        class Note : public NSManagedObject {
        public:
            using NSManagedObject::NSManagedObject;
        };
        const auto model = modelFrom(noteModelJson());
        model->entity(QStringLiteral("Note"))->setManagedObjectClass<Note>();
        m_container = openContainer(m_folder.file(), model);
        addNote(m_container->viewContext(), QStringLiteral("a"));
        mustSave(m_container->viewContext());
        m_container->viewContext().reset();

        const auto notes = m_container->viewContext().fetch({ QStringLiteral("Note"), {}, {} });

        QVERIFY(std::dynamic_pointer_cast<Note>(notes->front()) != nullptr);
    }
};

QTEST_GUILESS_MAIN(ContextTest)
#include "ContextTest.moc"
