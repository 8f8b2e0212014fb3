#pragma once

#include "NSPersistentContainer.h"

/// A container whose records are meant to be mirrored to the user's private cloud: everything that
/// changes is recorded, so that a mirror can carry it over whenever it comes.
class NSPersistentCloudKitContainer : public NSPersistentContainer {
public:
    using NSPersistentContainer::NSPersistentContainer;

protected:
    [[nodiscard]] NSPersistentStoreCoordinator::History history() const override
    {
        return NSPersistentStoreCoordinator::History::Required;
    }
};
