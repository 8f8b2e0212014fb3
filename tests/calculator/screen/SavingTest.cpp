#include "ContentView.h"

#include "DeathTest.h"
#include "FaultyVfs.h"
#include "Item.h"
#include "TestStore.h"
#include "UserDefaults.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <sqlite3.h>

/// Saving a bill from the calculator, into a store on a disk that can be full.
class SavingTest : public QObject {
    Q_OBJECT

private:
    FaultyVfs& m_disk = FaultyVfs::install();
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TestStore> m_bills;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<UserSettings> m_settings;
    std::unique_ptr<ContentView> m_view;

    void closeAll()
    {
        m_view.reset();
        m_settings.reset();
        m_defaults.reset();
        m_bills.reset();
    }

    /// As the save dialog does it.
    void saveAs(const QString& description)
    {
        m_view->save();
        m_view->setBillDescription(description);
        m_view->saveThis();
        m_view->setProperty("saveDialog", false);
    }

    /// The bills as another program reads them, in the store's order. They outlive their context.
    [[nodiscard]] std::vector<std::shared_ptr<Item>> stored() const
    {
        const auto other = m_bills->otherProgram();
        std::vector<std::shared_ptr<Item>> items;
        const auto found = other->viewContext().fetch(Item::fetchRequest());
        if (!found)
            qFatal("Not read: %s", qPrintable(found.error().toString()));
        for (const auto& object : *found) {
            items.push_back(std::static_pointer_cast<Item>(object));
            (void)items.back()->ref(); // read now: the context goes
        }
        return items;
    }

    std::shared_ptr<Item> listed(int index)
    {
        const auto found = m_bills->context().fetch(Item::fetchRequest());
        return std::static_pointer_cast<Item>(found->at(static_cast<std::size_t>(index)));
    }

    void renameElsewhere(const Item& item)
    {
        const auto other = m_bills->otherProgram();
        const auto theirs = other->viewContext().existingObject(item.objectID());
        std::static_pointer_cast<Item>(*theirs)->setRef(QStringLiteral("theirs"));
        QVERIFY(other->viewContext().save());
    }

    void deleteElsewhere(const Item& item)
    {
        const auto other = m_bills->otherProgram();
        const auto theirs = other->viewContext().existingObject(item.objectID());
        other->viewContext().deleteObject(**theirs);
        QVERIFY(other->viewContext().save());
    }

private Q_SLOTS:
    void init()
    {
        closeAll();
        m_disk.wipe();
        m_folder = std::make_unique<QTemporaryDir>();
        m_bills = std::make_unique<TestStore>();
        m_defaults
            = std::make_unique<UserDefaults>(m_folder->filePath(QStringLiteral("preferences.ini")));
        m_settings = std::make_unique<UserSettings>(*m_defaults);
        m_view = std::make_unique<ContentView>(*m_settings, m_bills->context());
        m_view->appear();
    }

    void cleanup()
    {
        m_disk.allowWrites();
        closeAll();
    }

    // The dialog

    void theDialogOpensWithAnEmptyDescriptionEveryTime()
    {
        const QSignalSpy descriptions(m_view.get(), &ContentView::billDescriptionChanged);
        m_view->save();
        QVERIFY(m_view->property("saveDialog").toBool());
        m_view->setBillDescription(QStringLiteral("typed and cancelled"));
        m_view->setProperty("saveDialog", false);
        QCOMPARE(m_view->billDescription(), QStringLiteral("typed and cancelled"));

        m_view->save();

        QVERIFY(m_view->property("saveDialog").toBool());
        QCOMPARE(m_view->billDescription(), QString());
        QCOMPARE(descriptions.count(), 3);
        QCOMPARE(stored().size(), std::size_t(0));
    }

    void withoutResultsNothingIsAsked()
    {
        m_settings->setBill(1e17);
        QVERIFY(!m_view->hasResults());

        m_view->save();

        QVERIFY(!m_view->property("saveDialog").toBool());
    }

    void aDescriptionTooLongIsRefusedAndSaid()
    {
        m_view->save();
        m_view->setBillDescription(QStringLiteral("Lunch"));
        m_view->setBillDescription(QString(Item::longestRef + 1, QLatin1Char('x')));

        QCOMPARE(m_view->billDescription(), QStringLiteral("Lunch"));
        QCOMPARE(m_view->descriptionNotice(), QStringLiteral("Description too long"));
        m_view->saveThis();
        QCOMPARE(stored().at(0)->ref(), QStringLiteral("Lunch"));
        m_view->setProperty("saveDialog", false);
        m_view->save();
        QCOMPARE(m_view->descriptionNotice(), QString());
    }

    // What is stored

    void theInputsAndTheResultsAreStored()
    {
        m_settings->setPeople(3);
        m_settings->setService(2);
        m_settings->setTipFromEveryone(true);
        m_settings->setRoundTip(true);
        m_view->billEdited(QStringLiteral("99.50"));
        const QDateTime before = QDateTime::currentDateTimeUtc();

        saveAs(QStringLiteral("Lunch"));

        const auto items = stored();
        QCOMPARE(items.size(), std::size_t(1));
        const Item& item = *items.front();
        QCOMPARE(item.ref(), QStringLiteral("Lunch"));
        QCOMPARE(item.bill(), 99.5);
        QCOMPARE(item.people(), 3);
        QCOMPARE(item.service(), 2);
        QCOMPARE(item.everyone(), true);
        QCOMPARE(item.roundtip(), true);
        QCOMPARE(item.roundshare(), false);
        QCOMPARE(item.total(), m_view->grandTotal());
        QCOMPARE(item.share(), m_view->sumShare());
        QCOMPARE(item.tip(), m_view->sumTip());
        QVERIFY(item.total() > 99.5);
        QVERIFY(item.share() > 0.0);
        QVERIFY(item.tip() > 0.0);
        QVERIFY(*item.timestamp() >= before);
        QVERIFY(*item.timestamp() <= QDateTime::currentDateTimeUtc());
        QVERIFY(!m_bills->context().hasChanges());
        QVERIFY(!m_view->property("showSaveFailed").toBool());
    }

    void eachOptionIsStoredAsItself_data()
    {
        QTest::addColumn<bool>("everyone");
        QTest::addColumn<bool>("roundTip");
        QTest::addColumn<bool>("roundShare");
        QTest::newRow("everyone") << true << false << false;
        QTest::newRow("round tip") << false << true << false;
        QTest::newRow("round share") << false << false << true;
    }

    void eachOptionIsStoredAsItself()
    {
        QFETCH(const bool, everyone);
        QFETCH(const bool, roundTip);
        QFETCH(const bool, roundShare);
        m_settings->setTipFromEveryone(everyone);
        m_settings->setRoundTip(roundTip);
        m_settings->setRoundShare(roundShare);

        saveAs({});

        const auto item = stored().at(0);
        QCOMPARE(item->everyone(), everyone);
        QCOMPARE(item->roundtip(), roundTip);
        QCOMPARE(item->roundshare(), roundShare);
    }

    void anEmptyDescriptionStoresBill()
    {
        saveAs({});

        QCOMPARE(stored().at(0)->ref(), QStringLiteral("Bill"));
    }

    void aDescriptionOfBlanksIsStoredAsTyped()
    {
        saveAs(QStringLiteral("  "));

        QCOMPARE(stored().at(0)->ref(), QStringLiteral("  "));
    }

    void theBillIsStoredAsTypedBesideItsCutResults()
    {
        m_view->billEdited(QStringLiteral("10.019"));

        saveAs({});

        const auto item = stored().at(0);
        QCOMPARE(item->bill(), 10.019);
        QCOMPARE(m_view->sumTotal(), 10.01);
        QCOMPARE(item->total(), m_view->grandTotal());
    }

    void theResultsAreStoredAsTheyStandAndNotComputedAgain()
    {
        m_view->billEdited(QStringLiteral("100"));
        const double tip = m_view->sumTip();
        // A percentage recalculates nothing until the settings are closed.
        m_settings->setServiceGood(50);
        const QSignalSpy calculations(m_view.get(), &ContentView::resultsChanged);

        saveAs({});

        QCOMPARE(calculations.count(), 0);
        QCOMPARE(stored().at(0)->tip(), tip);
    }

    void savingTwiceStoresTwoBillsWithTheSameAmounts()
    {
        m_view->billEdited(QStringLiteral("42.42"));
        saveAs(QStringLiteral("Lunch"));
        const QDateTime first = *stored().at(0)->timestamp();
        // Stamps are of milliseconds; no two key strokes fall into one.
        QTRY_VERIFY(QDateTime::currentDateTimeUtc() > first);

        saveAs(QStringLiteral("Lunch"));

        const auto items = stored();
        QCOMPARE(items.size(), std::size_t(2));
        QCOMPARE(items[1]->bill(), items[0]->bill());
        QCOMPARE(items[1]->total(), items[0]->total());
        QCOMPARE(items[1]->share(), items[0]->share());
        QCOMPARE(items[1]->tip(), items[0]->tip());
        QVERIFY(*items[1]->timestamp() > *items[0]->timestamp());
    }

    void theGreatestCountOf32BitsIsStored()
    {
        m_settings->setPeople(std::numeric_limits<qint32>::max());
        m_settings->setService(std::numeric_limits<qint32>::min());

        saveAs({});

        QCOMPARE(stored().at(0)->people(), std::numeric_limits<qint32>::max());
        QCOMPARE(stored().at(0)->service(), std::numeric_limits<qint32>::min());
    }

    void aNumberBeyond32BitsStopsTheProcess_data()
    {
        QTest::addColumn<qint64>("people");
        QTest::addColumn<qint64>("service");
        QTest::newRow("too many people") << qint64(2147483648) << qint64(0);
        QTest::newRow("far too few people") << qint64(-2147483649) << qint64(0);
        QTest::newRow("service too high") << qint64(2) << qint64(2147483648);
        QTest::newRow("service too low") << qint64(2) << qint64(-2147483649);
    }

    void aNumberBeyond32BitsStopsTheProcess()
    {
        QFETCH(const qint64, people);
        QFETCH(const qint64, service);
        m_settings->setPeople(people);
        m_settings->setService(service);

        const Death death = deathOf([&] { m_view->saveThis(); });

        QVERIFY(death.aborted);
        QVERIFY2(
            death.message.startsWith("A 32-bit integer cannot hold "), death.message.constData());
        QCOMPARE(stored().size(), std::size_t(0));
    }

    // Failures

    void aFailedSaveIsSaidAndChangesNothing()
    {
        m_view->billEdited(QStringLiteral("99.50"));
        m_settings->setPeople(3);
        saveAs(QStringLiteral("before"));
        const QSignalSpy failures(m_view.get(), &ContentView::showSaveFailedChanged);
        m_disk.refuseWritesFrom(1, SQLITE_FULL);

        saveAs(QStringLiteral("Lunch"));

        QVERIFY(m_disk.hasRefused());
        QCOMPARE(failures.count(), 1);
        QVERIFY(m_view->property("showSaveFailed").toBool());
        QVERIFY2(m_view->saveFailure().contains(QLatin1String("full")),
            qPrintable(m_view->saveFailure()));
        QVERIFY(!m_bills->context().hasChanges());
        QCOMPARE(*m_bills->context().count(Item::fetchRequest()), qint64(1));
        QCOMPARE(m_settings->bill(), 99.5);
        QCOMPARE(m_settings->people(), 3);
        QVERIFY(m_view->hasResults());
        QCOMPARE(m_view->billDescription(), QStringLiteral("Lunch"));
        m_disk.allowWrites();
        QCOMPARE(stored().size(), std::size_t(1));
    }

    void theNextTryAfterAFailedSaveStoresOneBill()
    {
        m_disk.refuseWritesFrom(1, SQLITE_FULL);
        saveAs(QStringLiteral("Lunch"));
        QVERIFY(m_view->property("showSaveFailed").toBool());
        m_view->setProperty("showSaveFailed", false);
        m_disk.allowWrites();

        saveAs(QStringLiteral("Lunch"));

        QVERIFY(!m_view->property("showSaveFailed").toBool());
        const auto items = stored();
        QCOMPARE(items.size(), std::size_t(1));
        QCOMPARE(items[0]->ref(), QStringLiteral("Lunch"));
    }

    void anAmountThatTheStoreCannotHoldIsSaid()
    {
        m_settings->setBill(std::numeric_limits<double>::quiet_NaN());

        m_view->saveThis();

        QVERIFY(m_view->property("showSaveFailed").toBool());
        QVERIFY2(m_view->saveFailure().contains(QLatin1String("bill is not a number")),
            qPrintable(m_view->saveFailure()));
        QVERIFY(!m_bills->context().hasChanges());
    }

    void aPendingConflictDoesNotKeepANewBillFromBeingSaved()
    {
        saveAs(QStringLiteral("first"));
        const std::shared_ptr<Item> first = listed(0);
        renameElsewhere(*first);
        first->setRef(QStringLiteral("ours"));
        QVERIFY(!m_bills->context().save()); // the rename that was ignored

        saveAs(QStringLiteral("second"));

        QVERIFY2(!m_view->property("showSaveFailed").toBool(), qPrintable(m_view->saveFailure()));
        const auto items = stored();
        QCOMPARE(items.size(), std::size_t(2));
        QCOMPARE(items[1]->ref(), QStringLiteral("second"));
        QCOMPARE(items[0]->ref(), QStringLiteral("ours"));
        QVERIFY(!m_bills->context().hasChanges());
    }

    void aPendingRenameOfABillDeletedElsewhereDoesNotKeepANewBillFromBeingSaved()
    {
        saveAs(QStringLiteral("first"));
        const std::shared_ptr<Item> first = listed(0);
        deleteElsewhere(*first);
        first->setRef(QStringLiteral("ours"));
        QVERIFY(!m_bills->context().save());

        saveAs(QStringLiteral("second"));

        QVERIFY2(!m_view->property("showSaveFailed").toBool(), qPrintable(m_view->saveFailure()));
        const auto items = stored();
        QCOMPARE(items.size(), std::size_t(1));
        QCOMPARE(items[0]->ref(), QStringLiteral("second"));
    }
};

QTEST_MAIN(SavingTest)
#include "SavingTest.moc"
