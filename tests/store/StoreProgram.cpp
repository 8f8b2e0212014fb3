// A small program with a store: does what its arguments name, one after the other, and ends. The
// test runs it where the claim is about a whole process.

#include "Bundle.h"
#include "CKContainer.h"
#include "CoreDataManager.h"
#include "Diagnostics.h"
#include "NSUbiquitousKeyValueStore.h"
#include "PersistenceController.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>

namespace {

const QString syncKey = QStringLiteral("icloud_sync");

void chooseMirroring(bool chosen)
{
    NSUbiquitousKeyValueStore::defaultStore().setBool(chosen, syncKey);
}

void saveOneBill()
{
    NSManagedObjectContext& context = PersistenceController::shared().container->viewContext();
    (void)Item::make(context);
    if (!context.save())
        fatalError("The bill could not be saved");
}

void removeModel()
{
    const auto model
        = Bundle::main().pathForResource(QStringLiteral("Vexilo"), QStringLiteral("momd"));
    if (!model || !QFile::remove(*model))
        fatalError("The model could not be removed");
}

void showFailures()
{
    store::setStoreFailureAlert(
        [](const QString& message) { printDiagnostic("alert: " + message.toStdString()); });
}

void signIn()
{
    CKContainer::setAccountSource([] {
        return CKContainer::AccountAnswer { CKAccountStatus::Available, {} };
    });
}

const QHash<QString, void (*)()> steps {
    { QStringLiteral("open"), [] { (void)PersistenceController::shared(); } },
    { QStringLiteral("open-current"), [] { (void)ManagedObjectContext::current(); } },
    { QStringLiteral("switch-on"), [] { store::updateContainer(true); } },
    { QStringLiteral("switch-off"), [] { store::updateContainer(false); } },
    { QStringLiteral("choose-on"), [] { chooseMirroring(true); } },
    { QStringLiteral("choose-off"), [] { chooseMirroring(false); } },
    { QStringLiteral("save-bill"), saveOneBill },
    { QStringLiteral("remove-model"), removeModel },
    { QStringLiteral("show-failures"), showFailures },
    { QStringLiteral("sign-in"), signIn },
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Vexilo"));
    const QStringList names = QCoreApplication::arguments().mid(1);
    for (const QString& name : names) {
        const auto step = steps.constFind(name);
        if (step == steps.cend())
            fatalError("There is no step " + name.toStdString());
        (*step)();
    }
    return EXIT_SUCCESS;
}
