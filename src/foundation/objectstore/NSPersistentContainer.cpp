#include "NSPersistentContainer.h"

#include <QFile>
#include <QStandardPaths>

NSPersistentContainer::NSPersistentContainer(
    const QString& name, const std::shared_ptr<const NSManagedObjectModel>& model)
    : m_name(name)
    , m_coordinator(model)
    , m_viewContext(std::make_unique<NSManagedObjectContext>(m_coordinator))
{
    const QString folder = defaultDirectoryURL().toLocalFile();
    m_descriptions.emplace_back(
        QUrl::fromLocalFile(folder + QLatin1Char('/') + name + QLatin1String(".sqlite")));
}

NSPersistentContainer::~NSPersistentContainer() = default;

QUrl NSPersistentContainer::defaultDirectoryURL()
{
    return QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

void NSPersistentContainer::loadPersistentStores(const LoadCompletion& completion)
{
    const QString ownFolder = defaultDirectoryURL().toLocalFile();
    for (const NSPersistentStoreDescription& description : m_descriptions) {
        const Result<void> opened = m_coordinator.addPersistentStore(description, history());
        // The default folder is the application's own, so it is closed to others even where
        // something else made it.
        if (opened && description.url().toLocalFile().startsWith(ownFolder + QLatin1Char('/')))
            QFile::setPermissions(
                ownFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        if (opened)
            didLoad(description.url().toLocalFile());
        completion(description, opened ? std::nullopt : std::optional(opened.error()));
    }
}

std::unique_ptr<NSManagedObjectContext> NSPersistentContainer::newContext()
{
    return std::make_unique<NSManagedObjectContext>(m_coordinator);
}
