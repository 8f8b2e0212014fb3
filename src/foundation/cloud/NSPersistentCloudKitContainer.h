#pragma once

#include "NSPersistentContainer.h"

#include <functional>

class RemoteChangeWatch;

/// A container whose records are mirrored to the user's private cloud: everything that changes is
/// recorded, so that the mirror can carry it over whenever it comes, and what the mirror brings is
/// merged into the contexts that merge automatically, in slices between which the window lives on.
class NSPersistentCloudKitContainer : public NSPersistentContainer {
public:
    NSPersistentCloudKitContainer(
        const QString& name, const std::shared_ptr<const NSManagedObjectModel>& model);
    ~NSPersistentCloudKitContainer() override;

    /// What is told, on the container's thread, of each store file that was opened to be mirrored.
    /// At first nothing is.
    static void setMirroring(std::function<void(const QString& file)> begin);

protected:
    [[nodiscard]] NSPersistentStoreCoordinator::History history() const override
    {
        return NSPersistentStoreCoordinator::History::Required;
    }
    void didLoad(const QString& file) override;

private:
    std::unique_ptr<RemoteChangeWatch> m_watch;
};
