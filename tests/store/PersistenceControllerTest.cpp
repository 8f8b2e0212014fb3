#include "PersistenceController.h"
#include "CKContainer.h"
#include "CapturedOutput.h"
#include "NSPersistentCloudKitContainer.h"
#include "NSUbiquitousKeyValueStore.h"
#include "StoreFiles.h"

#include <QFile>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <atomic>
#include <sys/stat.h>

namespace {

constexpr int longEnough = 30000; // milliseconds; only a failure takes that long

const QByteArray hyphens("------------------------------------------");

QByteArrayList banner(bool withSync)
{
    return { hyphens, withSync ? "--> Cloud? true" : "--> Cloud? false", hyphens };
}

int modeOf(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0
        ? static_cast<int>(status.st_mode & 0777)
        : -1;
}

bool isMirrored(const std::shared_ptr<NSPersistentContainer>& container)
{
    return dynamic_cast<NSPersistentCloudKitContainer*>(container.get()) != nullptr;
}

QList<QPair<QString, QVariant>> optionsOf(const std::shared_ptr<NSPersistentContainer>& container)
{
    return container->persistentStoreDescriptions().front().options();
}

std::size_t transactionsOf(const std::shared_ptr<NSPersistentContainer>& container)
{
    return container->persistentStoreCoordinator().persistentHistory(0)->size();
}

/// A cloud that answers when it is told to.
class SlowCloud {
public:
    explicit SlowCloud(const CKContainer::AccountAnswer& answer)
    {
        CKContainer::setAccountSource([mayAnswer = m_mayAnswer, answer] {
            mayAnswer->acquire();
            return answer;
        });
    }
    ~SlowCloud() { m_mayAnswer->release(1000); } // nobody is left waiting
    SlowCloud(const SlowCloud&) = delete;
    SlowCloud& operator=(const SlowCloud&) = delete;

    void answer() { m_mayAnswer->release(); }

private:
    std::shared_ptr<QSemaphore> m_mayAnswer = std::make_shared<QSemaphore>();
};

} // namespace

class PersistenceControllerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TemporaryHome> m_home;

    static void chooseMirroring(bool chosen)
    {
        NSUbiquitousKeyValueStore::defaultStore().setBool(chosen, QStringLiteral("icloud_sync"));
    }

    static void addWithSync_data()
    {
        QTest::addColumn<bool>("withSync");
        QTest::newRow("local") << false;
        QTest::newRow("mirrored") << true;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // It stays where the home is when it is first asked for.
        QVERIFY(!NSUbiquitousKeyValueStore::defaultStore().boolForKey(QStringLiteral("any")));
    }

    void init() { m_home = std::make_unique<TemporaryHome>(); }

    void cleanup()
    {
        CKContainer::setAccountSource({});
        // An answer that comes late must not be printed into the next test.
        QVERIFY(QThreadPool::globalInstance()->waitForDone(longEnough));
        chooseMirroring(false);
    }

    // Opening

    void aLocalStoreTracksItsHistoryAndHasNoMergePolicy()
    {
        const auto container = store::setupContainer(false);

        QVERIFY(!isMirrored(container));
        QCOMPARE(optionsOf(container),
            (QList<QPair<QString, QVariant>> {
                { QStringLiteral("NSPersistentHistoryTrackingKey"), true },
                { QStringLiteral("NSPersistentStoreRemoteChangeNotificationOptionKey"), true },
                { QStringLiteral("NSInferMappingModelAutomaticallyOption"), true },
                { QStringLiteral("NSMigratePersistentStoresAutomaticallyOption"), true } }));
        QCOMPARE(container->viewContext().mergePolicy(), NSMergePolicy::NSErrorMergePolicy);
        QVERIFY(!container->viewContext().automaticallyMergesChangesFromParent());
    }

    void aMirroredStoreMergesAutomaticallyAndSetsNoHistoryOption()
    {
        const auto container = store::setupContainer(true);

        QVERIFY(isMirrored(container));
        QCOMPARE(optionsOf(container),
            (QList<QPair<QString, QVariant>> {
                { QStringLiteral("NSPersistentStoreRemoteChangeNotificationOptionKey"), true },
                { QStringLiteral("NSInferMappingModelAutomaticallyOption"), true },
                { QStringLiteral("NSMigratePersistentStoresAutomaticallyOption"), true } }));
        QCOMPARE(container->viewContext().mergePolicy(),
            NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
        QVERIFY(container->viewContext().automaticallyMergesChangesFromParent());
    }

    void eitherStoreRecordsItsChanges_data() { addWithSync_data(); }

    void eitherStoreRecordsItsChanges()
    {
        QFETCH(const bool, withSync);
        const auto container = store::setupContainer(withSync);

        (void)addItem(container->viewContext(), QStringLiteral("a"));
        mustSave(container->viewContext());

        QCOMPARE(transactionsOf(container), std::size_t(1));
    }

    void thePinBeforeLoadingIsIgnored_data() { addWithSync_data(); }

    void thePinBeforeLoadingIsIgnored()
    {
        QFETCH(const bool, withSync);
        const auto container = store::setupContainer(withSync);

        QVERIFY(!container->viewContext().isPinned());
        const auto other = container->newContext();
        (void)addItem(*other, QStringLiteral("saved by another context"));
        mustSave(*other);
        QCOMPARE(refs(container->viewContext()).size(), 1);
    }

    void theStoreIsOpenInItsDefaultFolderOnReturn_data() { addWithSync_data(); }

    void theStoreIsOpenInItsDefaultFolderOnReturn()
    {
        QFETCH(const bool, withSync);

        const auto container = store::setupContainer(withSync);

        QVERIFY(container->persistentStoreCoordinator().store() != nullptr);
        QCOMPARE(container->persistentStoreDescriptions().size(), std::size_t(1));
        QCOMPARE(container->persistentStoreDescriptions().front().url().toLocalFile(),
            m_home->storeFile());
        QVERIFY(QFile::exists(m_home->storeFile()));
    }

    void eachOpeningPrintsTheThreeLineBanner_data() { addWithSync_data(); }

    void eachOpeningPrintsTheThreeLineBanner()
    {
        QFETCH(const bool, withSync);
        QByteArrayList lines;
        {
            const CapturedOutput output;
            (void)store::setupContainer(withSync);
            (void)store::setupContainer(withSync);
            lines = output.lines();
        }

        QCOMPARE(hyphens.size(), 42);
        QCOMPARE(lines, banner(withSync) + banner(withSync));
    }

    void aBillSavedLocallyIsThereMirroredAndTheOtherWayRound()
    {
        for (const bool withSync : { false, true, false }) {
            const auto container = store::setupContainer(withSync);
            (void)addItem(container->viewContext(), QString::number(withSync));
            mustSave(container->viewContext());
        }

        QCOMPARE(refs(store::setupContainer(true)->viewContext()).join(QLatin1Char(' ')),
            QStringLiteral("0 1 0"));
    }

    void theStoreIsForTheUserAlone_data() { addWithSync_data(); }

    void theStoreIsForTheUserAlone()
    {
        QFETCH(const bool, withSync);
        const mode_t usual = ::umask(0);
        const auto container = store::setupContainer(withSync);
        (void)addItem(container->viewContext(), QStringLiteral("a"));
        mustSave(container->viewContext());
        ::umask(usual);

        QCOMPARE(modeOf(m_home->storeFolder()), 0700);
        QCOMPARE(filesOfStore(m_home->storeFile()).size(), 3);
        for (const QString& file : filesOfStore(m_home->storeFile()))
            QCOMPARE(modeOf(file), 0600);
    }

    void aStoreOfAnOlderModelIsTakenOver()
    {
        {
            const auto model = NSManagedObjectModel::parse(R"({"version": "0", "entities": [
                {"name": "Item", "attributes": [
                    {"name": "bill", "type": "double"},
                    {"name": "ref", "type": "string", "optional": true}]}]})");
            NSPersistentContainer older(QStringLiteral("Vexilo"), *model);
            older.loadPersistentStores([](const auto&, const auto& error) { QVERIFY(!error); });
            older.viewContext()
                .insertNewObject(QStringLiteral("Item"))
                ->setValue(12.5, QStringLiteral("bill"));
            mustSave(older.viewContext());
        }

        const auto container = store::setupContainer(false);

        const auto items = container->viewContext().fetch(Item::fetchRequest());
        QCOMPARE(items->size(), std::size_t(1));
        const auto item = std::static_pointer_cast<Item>(items->front());
        QCOMPARE(item->bill(), 12.5);
        QCOMPARE(item->people(), 0);
        QCOMPARE(item->timestamp(), std::nullopt);
    }

    void whatOthersChangeIsTold_data() { addWithSync_data(); }

    void whatOthersChangeIsTold()
    {
        QFETCH(const bool, withSync);
        const auto container = store::setupContainer(withSync);
        const auto other = store::setupContainer(withSync);
        QSignalSpy told(
            &container->persistentStoreCoordinator(), &NSPersistentStoreCoordinator::remoteChange);

        (void)addItem(other->viewContext(), QStringLiteral("a"));
        mustSave(other->viewContext());
        const auto isChanged = container->persistentStoreCoordinator().pollRemoteChanges();

        QVERIFY(*isChanged);
        QCOMPARE(told.count(), 1);
    }

    void onlyAMirroredStoresViewContextTakesInWhatOthersSave_data() { addWithSync_data(); }

    void onlyAMirroredStoresViewContextTakesInWhatOthersSave()
    {
        QFETCH(const bool, withSync);
        const auto container = store::setupContainer(withSync);
        const auto item = addItem(container->viewContext(), QStringLiteral("before"));
        mustSave(container->viewContext());
        const auto context = container->newContext();

        std::static_pointer_cast<Item>(context->objectWithID(item->objectID()))
            ->setRef(QStringLiteral("after"));
        mustSave(*context);

        QCOMPARE(item->ref(), withSync ? QStringLiteral("after") : QStringLiteral("before"));
    }

    void onlyAMirroredStoreSolvesAConflict_data() { addWithSync_data(); }

    void onlyAMirroredStoreSolvesAConflict()
    {
        QFETCH(const bool, withSync);
        const auto container = store::setupContainer(withSync);
        const auto item = addItem(container->viewContext(), QStringLiteral("before"));
        mustSave(container->viewContext());
        const auto other = store::setupContainer(withSync);
        const auto theirs = other->viewContext().fetch(Item::fetchRequest());
        std::static_pointer_cast<Item>(theirs->front())->setPeople(4);
        mustSave(other->viewContext());

        item->setRef(QStringLiteral("mine"));
        const auto saved = container->viewContext().save();

        QCOMPARE(static_cast<bool>(saved), withSync);
        QCOMPARE(item->people(), withSync ? 4 : 0);
        if (!withSync)
            QCOMPARE(saved.error().code, StoreError::Code::Conflict);
    }

    void anAlertIsNotAskedForWhereTheStoreOpens()
    {
        int alerts = 0;
        store::setStoreFailureAlert([&](const QString&) { ++alerts; });

        (void)store::setupContainer(false);

        store::setStoreFailureAlert({});
        QCOMPARE(alerts, 0);
    }

    // The choice

    void chosenMirroringIsUsedWhateverTheAccount_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("no account") << static_cast<int>(CKAccountStatus::NoAccount);
        QTest::newRow("an account") << static_cast<int>(CKAccountStatus::Available);
        QTest::newRow("not known") << static_cast<int>(CKAccountStatus::CouldNotDetermine);
    }

    void chosenMirroringIsUsedWhateverTheAccount()
    {
        QFETCH(const int, status);
        CKContainer::setAccountSource([status] {
            return CKContainer::AccountAnswer { static_cast<CKAccountStatus>(status), {} };
        });
        chooseMirroring(true);

        QVERIFY(store::sync());
        QVERIFY(isMirrored(PersistenceController().container));
    }

    void chosenMirroringAsksForNoAccount()
    {
        const auto questions = std::make_shared<std::atomic<int>>(0);
        CKContainer::setAccountSource([questions] {
            ++*questions;
            return CKContainer::AccountAnswer();
        });
        chooseMirroring(true);

        QVERIFY(store::sync());

        QVERIFY(QThreadPool::globalInstance()->waitForDone(longEnough));
        QCOMPARE(questions->load(), 0);
    }

    void withoutTheChoiceALocalStoreIsUsed()
    {
        chooseMirroring(false);

        QVERIFY(!store::sync());
        QVERIFY(!isMirrored(PersistenceController().container));
    }

    void anAvailableAccountIsToldAfterTheStoreWasOpenedLocally()
    {
        QByteArrayList before;
        QByteArrayList after;
        bool isLocal = false;
        {
            const CapturedOutput output;
            SlowCloud cloud({ CKAccountStatus::Available, {} });
            isLocal = !isMirrored(PersistenceController().container);
            before = output.lines();
            cloud.answer();
            (void)QTest::qWaitFor([&] { return output.lines().size() > 3; }, longEnough);
            after = output.lines();
        }

        QVERIFY(isLocal);
        QCOMPARE(before, banner(false));
        QCOMPARE(after, banner(false) + QByteArrayList { "--> user has icloud account" });
    }

    void theAccountIsAskedForWithoutWaiting()
    {
        const CapturedOutput output; // for the answer, which is another test's business
        SlowCloud cloud({ CKAccountStatus::Available, {} });

        QVERIFY(!store::userHas_iCloudAccount()); // the answer is held back: waiting would not end
        QVERIFY(!store::sync());
    }

    void anyOtherAnswerIsToldWithItsError_data()
    {
        const QString sentence = QStringLiteral("Das Gerät ist offline.");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("no account") << static_cast<int>(CKAccountStatus::NoAccount) << QString()
                                    << QByteArray("--> iCloud not available nil");
        QTest::newRow("no account, an error")
            << static_cast<int>(CKAccountStatus::NoAccount) << sentence
            << "--> iCloud not available " + sentence.toUtf8();
        QTest::newRow("not known") << static_cast<int>(CKAccountStatus::CouldNotDetermine)
                                   << QString() << QByteArray("--> iCloud not available nil");
        QTest::newRow("not known, an error")
            << static_cast<int>(CKAccountStatus::CouldNotDetermine) << sentence
            << "--> iCloud not available " + sentence.toUtf8();
    }

    void anyOtherAnswerIsToldWithItsError()
    {
        QFETCH(const int, status);
        QFETCH(const QString, error);
        QFETCH(const QByteArray, line);
        QByteArrayList lines;
        bool hasAccount = true;
        {
            const CapturedOutput output;
            CKContainer::setAccountSource([status, error] {
                return CKContainer::AccountAnswer { static_cast<CKAccountStatus>(status),
                    error.isNull() ? std::nullopt : std::optional(CKError { error }) };
            });
            hasAccount = store::userHas_iCloudAccount();
            (void)QTest::qWaitFor([&] { return !output.lines().isEmpty(); }, longEnough);
            lines = output.lines();
        }

        QVERIFY(!hasAccount);
        QCOMPARE(lines, QByteArrayList { line });
    }
};

int main(int argc, char** argv)
{
    const TemporaryHome home;
    QCoreApplication application(argc, argv);
    PersistenceControllerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PersistenceControllerTest.moc"
