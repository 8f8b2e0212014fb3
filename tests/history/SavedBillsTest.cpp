#include "SavedBills.h"

#include "DeathTest.h"
#include "HistoryFixture.h"
#include "PersistentContainer.h"

#include <QSignalSpy>
#include <QTest>

#include <cstdlib>
#include <unistd.h>

class SavedBillsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HistoryFixture> m_world;

private Q_SLOTS:
    void init() { m_world = std::make_unique<HistoryFixture>(); }

    void withoutBillsTheListIsEmpty()
    {
        const SavedBills list(m_world->settings(), m_world->context());

        QCOMPARE(list.count(), 0);
        QCOMPARE(list.rowCount(), 0);
    }

    void theNewestBillComesFirst()
    {
        (void)m_world->addBill(QStringLiteral("lunch"), pieDay(12));
        (void)m_world->addBill(QStringLiteral("dinner"), pieDay(20));
        (void)m_world->addBill(QStringLiteral("breakfast"), pieDay(8));
        const SavedBills list(m_world->settings(), m_world->context());

        QCOMPARE(shownRefs(list),
            QStringList({ QStringLiteral("dinner"), QStringLiteral("lunch"),
                QStringLiteral("breakfast") }));
        QCOMPARE(list.count(), 3);
    }

    void aBillSavedMeanwhileTakesItsPlace()
    {
        (void)m_world->addBill(QStringLiteral("breakfast"), pieDay(8));
        (void)m_world->addBill(QStringLiteral("dinner"), pieDay(20));
        const SavedBills list(m_world->settings(), m_world->context());
        const QSignalSpy counts(&list, &SavedBills::countChanged);
        const QSignalSpy insertions(&list, &SavedBills::rowsInserted);

        (void)m_world->addBill(QStringLiteral("lunch"), pieDay(12));

        QCOMPARE(shownRefs(list),
            QStringList({ QStringLiteral("dinner"), QStringLiteral("lunch"),
                QStringLiteral("breakfast") }));
        QCOMPARE(counts.count(), 1);
        QCOMPARE(insertions.count(), 1);
        QCOMPARE(insertions.first().at(1).toInt(), 1);
    }

    void twoBillsOfOneStampKeepTheStoresOrder()
    {
        (void)m_world->addBill(QStringLiteral("z"), pieDay());
        (void)m_world->addBill(QStringLiteral("a"), pieDay());
        const SavedBills before(m_world->settings(), m_world->context());
        (void)m_world->addBill(QStringLiteral("m"), pieDay());
        const SavedBills after(m_world->settings(), m_world->context());

        const QStringList stored { QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("m") };
        QCOMPARE(m_world->storedRefs(), stored);
        QCOMPARE(shownRefs(after), stored);
        QCOMPARE(shownRefs(before), stored);
    }

    void aRecordWithoutADescriptionShowsAnEmptyText()
    {
        Item::make(m_world->context())->setTimestamp(pieDay());
        m_world->save();
        const SavedBills list(m_world->settings(), m_world->context());

        QVERIFY(!list.item(0)->ref().has_value());
        QCOMPARE(shown(list, 0, "ref"), QVariant(QString()));
    }

    void theAmountIsTheTotalUntilTheShareIsAskedFor()
    {
        m_world->addBills({ QStringLiteral("lunch") });
        const SavedBills list(m_world->settings(), m_world->context());
        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("$110.00"));

        m_world->settings().setShowShareInSavedBillsList(true);
        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("$55.00"));

        m_world->settings().setShowShareInSavedBillsList(false);
        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("$110.00"));
    }

    void withoutTheCurrencySymbolAmountsAreOnlyGrouped()
    {
        const auto item = m_world->addBill(QStringLiteral("banquet"), pieDay());
        item->setTotal(12345.5);
        m_world->save();
        const SavedBills list(m_world->settings(), m_world->context());
        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("$12,345.50"));

        m_world->settings().setShowCurrency(false);

        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("12,345.5"));
    }

    void everyRowHearsOfAnotherAmountAndOnlyOfThat()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") });
        const SavedBills list(m_world->settings(), m_world->context());
        const QSignalSpy changes(&list, &SavedBills::dataChanged);

        m_world->settings().setShowShareInSavedBillsList(true);
        m_world->settings().setShowCurrency(false);

        const QList<int> amount { list.roleNames().key("amount") };
        QCOMPARE(changes.count(), 2);
        for (const QList<QVariant>& change : changes) {
            QCOMPARE(change.at(0).toModelIndex().row(), 0);
            QCOMPARE(change.at(1).toModelIndex().row(), 2);
            QCOMPARE(change.at(2).value<QList<int>>(), amount);
        }
    }

    void theDateIsTheDayAndNeverTheTime()
    {
        (void)m_world->addBill(QStringLiteral("lunch"), pieDay(12, 34));
        const SavedBills list(m_world->settings(), m_world->context());

        QCOMPARE(shown(list, 0, "date").toString(), QStringLiteral("Sat 14 Mar 2026"));
    }

    void aRecordWithoutAStampStopsTheProcess()
    {
        Item::make(m_world->context())->setRef(QStringLiteral("broken"));
        m_world->save();
        const SavedBills list(m_world->settings(), m_world->context());
        QCOMPARE(shown(list, 0, "ref").toString(), QStringLiteral("broken"));

        const Death death = deathOf([&] { (void)shown(list, 0, "date"); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }

    void aBillDeletedByAnotherProgramDoesNotStopTheProcess()
    {
        m_world->addBills({ QStringLiteral("first"), QStringLiteral("second") });
        const SavedBills list(m_world->settings(), m_world->context());

        // Before its row is first asked for: the record is missing when it is to be read.
        m_world->deleteElsewhere(QStringLiteral("first"));

        QCOMPARE(list.count(), 2);
        QCOMPARE(shown(list, 0, "ref").toString(), QString());
        QCOMPARE(shown(list, 0, "date").toString(), QString());
        QCOMPARE(shown(list, 0, "amount").toString(), QStringLiteral("$0.00"));
        QCOMPARE(shown(list, 1, "ref").toString(), QStringLiteral("second"));
    }

    void aStoreThatCannotBeReadShowsNothingAndIsSaidOnce()
    {
        const QString name = QStringLiteral("Vexilo");
        NSPersistentContainer closed(
            name, std::get<PersistentContainer::Model>(PersistentContainer::model(name)));

        const Death noDeath = deathOf([&] {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            const SavedBills list(m_world->settings(), closed.viewContext());
            if (list.count() != 0)
                std::abort();
        });

        QVERIFY(!noDeath.aborted);
        QVERIFY2(
            noDeath.message.startsWith("StoreError (no store): "), noDeath.message.constData());
        QCOMPARE(noDeath.message.count('\n'), 1);
    }

    void aMarkIsSetAndTakenOff()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b") });
        SavedBills list(m_world->settings(), m_world->context());
        const QSignalSpy marks(&list, &SavedBills::marksChanged);

        list.toggleMark(1);
        QCOMPARE(list.markedRows(), QList<int> { 1 });
        QCOMPARE(shown(list, 1, "marked").toBool(), true);
        QCOMPARE(shown(list, 0, "marked").toBool(), false);

        list.toggleMark(1);
        QCOMPARE(list.markedCount(), 0);
        QCOMPARE(shown(list, 1, "marked").toBool(), false);
        QCOMPARE(marks.count(), 2);
    }

    void marksFollowTheirRowsWhenOthersAreDeleted()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") });
        SavedBills list(m_world->settings(), m_world->context());
        list.toggleMark(2);

        m_world->context().deleteObject(*list.item(0));
        m_world->save();

        QCOMPARE(list.markedRows(), QList<int> { 1 });
        QCOMPARE(shown(list, 1, "ref").toString(), QStringLiteral("c"));
        QCOMPARE(shown(list, 1, "marked").toBool(), true);
        QCOMPARE(shown(list, 0, "marked").toBool(), false);
    }

    void theMarkOfADeletedRowIsDropped()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b") });
        SavedBills list(m_world->settings(), m_world->context());
        list.toggleMark(0);
        list.toggleMark(1);
        const QSignalSpy marks(&list, &SavedBills::marksChanged);

        m_world->context().deleteObject(*list.item(0));
        m_world->save();

        QCOMPARE(list.markedRows(), QList<int> { 0 });
        QCOMPARE(marks.count(), 1);
    }

    void aResetDropsTheMarksAndSaysSo()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b") });
        SavedBills list(m_world->settings(), m_world->context());
        list.toggleMark(1);
        const QSignalSpy marks(&list, &SavedBills::marksChanged);

        m_world->context().refreshAllObjects();

        QCOMPARE(list.markedCount(), 0);
        QCOMPARE(marks.count(), 1);
        QCOMPARE(list.count(), 2);
    }

    void clearedMarksAreAnnouncedToEveryRow()
    {
        m_world->addBills({ QStringLiteral("a"), QStringLiteral("b") });
        SavedBills list(m_world->settings(), m_world->context());
        list.toggleMark(0);
        const QSignalSpy changes(&list, &SavedBills::dataChanged);

        list.clearMarks();

        QCOMPARE(list.markedCount(), 0);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.first().at(1).toModelIndex().row(), 1);
    }
};

QTEST_GUILESS_MAIN(SavedBillsTest)
#include "SavedBillsTest.moc"
