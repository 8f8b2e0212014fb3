#include "NSPersistentCloudKitContainer.h"

#include "RemoteChangeWatch.h"

namespace {

std::function<void(const QString&)>& mirroring()
{
    static std::function<void(const QString&)> instance;
    return instance;
}

} // namespace

NSPersistentCloudKitContainer::NSPersistentCloudKitContainer(
    const QString& name, const std::shared_ptr<const NSManagedObjectModel>& model)
    : NSPersistentContainer(name, model)
{
}

NSPersistentCloudKitContainer::~NSPersistentCloudKitContainer() = default;

void NSPersistentCloudKitContainer::setMirroring(std::function<void(const QString& file)> begin)
{
    mirroring() = std::move(begin);
}

void NSPersistentCloudKitContainer::didLoad(const QString& file)
{
    m_watch = std::make_unique<RemoteChangeWatch>(persistentStoreCoordinator(), file);
    if (mirroring())
        mirroring()(file);
}
