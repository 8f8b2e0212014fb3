#include "PersistenceController.h"

#include "CKContainer.h"
#include "CoreDataManager.h"
#include "Diagnostics.h"
#include "NSUbiquitousKeyValueStore.h"
#include "PersistentContainer.h"

#include <QCoreApplication>

#include <atomic>

namespace {

std::function<void(const QString&)>& failureAlert()
{
    static std::function<void(const QString&)> instance;
    return instance;
}

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PersistenceController)
};

/// Shows one text to the user and ends with the other, which is the same in English.
[[noreturn]] void stop(const QString& shown, const QString& diagnostic)
{
    if (failureAlert())
        failureAlert()(shown);
    fatalError(diagnostic.toStdString());
}

[[noreturn]] void stop(const char* text) { stop(Texts::tr(text), QString::fromUtf8(text)); }

void printBanner(bool withSync)
{
    const std::string line(42, '-');
    printDiagnostic(line);
    printDiagnostic(withSync ? "--> Cloud? true" : "--> Cloud? false");
    printDiagnostic(line);
}

std::shared_ptr<NSPersistentContainer>& currentContainer()
{
    // Never torn down: what still refers to a context at the end of the process may use it.
    static auto* const instance = new std::shared_ptr<NSPersistentContainer>();
    return *instance;
}

} // namespace

namespace store {

bool sync()
{
    const bool chosen
        = NSUbiquitousKeyValueStore::defaultStore().boolForKey(QStringLiteral("icloud_sync"));
    return chosen || userHas_iCloudAccount();
}

bool userHas_iCloudAccount()
{
    const auto hasAccount = std::make_shared<std::atomic<bool>>(false);
    CKContainer::defaultContainer().accountStatus(
        [hasAccount](const CKContainer::AccountAnswer& answer) {
            *hasAccount = answer.status == CKAccountStatus::Available;
            if (*hasAccount) {
                printDiagnostic("--> user has icloud account");
                return;
            }
            printDiagnostic("--> iCloud not available "
                + (answer.error ? answer.error->localizedDescription.toStdString() : "nil"));
        });
    return *hasAccount;
}

std::shared_ptr<NSPersistentContainer> setupContainer(bool withSync)
{
    const auto made = PersistentContainer::get(withSync);
    if (const auto* const error = std::get_if<CoreDataModelError>(&made)) {
        printDiagnostic(error->toString().toStdString());
        stop(QT_TRANSLATE_NOOP("PersistenceController", "Could not setup Container"));
    }
    auto container = std::get<std::shared_ptr<NSPersistentContainer>>(made);
    if (container->persistentStoreDescriptions().empty())
        stop(QT_TRANSLATE_NOOP("PersistenceController", "No description found"));
    NSPersistentStoreDescription& description = container->persistentStoreDescriptions().front();
    NSManagedObjectContext& viewContext = container->viewContext();

    // A local store has no second writer to merge with; a mirrored one records its changes anyway.
    if (withSync) {
        viewContext.setAutomaticallyMergesChangesFromParent(true);
        viewContext.setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
    } else {
        description.setOption(true, NSPersistentHistoryTrackingKey);
    }
    // There is nothing to pin before the store is loaded, and nothing depends on it.
    (void)viewContext.setQueryGenerationFrom(NSManagedObjectContext::QueryGeneration::Current);
    description.setOption(true, NSPersistentStoreRemoteChangeNotificationOptionKey);
    description.setOption(true, NSInferMappingModelAutomaticallyOption);
    description.setOption(true, NSMigratePersistentStoresAutomaticallyOption);

    container->loadPersistentStores(
        [](const NSPersistentStoreDescription&, const std::optional<StoreError>& error) {
            if (error)
                stop(Texts::tr("Unresolved error %1, %2")
                         .arg(error->translated(), error->userInfoText()),
                    unresolvedError(*error));
        });
    printBanner(withSync);
    return container;
}

void setStoreFailureAlert(std::function<void(const QString& message)> alert)
{
    failureAlert() = std::move(alert);
}

std::shared_ptr<NSPersistentContainer> container()
{
    if (!currentContainer())
        currentContainer() = setupContainer(sync());
    return currentContainer();
}

void updateContainer(bool withSync)
{
    saveContext();
    currentContainer() = setupContainer(withSync);
    // Only touches the store.
    (void)CoreDataManager::shared().fetchAllItems();
}

} // namespace store

PersistenceController& PersistenceController::shared()
{
    static auto* const instance = new PersistenceController();
    return *instance;
}

PersistenceController::PersistenceController()
    : container(store::setupContainer(store::sync()))
{
}
