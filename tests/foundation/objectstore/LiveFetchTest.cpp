#include "NSFetchedResultsController.h"
#include "StoreFixture.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

namespace {

/// Follows a model only by what its signals say, as a view does.
class Mirror {
public:
    explicit Mirror(const NSFetchedResultsController& model)
        : m_model(model)
    {
        QObject::connect(&model, &QAbstractItemModel::modelReset, &m_guard, [this] {
            log.append(QStringLiteral("reset"));
            readAll();
        });
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_guard,
            [this](const QModelIndex&, int first, int last) {
                log.append(QStringLiteral("insert %1").arg(first));
                for (int row = first; row <= last; ++row)
                    rows.insert(row, read(row));
            });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_guard,
            [this](const QModelIndex&, int first, int last) {
                log.append(QStringLiteral("remove %1").arg(first));
                rows.remove(first, last - first + 1);
            });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved, &m_guard,
            [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                log.append(QStringLiteral("move %1 %2").arg(from).arg(to));
                rows.move(from, to > from ? to - 1 : to);
            });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &m_guard,
            [this](const QModelIndex& first, const QModelIndex&) {
                log.append(QStringLiteral("change %1").arg(first.row()));
                rows[first.row()] = read(first.row());
            });
        readAll();
    }

    QStringList rows;
    QStringList log;

private:
    QString read(int row) const { return title(*m_model.object(row)); }
    void readAll()
    {
        rows.clear();
        for (int row = 0; row < m_model.rowCount(); ++row)
            rows.append(read(row));
    }

    const NSFetchedResultsController& m_model;
    QObject m_guard;
};

} // namespace

class LiveFetchTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    NSManagedObjectContext* m_context = nullptr;
    std::unique_ptr<NSFetchedResultsController> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    std::unique_ptr<Mirror> m_mirror;

    void open(const NSFetchRequest& request = notesByDate(SortDescriptor::Order::Descending))
    {
        m_list = std::make_unique<NSFetchedResultsController>(request, *m_context);
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
        QVERIFY(m_list->performFetch());
        m_mirror = std::make_unique<Mirror>(*m_list);
    }

    QStringList stored() const
    {
        return titles(*m_context, notesByDate(SortDescriptor::Order::Descending));
    }

    void addMany(int count)
    {
        for (int i = 0; i < count; ++i)
            addNote(*m_context, QString::number(i), i);
        mustSave(*m_context);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_container = openContainer(m_folder.file());
        m_context = &m_container->viewContext();
    }

    void cleanup()
    {
        m_mirror.reset();
        m_tester.reset();
        m_list.reset();
        m_container.reset();
    }

    void aNewRecordIsInsertedInItsPlace()
    {
        addNote(*m_context, QStringLiteral("a"), 10);
        addNote(*m_context, QStringLiteral("c"), 30);
        mustSave(*m_context);
        open();

        addNote(*m_context, QStringLiteral("b"), 20);
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, words("c b a"));
        QCOMPARE(m_mirror->log, (QStringList { QStringLiteral("insert 1") }));
        QVERIFY(!m_list->object(1)->objectID().isTemporaryID());
        QCOMPARE(m_list->rowOf(m_list->object(1)->objectID()), 1);
    }

    void anUnsavedRecordShowsInTheNextTurnAndGoesWithARollback()
    {
        open();
        addNote(*m_context, QStringLiteral("a"), 10);

        QCoreApplication::processEvents();
        QCOMPARE(m_mirror->rows, words("a"));

        m_context->rollback();
        QCOMPARE(m_mirror->rows, QStringList());
    }

    void aDeletedRecordIsRemovedAndComesBackWithARollback()
    {
        addMany(3);
        open();
        m_context->deleteObject(*m_list->object(1));
        m_context->processPendingChanges();
        QCOMPARE(m_mirror->rows, words("2 0"));

        m_context->rollback();

        QCOMPARE(m_mirror->rows, words("2 1 0"));
        QCOMPARE(m_mirror->log,
            (QStringList { QStringLiteral("remove 1"), QStringLiteral("insert 1") }));
    }

    void aRenamedRecordChangesInItsPlace()
    {
        addMany(3);
        open();

        m_list->object(1)->setValue(QStringLiteral("renamed"), QStringLiteral("title"));
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, words("2 renamed 0"));
        QCOMPARE(m_mirror->log, (QStringList { QStringLiteral("change 1") }));
    }

    void aRecordWithANewDateMoves_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("stamp");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("up") << 4 << 35
                            << QStringList { QStringLiteral("move 4 1"),
                                   QStringLiteral("change 1") };
        QTest::newRow("down") << 0 << 5
                              << QStringList { QStringLiteral("move 0 4"),
                                     QStringLiteral("change 3") };
        QTest::newRow("to the end")
            << 0 << -5 << QStringList { QStringLiteral("move 0 5"), QStringLiteral("change 4") };
        QTest::newRow("nowhere") << 2 << 21 << QStringList { QStringLiteral("change 2") };
    }

    void aRecordWithANewDateMoves()
    {
        QFETCH(const int, row);
        QFETCH(const int, stamp);
        QFETCH(const QStringList, log);
        for (int i = 0; i < 5; ++i)
            addNote(*m_context, QString::number(i), qint64(10) * i);
        mustSave(*m_context);
        open();

        m_list->object(row)->setValue(at(stamp), QStringLiteral("stamp"));
        mustSave(*m_context);

        QCOMPARE(m_mirror->log, log);
        QCOMPARE(m_mirror->rows, stored());
    }

    void severalRecordsThatChangePlacesEndInTheirs()
    {
        addMany(6);
        open();

        m_list->object(0)->setValue(at(-1), QStringLiteral("stamp"));
        m_list->object(3)->setValue(at(100), QStringLiteral("stamp"));
        m_list->object(5)->setValue(at(2), QStringLiteral("stamp"));
        m_context->deleteObject(*m_list->object(4));
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, stored());
        QVERIFY(!m_mirror->log.contains(QStringLiteral("reset")));
    }

    void theListKeepsToItsPredicate()
    {
        addMany(4);
        NSFetchRequest request = notesByDate(SortDescriptor::Order::Ascending);
        request.predicate
            = Predicate { QStringLiteral("stamp"), Predicate::Comparison::LessThan, at(2) };
        open(request);
        QCOMPARE(m_mirror->rows, words("0 1"));

        m_list->object(0)->setValue(at(50), QStringLiteral("stamp"));
        mustSave(*m_context);
        QCOMPARE(m_mirror->rows, words("1"));
        addNote(*m_context, QStringLiteral("x"), 0);
        addNote(*m_context, QStringLiteral("y"), 9);
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, words("x 1"));
    }

    void aMergedBatchDeletionIsOneRemoval()
    {
        addMany(500);
        open();
        NSFetchRequest old = notesByDate(SortDescriptor::Order::Ascending);
        old.predicate
            = Predicate { QStringLiteral("stamp"), Predicate::Comparison::LessThan, at(450) };
        NSBatchDeleteRequest deletion(old);
        deletion.resultType = NSBatchDeleteRequestResultType::resultTypeObjectIDs;
        const auto result = m_context->execute(deletion);

        NSManagedObjectContext::mergeChanges(
            { { NSDeletedObjectsKey, std::get<1>(result->result) } }, { m_context });

        QCOMPARE(m_mirror->log, (QStringList { QStringLiteral("remove 50") }));
        QCOMPARE(m_list->rowCount(), 50);
        QCOMPARE(m_mirror->rows, stored());
    }

    void scatteredDeletionsAreExactUpToALimit_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("resets");
        QTest::newRow("few") << 200 << false;
        QTest::newRow("very many") << 4000 << true;
    }

    void scatteredDeletionsAreExactUpToALimit()
    {
        QFETCH(const int, count);
        QFETCH(const bool, resets);
        addMany(count);
        open();
        for (int row = 0; row < count; row += 2)
            m_context->deleteObject(*m_list->object(row));

        mustSave(*m_context);

        QCOMPARE(m_mirror->log.contains(QStringLiteral("reset")), resets);
        QCOMPARE(m_list->rowCount(), count / 2);
        QCOMPARE(m_mirror->rows, stored());
    }

    void aLongListIsCompleteOnlyAfterAWhileButAlwaysRight()
    {
        addMany(20000);
        m_list = std::make_unique<NSFetchedResultsController>(
            notesByDate(SortDescriptor::Order::Descending), *m_context);

        QVERIFY(m_list->performFetch());

        QCOMPARE(m_list->rowCount(), 20000);
        QVERIFY(!m_list->isComplete());
        QCOMPARE(title(*m_list->object(12000)), QStringLiteral("7999"));
        QTRY_VERIFY(m_list->isComplete());
        QCOMPARE(title(*m_list->object(19999)), QStringLiteral("0"));
    }

    void aChangeWhileTheListIsBeingReadIsNotLost()
    {
        addMany(20000);
        m_list = std::make_unique<NSFetchedResultsController>(
            notesByDate(SortDescriptor::Order::Descending), *m_context);
        QVERIFY(m_list->performFetch());
        QVERIFY(!m_list->isComplete());

        addNote(*m_context, QStringLiteral("newest"), 20000);
        m_context->deleteObject(*m_list->object(15000));
        mustSave(*m_context);

        QVERIFY(m_list->isComplete());
        QCOMPARE(m_list->rowCount(), 20000);
        QCOMPARE(title(*m_list->object(0)), QStringLiteral("newest"));
        QCOMPARE(title(*m_list->object(15001)), QStringLiteral("4998"));
    }

    void equalDatesKeepTheStoresOrder()
    {
        for (const QString& name : words("a b c d"))
            addNote(*m_context, name, 7);
        addNote(*m_context, QStringLiteral("later"), 8);
        mustSave(*m_context);
        open();
        QCOMPARE(m_mirror->rows, words("later a b c d"));

        addNote(*m_context, QStringLiteral("e"), 7);
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, words("later a b c d e"));
    }

    void aRecordThatAnObserverSavesAtOnceIsListed()
    {
        connect(m_context, &NSManagedObjectContext::objectsDidChange, m_context,
            [this] { mustSave(*m_context); }); // hears of the change before the list does
        open();

        addNote(*m_context, QStringLiteral("a"), 1);
        m_context->processPendingChanges();

        QCOMPARE(m_mirror->rows, words("a"));
        QVERIFY(!m_list->object(0)->objectID().isTemporaryID());
        QCOMPARE(m_list->rowOf(m_list->object(0)->objectID()), 0);
    }

    void anObserverThatDeletesWhatIsAnnouncedLeavesNoRow()
    {
        connect(m_context, &NSManagedObjectContext::objectsDidChange, m_context,
            [this](const ObjectChanges& changes) {
                for (const NSManagedObjectID& id : changes.inserted) {
                    if (NSManagedObject* note = m_context->registeredObject(id))
                        m_context->deleteObject(*note);
                }
                mustSave(*m_context);
            });
        open();

        addNote(*m_context, QStringLiteral("a"), 1);
        m_context->processPendingChanges();

        QCOMPARE(m_mirror->rows, QStringList());
    }

    /// A view may answer an insertion with a change of its own, in the middle of several.
    void aChangeMadeWhileRowsAreAnnouncedIsFollowedToo()
    {
        addMany(3);
        open();
        bool isFirst = true;
        connect(m_list.get(), &QAbstractItemModel::rowsInserted, m_list.get(), [&] {
            if (!std::exchange(isFirst, false))
                return;
            m_context->deleteObject(*m_list->object(0));
            addNote(*m_context, QStringLiteral("x"), 40);
            mustSave(*m_context);
        });

        for (int i = 10; i < 15; ++i)
            addNote(*m_context, QString::number(i), i);
        m_context->processPendingChanges();
        mustSave(*m_context);

        QCOMPARE(m_mirror->rows, stored());
        for (int row = 0; row < m_list->rowCount(); ++row)
            QVERIFY(!m_list->object(row)->objectID().isTemporaryID());
    }

    void recordsThatOthersDeletedDoNotMisleadTheOrder()
    {
        addMany(2000);
        m_context->reset(); // so that a row is only read when it is asked for
        m_list = std::make_unique<NSFetchedResultsController>(
            notesByDate(SortDescriptor::Order::Descending), *m_context);
        QVERIFY(m_list->performFetch());
        NSFetchRequest newer { QStringLiteral("Note"), {}, {} };
        newer.predicate
            = Predicate { QStringLiteral("stamp"), Predicate::Comparison::GreaterThan, at(20) };
        const auto others = openContainer(m_folder.file());
        QVERIFY(others->viewContext().execute(NSBatchDeleteRequest(newer)));

        addNote(*m_context, QStringLiteral("x"), 15);
        mustSave(*m_context);

        QStringList rows;
        for (int row = 0; row < m_list->rowCount(); ++row)
            rows.append(title(*m_list->object(row)));
        QCOMPARE(rows, stored());
    }

    void onlyTheRowsAskedForAreRead()
    {
        addMany(1000);
        m_context->reset();
        m_list = std::make_unique<NSFetchedResultsController>(
            notesByDate(SortDescriptor::Order::Descending), *m_context);
        QVERIFY(m_list->performFetch());

        (void)m_list->object(500);

        int known = 0;
        for (int id = 1; id <= 1000; ++id)
            known += m_context->registeredObject({ m_list->object(500)->objectID().entity(), id })
                != nullptr;
        QVERIFY(known <= 64);
    }

    void rolesAreTheAttributes()
    {
        addMany(1);
        open();
        const int role = m_list->roleNames().key("title");

        QCOMPARE(m_list->data(m_list->index(0), role).toString(), QStringLiteral("0"));
        QVERIFY(!m_list->data(m_list->index(0), Qt::DisplayRole).isValid());
    }

    void anUnknownAttributeIsAnErrorAndAnEmptyList()
    {
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.sortDescriptors = { { QStringLiteral("nothing"), {} } };
        NSFetchedResultsController list(request, *m_context);

        QCOMPARE(list.performFetch().error().code, StoreError::Code::InvalidRequest);
        QCOMPARE(list.rowCount(), 0);
        addNote(*m_context, QStringLiteral("a"));
        m_context->processPendingChanges();
        QCOMPARE(list.rowCount(), 0);
    }
};

QTEST_GUILESS_MAIN(LiveFetchTest)
#include "LiveFetchTest.moc"
