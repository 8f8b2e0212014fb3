#include "SettingsView.h"
#include "Appearance.h"
#include "Bundle.h"
#include "CKContainer.h"
#include "CapturedOutput.h"
#include "DeathTest.h"
#include "Diagnostics.h"
#include "NSPersistentCloudKitContainer.h"
#include "NSUbiquitousKeyValueStore.h"
#include "StoreFiles.h"
#include "UserDefaults.h"
#include "Version.h"

#include <QFile>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <limits>
#include <sys/stat.h>

namespace {

const QString syncKey = QStringLiteral("icloud_sync");

bool local() { return false; }
bool mirrored() { return true; }

bool isMirrored()
{
    return dynamic_cast<NSPersistentCloudKitContainer*>(store::container().get()) != nullptr;
}

/// The cloud's threads included.
QByteArrayList linesOfAll(const std::function<void()>& call)
{
    return linesOf([&] {
        call();
        QThreadPool::globalInstance()->waitForDone();
    });
}

/// In nanoseconds, as far as the file system counts them.
qint64 lastChange(const QString& file)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(file).constData(), &status) != 0)
        qFatal("%s is not there", qPrintable(file));
    return qint64(status.st_mtim.tv_sec) * 1000000000 + qint64(status.st_mtim.tv_nsec);
}

QByteArrayList bannerOf(const QByteArray& value)
{
    const QByteArray hyphens(42, '-');
    return { hyphens, "--> Cloud? " + value, hyphens };
}

} // namespace

class SettingsViewTest : public QObject {
    Q_OBJECT

private:
    TemporaryHome m_home;
    QTemporaryDir m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<UserSettings> m_user;

    std::unique_ptr<SettingsView> opened(const SettingsView::SyncChoice& sync = local)
    {
        auto view = std::make_unique<SettingsView>(*m_user, false, sync);
        view->appear();
        return view;
    }

private Q_SLOTS:
    void init()
    {
        static int number = 0;
        m_defaults = std::make_unique<UserDefaults>(
            m_folder.filePath(QStringLiteral("preferences-%1.ini").arg(++number)));
        m_user = std::make_unique<UserSettings>(*m_defaults);
    }

    void cleanup()
    {
        CKDatabase::setZoneDeletion({});
        QVERIFY(QThreadPool::globalInstance()->waitForDone());
    }

    // First, since neither the choice nor the store may exist yet. What sync() says of an account
    // that answers in time, the test says here.
    void openingWithoutAChoiceButWithAnAccountSwitchesOnAndRecordsTheChoice()
    {
        auto& values = NSUbiquitousKeyValueStore::defaultStore();
        const QString choice = m_home.storeFolder() + QStringLiteral("/cloud-values.ini");
        QVERIFY(!QFile::exists(choice));
        QVERIFY(!QFile::exists(m_home.storeFile()));

        const auto view = opened(mirrored);

        // Stored first, and then the container was switched, which made the store.
        QVERIFY(lastChange(choice) <= lastChange(m_home.storeFile()));

        QVERIFY(view->iCloud());
        QVERIFY(values.boolForKey(syncKey));
        QVERIFY(isMirrored());
    }

    void theSlidersStartAtTheStoredPercentages()
    {
        m_user->setServiceGood(7);
        m_user->setServiceExcellent(20);

        const auto view = opened();

        QCOMPARE(view->sGood(), 7.0);
        QCOMPARE(view->sExcellent(), 20.0);
        QCOMPARE(view->goodText(), QStringLiteral("7"));
        QCOMPARE(view->excellentText(), QStringLiteral("20"));
    }

    void aStoredPercentageBelowOneIsRepaired_data()
    {
        QTest::addColumn<qint64>("stored");
        QTest::newRow("zero") << qint64(0);
        QTest::newRow("negative") << qint64(-3);
    }

    void aStoredPercentageBelowOneIsRepaired()
    {
        QFETCH(const qint64, stored);
        m_user->setServiceGood(stored);
        m_user->setServiceExcellent(stored);

        const auto view = opened();

        QCOMPARE(view->sGood(), 5.0);
        QCOMPARE(m_user->serviceGood(), 5);
        QCOMPARE(m_defaults->integerForKey(QStringLiteral("serviceGood")), 5);
        QCOMPARE(view->sExcellent(), 10.0);
        QCOMPARE(m_user->serviceExcellent(), 10);
        QCOMPARE(m_defaults->integerForKey(QStringLiteral("serviceExcellent")), 10);
    }

    void aStoredPercentageBeyondTheScaleIsLeftAlone()
    {
        m_user->setServiceGood(250);

        const auto view = opened();

        QCOMPARE(view->sGood(), 250.0);
        QCOMPARE(m_user->serviceGood(), 250);
    }

    void aPlaceIsStoredCutToWholePercent_data()
    {
        QTest::addColumn<double>("place");
        QTest::addColumn<qint64>("percent");
        QTest::newRow("the lower end") << 1.0 << qint64(1);
        QTest::newRow("between two percentages") << 7.83 << qint64(7);
        QTest::newRow("just below the upper end") << 99.99 << qint64(99);
        QTest::newRow("the upper end") << 100.0 << qint64(100);
    }

    void aPlaceIsStoredCutToWholePercent()
    {
        QFETCH(const double, place);
        QFETCH(const qint64, percent);
        const auto view = opened();

        view->setSGood(place);
        view->setSExcellent(place);

        QCOMPARE(view->sGood(), place);
        QCOMPARE(m_user->serviceGood(), percent);
        QCOMPARE(m_user->serviceExcellent(), percent);
        QCOMPARE(view->goodText(), QString::number(percent));
        QCOMPARE(view->excellentText(), QString::number(percent));
    }

    void aStoredPercentageThatNoSliderPlaceHoldsStopsTheProcess()
    {
        m_user->setServiceExcellent(std::numeric_limits<qint64>::max());
        m_defaults->synchronize(); // so that no lock is held when the child is made

        const Death death = deathOf([this] { (void)opened(); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Double value cannot be converted to Int because the result would be "
                       "greater than Int.max\n"));
    }

    void everyMovementSavesAllPreferences()
    {
        const auto view = opened();
        m_defaults->removeValue(QStringLiteral("people"));

        view->setSGood(8.5);

        QVERIFY(m_defaults->contains(QStringLiteral("people")));
    }

    void aLargePercentageIsShownWithoutGrouping()
    {
        m_user->setServiceGood(1234567);

        QCOMPARE(opened()->goodText(), QStringLiteral("1234567"));
    }

    void theSliderStaysWhereItIsWhenThePercentageChangesElsewhere()
    {
        const auto view = opened();
        QSignalSpy textChanges(view.get(), &SettingsView::goodTextChanged);

        m_user->setServiceGood(30);

        QCOMPARE(view->sGood(), 5.0);
        QCOMPARE(view->goodText(), QStringLiteral("30"));
        QCOMPARE(textChanges.count(), 1);
    }

    void aPlaceThatIsNoIntegerStopsTheProcess_data()
    {
        QTest::addColumn<double>("place");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN()
                                      << QByteArray("it is either infinite or NaN\n");
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity()
                                  << QByteArray("it is either infinite or NaN\n");
        QTest::newRow("below the range")
            << -1e19 << QByteArray("the result would be less than Int.min\n");
        QTest::newRow("above the range")
            << 1e19 << QByteArray("the result would be greater than Int.max\n");
    }

    void aPlaceThatIsNoIntegerStopsTheProcess()
    {
        QFETCH(const double, place);
        QFETCH(const QByteArray, reason);
        SettingsView view(*m_user, false, local);

        const Death good = deathOf([&view, place] { view.setSGood(place); });
        const Death excellent = deathOf([&view, place] { view.setSExcellent(place); });

        const QByteArray message = "Double value cannot be converted to Int because " + reason;
        QVERIFY(good.aborted);
        QCOMPARE(good.message, message);
        QVERIFY(excellent.aborted);
        QCOMPARE(excellent.message, message);
    }

    void theSwitchesWriteThePreferences()
    {
        const auto view = opened();

        view->setShowCurrency(false);
        view->setHighlightSums(false);

        QVERIFY(!m_user->showCurrency());
        QVERIFY(!m_user->highlightSums());
        QVERIFY(!view->showCurrency());
        QVERIFY(!view->highlightSums());
    }

    void choosingAThemeStoresIt()
    {
        const auto view = opened();
        QSignalSpy changes(view.get(), &SettingsView::themeChanged);

        view->setTheme(2);

        QCOMPARE(m_user->theme(), 2);
        QCOMPARE(view->theme(), 2);
        QCOMPARE(changes.count(), 1);
    }

    void choosingTheChosenThemeSavesAgain()
    {
        const auto view = opened();
        view->setTheme(2);
        m_defaults->removeValue(QStringLiteral("people"));

        view->setTheme(2);

        QCOMPARE(m_user->theme(), 2);
        QVERIFY(m_defaults->contains(QStringLiteral("people")));
    }

    void aStoredThemeThatIsNoneChoosesNoRow()
    {
        m_user->setTheme(7);

        QCOMPARE(opened()->theme(), -1);
        QCOMPARE(m_user->theme(), 7);
    }

    void aChosenThemeIsAppliedAtOnce()
    {
        const Appearance window;
        SettingsView view(UserSettings::shared(), false, local);

        view.setTheme(2);

        QTRY_COMPARE(window.overrideStyle(), InterfaceStyle::Dark);
        view.setTheme(0);
        QTRY_COMPARE(window.overrideStyle(), InterfaceStyle::Unspecified);
    }

    void theCurrencysLabelEndsWithItsSymbol()
    {
        QCOMPARE(opened()->currencyLabel(), QStringLiteral("Currency symbol $"));
    }

    void openingAsLocalSwitchesNothing()
    {
        const QByteArrayList lines = linesOfAll([this] { QVERIFY(!opened(local)->iCloud()); });

        QCOMPARE(lines, QByteArrayList());
    }

    void theRecordedChoiceIsTheOneOfTheNextOpening()
    {
        opened(local)->setICloud(true);
        SettingsView next(*m_user, false);
        next.appear();
        QVERIFY(next.iCloud());

        next.setICloud(false);
        SettingsView last(*m_user, false);
        last.appear();

        QVERIFY(!last.iCloud());
    }

    void theChoiceIsOnDiskAtOnce()
    {
        const auto view = opened(local);

        view->setICloud(true);

        const NSUbiquitousKeyValueStore copy(
            m_home.storeFolder() + QStringLiteral("/cloud-values.ini"));
        QVERIFY(copy.boolForKey(syncKey));
    }

    void switchingOnOnlySwitchesTheContainer()
    {
        const auto view = opened(local);
        store::updateContainer(false);
        // The account question of a first opening must not be answered into the captured output.
        QVERIFY(QThreadPool::globalInstance()->waitForDone());

        const QByteArrayList lines = linesOfAll([&view] { view->setICloud(true); });

        QVERIFY(isMirrored());
        QCOMPARE(lines, bannerOf("true"));
    }

    void switchingOffSwitchesTheContainerAndThenDeletesTheZone()
    {
        QString deleted;
        CKDatabase::setZoneDeletion(
            [&deleted](const QString&, const CKRecordZoneID& zone) -> std::optional<CKError> {
                printDiagnostic("the zone is deleted");
                deleted = zone.zoneName + QLatin1Char(' ') + zone.ownerName;
                return std::nullopt;
            });
        const auto view = opened(mirrored);

        QByteArrayList lines = linesOfAll([&view] { view->setICloud(false); });

        QCOMPARE(lines.takeLast(), QByteArray("the zone is deleted"));
        QVERIFY(!isMirrored());
        QVERIFY(!NSUbiquitousKeyValueStore::defaultStore().boolForKey(syncKey));
        QCOMPARE(deleted, QStringLiteral("com.apple.coredata.cloudkit.zone __defaultOwner__"));
        QCOMPARE(lines, bannerOf("false")); // success is silent
    }

    void aZoneThatCannotBeDeletedIsOnlyLogged()
    {
        CKDatabase::setZoneDeletion([](const QString&, const CKRecordZoneID&) {
            return std::optional<CKError>(CKError { QStringLiteral("The cloud is not there.") });
        });
        const auto view = opened(mirrored);

        const QByteArrayList lines = linesOfAll([&view] { view->setICloud(false); });

        QCOMPARE(lines,
            bannerOf("false") + QByteArrayList { "deleting zone error The cloud is not there." });
        QVERIFY(!view->iCloud());
        QVERIFY(!NSUbiquitousKeyValueStore::defaultStore().boolForKey(syncKey));
    }

    void withoutAnAccountTheDeletionEndsInALoggedError()
    {
        const auto view = opened(mirrored);

        const QByteArrayList lines = linesOfAll([&view] { view->setICloud(false); });

        QCOMPARE(lines.value(3),
            QByteArray("deleting zone error There is no cloud account to delete the saved bills "
                       "from."));
    }

    void aDeletionThatTakesItsTimeDoesNotHoldTheScreenUp()
    {
        const auto mayDelete = std::make_shared<QSemaphore>();
        CKDatabase::setZoneDeletion([mayDelete](const QString&, const CKRecordZoneID&) {
            mayDelete->acquire();
            return std::optional<CKError>();
        });
        const auto view = opened(mirrored);

        view->setICloud(false);

        QVERIFY(!view->iCloud());
        mayDelete->release();
    }

    void theSamePositionOfTheSwitchIsNoChange()
    {
        const auto view = opened(mirrored);

        QCOMPARE(linesOfAll([&view] { view->setICloud(true); }), QByteArrayList());
    }

    void theScreensContainerOutlivesTheSwitch()
    {
        const auto container = PersistenceController::shared().container;
        const auto view = opened(local);

        view->setICloud(true);

        QCOMPARE(PersistenceController::shared().container, container);
        QVERIFY(store::container() != container);
    }

    void closingFlipsThePresentersFlag_data()
    {
        QTest::addColumn<bool>("before");
        QTest::newRow("off") << false;
        QTest::newRow("on") << true;
    }

    void closingFlipsThePresentersFlag()
    {
        QFETCH(const bool, before);
        SettingsView view(*m_user, before, local);
        QSignalSpy flips(&view, &SettingsView::refreshInfoChanged);

        view.disappear(); // though nothing was changed

        QCOMPARE(flips.count(), 1);
        QCOMPARE(flips.first().first().toBool(), !before);
    }

    void theAboutRowsSayWhoseProgramAndWhichItIs()
    {
        const auto view = opened();

        QCOMPARE(view->copyright(), GlobalModel::shared().copyrightStr);
        QCOMPARE(view->versionText(), version(Bundle::main()));
        QVERIFY(view->versionText().at(0).isDigit());
    }
};

QTEST_MAIN(SettingsViewTest)
#include "SettingsViewTest.moc"
