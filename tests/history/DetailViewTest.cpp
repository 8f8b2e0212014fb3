#include "DetailView.h"

#include "DeathTest.h"
#include "HistoryFixture.h"

#include <QSignalSpy>
#include <QTest>

class DetailViewTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HistoryFixture> m_world;
    std::shared_ptr<Item> m_item;

private Q_SLOTS:
    void init()
    {
        m_item.reset();
        m_world = std::make_unique<HistoryFixture>();
        m_item = m_world->addBill(QStringLiteral("lunch"), pieDay(12, 5));
        m_item->setBill(1234.567);
        m_item->setPeople(3);
        m_item->setService(2);
        m_item->setTotal(1481.46);
        m_item->setShare(493.82);
        m_item->setTip(246.9);
        m_item->setRoundtip(true);
        m_world->save();
    }

    void cleanup() { m_item.reset(); }

    void everyStoredFieldIsALine()
    {
        const DetailView detail(m_item, m_world->settings());

        QCOMPARE(detail.bill(), QStringLiteral("$1,234.57"));
        QCOMPARE(detail.people(), QStringLiteral("3"));
        QCOMPARE(detail.service(), QStringLiteral("Excellent"));
        QCOMPARE(detail.total(), QStringLiteral("$1,481.46"));
        QCOMPARE(detail.share(), QStringLiteral("$493.82"));
        QCOMPARE(detail.tip(), QStringLiteral("$246.90"));
        QCOMPARE(detail.everyone(), QStringLiteral("Yes"));
        QCOMPARE(detail.roundtip(), QStringLiteral("Yes"));
        QCOMPARE(detail.roundshare(), QStringLiteral("No"));
        QCOMPARE(detail.savedOn(), QStringLiteral("Saved on: Sat 14 Mar 2026 at 12:05"));
    }

    void eachOptionHasItsOwnLine()
    {
        m_item->setEveryone(false);
        m_item->setRoundtip(false);
        m_item->setRoundshare(true);
        const DetailView detail(m_item, m_world->settings());

        QCOMPARE(detail.everyone(), QStringLiteral("No"));
        QCOMPARE(detail.roundtip(), QStringLiteral("No"));
        QCOMPARE(detail.roundshare(), QStringLiteral("Yes"));
    }

    void aLargeCountOfPeopleIsNotGrouped()
    {
        m_item->setPeople(12345);

        QCOMPARE(DetailView(m_item, m_world->settings()).people(), QStringLiteral("12345"));
    }

    void withoutTheCurrencySymbolEveryAmountIsOnlyGrouped()
    {
        const DetailView detail(m_item, m_world->settings());
        const QSignalSpy changes(&detail, &DetailView::changed);

        m_world->settings().setShowCurrency(false);

        QCOMPARE(changes.count(), 1);
        QCOMPARE(detail.bill(), QStringLiteral("1,234.57"));
        QCOMPARE(detail.total(), QStringLiteral("1,481.46"));
        QCOMPARE(detail.share(), QStringLiteral("493.82"));
        QCOMPARE(detail.tip(), QStringLiteral("246.9"));
    }

    void theLinesFollowTheRecord()
    {
        const DetailView detail(m_item, m_world->settings());
        const QSignalSpy changes(&detail, &DetailView::changed);

        m_item->setPeople(4);
        QTRY_COMPARE(changes.count(), 1);

        QCOMPARE(detail.people(), QStringLiteral("4"));
    }

    void aRecordWithoutAStampStopsTheProcess()
    {
        const std::shared_ptr<Item> broken = Item::make(m_world->context());
        m_world->save();
        const DetailView detail(broken, m_world->settings());
        QCOMPARE(detail.people(), QStringLiteral("0"));

        const Death death = deathOf([&] { (void)detail.savedOn(); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }

    void aRecordDeletedHereDoesNotStopTheProcess()
    {
        const DetailView detail(m_item, m_world->settings());
        m_world->context().deleteObject(*m_item);
        m_world->save();

        QVERIFY(m_item->isDeleted());
        QCOMPARE(detail.savedOn(), QStringLiteral("Saved on: Sat 14 Mar 2026 at 12:05"));
    }

    void aRecordDeletedByAnotherProgramDoesNotStopTheProcess()
    {
        const DetailView detail(m_item, m_world->settings());
        m_world->deleteElsewhere(QStringLiteral("lunch"));
        m_world->context().refresh(*m_item, NSManagedObjectContext::Refresh::DiscardChanges);

        QCOMPARE(detail.savedOn(), QString());
        QCOMPARE(detail.bill(), QStringLiteral("$0.00"));
    }
};

QTEST_GUILESS_MAIN(DetailViewTest)
#include "DetailViewTest.moc"
