#include "CapturedOutput.h"
#include "CoreDataManager.h"
#include "NSPersistentCloudKitContainer.h"
#include "PersistenceController.h"
#include "StoreFiles.h"

#include <QFile>
#include <QTest>
#include <QThreadPool>

#include <limits>
#include <sys/stat.h>

/// What the process has one of. Each test holds whatever the others left: it begins with a switch,
/// and its bills have a name of their own.
class SwitchingTest : public QObject {
    Q_OBJECT

private:
    TemporaryHome m_home;

    static bool isMirrored(const std::shared_ptr<NSPersistentContainer>& container)
    {
        return dynamic_cast<NSPersistentCloudKitContainer*>(container.get()) != nullptr;
    }

    /// Content and time of the last change of each file of the store.
    QByteArrayList stateOfStore() const
    {
        QByteArrayList state;
        for (const QString& path : filesOfStore(m_home.storeFile())) {
            if (path.endsWith(QLatin1String("-shm")))
                continue; // readers leave their marks in it
            QFile file(path);
            struct stat status = {};
            if (!file.open(QIODevice::ReadOnly) || ::fstat(file.handle(), &status) != 0)
                qFatal("the store cannot be read");
            state.append(path.toUtf8());
            state.append(file.readAll());
            state.append(QByteArray::number(qint64(status.st_mtim.tv_sec)) + '.'
                + QByteArray::number(qint64(status.st_mtim.tv_nsec)));
        }
        return state;
    }

private Q_SLOTS:
    void init()
    {
        store::updateContainer(false);
        // The account question of a first opening must not be answered into a captured output.
        QVERIFY(QThreadPool::globalInstance()->waitForDone());
    }

    void theScreensAndTheProcessHaveContainersOfTheirOwn()
    {
        QVERIFY(PersistenceController::shared().container != store::container());
        QCOMPARE(&PersistenceController::shared(), &PersistenceController::shared());
        QCOMPARE(store::container(), store::container());
    }

    void aSwitchReplacesTheProcessWideContainer_data()
    {
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("on") << false << true;
        QTest::newRow("off") << true << false;
        QTest::newRow("to the same") << true << true;
    }

    void aSwitchReplacesTheProcessWideContainer()
    {
        QFETCH(const bool, before);
        QFETCH(const bool, after);
        store::updateContainer(before);
        const auto container = store::container();

        store::updateContainer(after);

        QVERIFY(store::container() != container);
        QCOMPARE(isMirrored(store::container()), after);
    }

    void aSwitchLeavesTheScreensContainerAlone()
    {
        const auto container = PersistenceController::shared().container;
        const bool wasMirrored = isMirrored(container);

        store::updateContainer(!wasMirrored);

        QCOMPARE(PersistenceController::shared().container, container);
        const QString name = QStringLiteral("on the screens");
        (void)addItem(container->viewContext(), name);
        mustSave(container->viewContext());
        QVERIFY(refs(*ManagedObjectContext::current()).contains(name));
    }

    void aSwitchPrintsTheBannerOfTheNewValueOnce()
    {
        QByteArrayList lines;
        {
            const CapturedOutput output;
            store::updateContainer(true);
            lines = output.lines();
        }

        const QByteArray hyphens(42, '-');
        QCOMPARE(lines, (QByteArrayList { hyphens, "--> Cloud? true", hyphens }));
    }

    void aSwitchSavesWhatIsUnsavedFirst()
    {
        const QString name = QStringLiteral("unsaved at the switch");
        (void)addItem(*ManagedObjectContext::current(), name);

        store::updateContainer(true);

        QVERIFY(refs(*ManagedObjectContext::current()).contains(name));
        QVERIFY(refs(store::setupContainer(false)->viewContext()).contains(name));
    }

    void aSwitchHappensEvenWhereSavingFails()
    {
        const auto context = ManagedObjectContext::current();
        Item::make(*context)->setBill(std::numeric_limits<double>::quiet_NaN());

        store::updateContainer(true);

        QVERIFY(isMirrored(store::container()));
        QVERIFY(context->hasChanges());
    }

    void theCurrentContextIsTheProcessWideContainers()
    {
        QCOMPARE(ManagedObjectContext::current().get(), &store::container()->viewContext());

        store::updateContainer(true);

        QCOMPARE(ManagedObjectContext::current().get(), &store::container()->viewContext());
    }

    void theSharedManagerKeepsItsContextUsableAfterASwitch()
    {
        const auto moc = CoreDataManager::shared().moc;
        const NSManagedObjectContext* address = moc.get();

        store::updateContainer(true);
        store::updateContainer(false);

        QCOMPARE(CoreDataManager::shared().moc.get(), address);
        QVERIFY(ManagedObjectContext::current().get() != address);
        const auto item = addItem(*moc, QStringLiteral("in the older context"));
        mustSave(*moc);
        QVERIFY(CoreDataManager::shared().fetchAllItems()->rowOf(item->objectID()) >= 0);
        QVERIFY(refs(*ManagedObjectContext::current())
                    .contains(QStringLiteral("in the older context")));
    }

    void aReplacedContainerLivesForAsLongAsItsContextIsHeld()
    {
        (void)CoreDataManager::shared(); // holds the one that was current at its first use
        store::updateContainer(false);
        auto context = ManagedObjectContext::current();
        const std::weak_ptr<NSPersistentContainer> container = store::container();

        store::updateContainer(true);

        QVERIFY(!container.expired());
        QVERIFY(context->fetch(Item::fetchRequest()));
        context.reset();
        QVERIFY(container.expired());
    }

    void savingACleanContextDoesNotTouchTheStore()
    {
        (void)addItem(*ManagedObjectContext::current(), QStringLiteral("saved before"));
        store::saveContext();
        const QByteArrayList before = stateOfStore();

        store::saveContext();

        QCOMPARE(before.size(), 6); // the file and its log
        QCOMPARE(stateOfStore(), before);
    }

    void savingKeepsWhatIsUnsaved()
    {
        const QString name = QStringLiteral("saved by the process");
        const QByteArrayList before = stateOfStore();
        (void)addItem(*ManagedObjectContext::current(), name);

        store::saveContext();

        QVERIFY(!ManagedObjectContext::current()->hasChanges());
        QVERIFY(stateOfStore() != before);
        QVERIFY(refs(store::setupContainer(false)->viewContext()).contains(name));
    }

    void savingLeavesTheScreensContextAlone()
    {
        NSManagedObjectContext& screens = PersistenceController::shared().container->viewContext();
        const auto item = addItem(screens, QStringLiteral("unsaved on the screens"));

        store::saveContext();

        QVERIFY(screens.hasChanges());
        screens.deleteObject(*item);
    }

    void aFailedSaveIsIgnoredAndTheChangesStay()
    {
        const auto context = ManagedObjectContext::current();
        const auto item = addItem(*context, QStringLiteral("repaired"));
        item->setBill(std::numeric_limits<double>::quiet_NaN());
        QVERIFY(!context->save());
        const QByteArrayList before = stateOfStore();

        QByteArrayList lines;
        {
            const CapturedOutput output;
            store::saveContext();
            lines = output.lines();
        }

        QCOMPARE(lines, QByteArrayList());
        QCOMPARE(stateOfStore(), before);
        QVERIFY(context->hasChanges());
        QCOMPARE(item->state(), NSManagedObject::State::Inserted);
        QCOMPARE(item->ref(), QStringLiteral("repaired"));

        item->setBill(1.0);
        store::saveContext();
        QVERIFY(!context->hasChanges());
    }
};

QTEST_GUILESS_MAIN(SwitchingTest)
#include "SwitchingTest.moc"
