#include "TestStore.h"

#include "PersistentContainer.h"

#include <QtGlobal>

TestStore::TestStore() = default;

std::unique_ptr<NSPersistentContainer> TestStore::otherProgram() const
{
    const QString name = QStringLiteral("Vexilo");
    auto container = std::make_unique<NSPersistentContainer>(
        name, std::get<PersistentContainer::Model>(PersistentContainer::model(name)));
    NSPersistentStoreDescription& description = container->persistentStoreDescriptions().front();
    description.setURL(QUrl::fromLocalFile(file()));
    description.setOption(true, NSPersistentHistoryTrackingKey);
    container->loadPersistentStores(
        [](const NSPersistentStoreDescription&, const std::optional<StoreError>& error) {
            if (error)
                qFatal("No store to test with: %s", qPrintable(error->toString()));
        });
    return container;
}
