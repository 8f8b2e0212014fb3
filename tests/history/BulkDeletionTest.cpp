#include "HistoryView.h"

#include "DeathTest.h"
#include "HistoryFixture.h"
#include "PersistentContainer.h"

#include <QTest>

#include <cstdio>
#include <unistd.h>

namespace {

QDateTime at(int year, int month, int day, int hour = 10)
{
    return { QDate(year, month, day), QTime(hour, 0) };
}

QStringList refs(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// What a call writes on standard output, while it must not end the process.
Death diagnosticsOf(const std::function<void()>& call)
{
    return deathOf([&] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        call();
    });
}

} // namespace

class BulkDeletionTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HistoryFixture> m_world;
    std::unique_ptr<HistoryView> m_view;
    QDateTime m_now;

    void open()
    {
        m_view = std::make_unique<HistoryView>(
            m_world->settings(), m_world->context(), [this] { return m_now; });
    }

    [[nodiscard]] QStringList rows() { return shownRefs(*m_view->items()); }

private Q_SLOTS:
    void init()
    {
        m_view.reset();
        m_world = std::make_unique<HistoryFixture>();
        m_now = at(2026, 11, 20);
    }

    void cleanup() { m_view.reset(); }

    void aBillStampedExactlyAtTheCutOffIsKept()
    {
        (void)m_world->addBill(QStringLiteral("at"), at(2026, 5, 20));
        open();

        m_view->deleteOldBills();
        QCoreApplication::processEvents();

        QCOMPARE(rows(), refs("at"));
    }

    void aBillStampedBeforeTheCutOffIsDeleted()
    {
        const QDateTime cutOff = at(2026, 5, 20);
        (void)m_world->addBill(QStringLiteral("second"), cutOff.addSecs(-1));
        (void)m_world->addBill(QStringLiteral("millisecond"), cutOff.addMSecs(-1));
        (void)m_world->addBill(QStringLiteral("years"), at(2016, 5, 20));
        (void)m_world->addBill(QStringLiteral("after"), cutOff.addMSecs(1));
        (void)m_world->addBill(QStringLiteral("today"), m_now);
        (void)m_world->addBill(QStringLiteral("tomorrow"), m_now.addDays(1));
        open();

        m_view->deleteOldBills();
        QCoreApplication::processEvents();

        QCOMPARE(rows(), refs("tomorrow today after"));
        QCOMPARE(m_world->storedRefs(), refs("after today tomorrow"));
    }

    void theCutOffIsSixMonthsBeforeNow_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QDateTime>("cutOff");
        QTest::newRow("same year") << at(2026, 11, 20) << at(2026, 5, 20);
        QTest::newRow("last day of February") << at(2026, 8, 31) << at(2026, 2, 28);
        QTest::newRow("last day of February, leap year") << at(2028, 8, 31) << at(2028, 2, 29);
        QTest::newRow("last day of a short month") << at(2026, 3, 31) << at(2025, 9, 30);
        QTest::newRow("year before") << at(2026, 1, 15, 23) << at(2025, 7, 15, 23);
        QTest::newRow("midnight") << at(2026, 7, 1, 0) << at(2026, 1, 1, 0);
    }

    void theCutOffIsSixMonthsBeforeNow()
    {
        QFETCH(const QDateTime, now);
        QFETCH(const QDateTime, cutOff);
        m_now = now;
        (void)m_world->addBill(QStringLiteral("kept"), cutOff);
        (void)m_world->addBill(QStringLiteral("old"), cutOff.addSecs(-1));
        open();

        m_view->deleteOldBills();
        QCoreApplication::processEvents();

        QCOMPARE(rows(), refs("kept"));
    }

    void aRecordWithoutAStampIsNotOld()
    {
        Item::make(m_world->context())->setRef(QStringLiteral("undated"));
        m_world->save();
        open();

        m_view->deleteOldBills();
        QCoreApplication::processEvents();

        QCOMPARE(m_world->storedRefs(), refs("undated"));
    }

    void deletingOldBillsRunsAfterTheCurrentAction()
    {
        (void)m_world->addBill(QStringLiteral("old"), at(2020, 1, 1));
        open();

        m_view->deleteOldBills();
        QCOMPARE(rows(), refs("old"));
        QCOMPARE(m_world->storedRefs(), refs("old"));
        QCoreApplication::processEvents();

        QCOMPARE(rows(), QStringList());
        QCOMPARE(m_world->storedRefs(), QStringList());
    }

    void theCutOffIsThatOfTheAction()
    {
        (void)m_world->addBill(QStringLiteral("kept"), at(2026, 5, 20));
        open();

        m_view->deleteOldBills();
        m_now = at(2030, 1, 1);
        QCoreApplication::processEvents();

        QCOMPARE(rows(), refs("kept"));
    }

    void oldBillsAreDeletedAlsoWhenTheScreenIsClosedAtOnce()
    {
        (void)m_world->addBill(QStringLiteral("old"), at(2020, 1, 1));
        open();

        m_view->deleteOldBills();
        m_view.reset();
        QCoreApplication::processEvents();

        QCOMPARE(m_world->storedRefs(), QStringList());
    }

    void deletingAllBillsRunsAtOnce()
    {
        m_world->addBills(refs("a b c"));
        open();

        m_view->deleteAllBills();

        QCOMPARE(m_view->items()->count(), 0);
        QCOMPARE(m_world->storedRefs(), QStringList());
    }

    void deletingAllBillsTakesTheUnreadAndTheUndatedOnesToo()
    {
        for (int i = 0; i < 400; ++i)
            Item::make(m_world->context())->setTimestamp(pieDay().addSecs(-i));
        (void)Item::make(m_world->context());
        m_world->save();
        open();
        QCOMPARE(m_view->items()->count(), 401);

        m_view->deleteAllBills();

        QCOMPARE(m_view->items()->count(), 0);
        QCOMPARE(m_world->storedRefs(), QStringList());
    }

    void withoutBillsBothDeletionsCompleteAndTheListStaysEmpty()
    {
        open();

        const Death silent = diagnosticsOf([&] {
            m_view->deleteOldBills();
            QCoreApplication::processEvents();
            m_view->deleteAllBills();
        });
        m_view->deleteOldBills();
        QCoreApplication::processEvents();
        m_view->deleteAllBills();

        QVERIFY(!silent.aborted);
        QCOMPARE(silent.message, QByteArray());
        QCOMPARE(m_view->items()->count(), 0);
    }

    void nothingIsDeletedWithoutAnswer()
    {
        (void)m_world->addBill(QStringLiteral("old"), at(2000, 1, 1));
        open();

        QVERIFY(m_view->setProperty("promptToDeleteOld", true));
        QVERIFY(m_view->setProperty("promptToDelete", true));
        QCoreApplication::processEvents();

        QCOMPARE(rows(), refs("old"));
        QCOMPARE(m_view->areYouSure(), QStringLiteral("Are you sure?"));
    }

    void noBillIsDeletedByItself()
    {
        (void)m_world->addBill(QStringLiteral("old"), at(2000, 1, 1));

        for (int opening = 0; opening < 2; ++opening) {
            open();
            QCoreApplication::processEvents();
        }

        QCOMPARE(rows(), refs("old"));
        QCOMPARE(m_world->storedRefs(), refs("old"));
    }

    void thePageOfADeletedBillIsClosed()
    {
        m_world->addBills(refs("a b"));
        open();
        m_view->choose(1);
        m_view->setIsEditing(true);
        m_view->pressRow(0);

        m_view->deleteAllBills();

        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->items()->markedCount(), 0);
    }

    void aPendingChangeIsSavedWithTheDeletion_data()
    {
        QTest::addColumn<bool>("onlyOld");
        QTest::newRow("old bills") << true;
        QTest::newRow("all bills") << false;
    }

    void aPendingChangeIsSavedWithTheDeletion()
    {
        QFETCH(const bool, onlyOld);
        (void)m_world->addBill(QStringLiteral("old"), at(2000, 1, 1));
        open();
        const std::shared_ptr<Item> unsaved = Item::make(m_world->context());
        unsaved->setRef(QStringLiteral("pending"));
        unsaved->setTimestamp(m_now);

        if (onlyOld)
            m_view->deleteOldBills();
        else
            m_view->deleteAllBills();
        QCoreApplication::processEvents();

        QCOMPARE(m_world->storedRefs(), refs("pending"));
        QCOMPARE(rows(), refs("pending"));
        QVERIFY(!m_world->context().hasChanges());
    }

    void aFailedDeletionIsOnlySaidByADiagnosticLine()
    {
        const QString name = QStringLiteral("Vexilo");
        NSPersistentContainer closed(
            name, std::get<PersistentContainer::Model>(PersistentContainer::model(name)));
        const auto lines = [&](void (HistoryView::*deletion)()) {
            return diagnosticsOf([&] {
                HistoryView view(m_world->settings(), closed.viewContext());
                std::fputs("|", stderr); // the list's own line stands before it
                (view.*deletion)();
                QCoreApplication::processEvents();
            });
        };

        for (const auto deletion : { &HistoryView::deleteAllBills, &HistoryView::deleteOldBills }) {
            const Death noDeath = lines(deletion);
            QVERIFY(!noDeath.aborted);
            const QByteArray said = noDeath.message.mid(noDeath.message.indexOf('|') + 1);
            QVERIFY2(said.startsWith("StoreError (no store): "), said.constData());
            QCOMPARE(said.count('\n'), 1);
        }
    }

    void aFailedSaveAfterTheDeletionIsOnlySaidAndTheBillsStayDeleted()
    {
        (void)m_world->addBill(QStringLiteral("old"), at(2000, 1, 1));
        const auto recent = m_world->addBill(QStringLiteral("recent"), m_now);
        open();
        m_world->renameElsewhere(QStringLiteral("recent"), QStringLiteral("theirs"));
        recent->setRef(QStringLiteral("ours"));

        const Death noDeath = diagnosticsOf([&] {
            m_view->deleteOldBills();
            QCoreApplication::processEvents();
        });

        QVERIFY(!noDeath.aborted);
        QCOMPARE(noDeath.message,
            QByteArray("StoreError (conflict): Records were changed or deleted elsewhere.\n"));
        QCOMPARE(m_world->storedRefs(), refs("theirs"));
    }
};

QTEST_GUILESS_MAIN(BulkDeletionTest)
#include "BulkDeletionTest.moc"
