#pragma once

#include "StoreFileWatch.h"

class NSPersistentStoreCoordinator;

/// Merges what others write into a store file, as soon as they do: the mirror on its own thread,
/// or another process.
class RemoteChangeWatch : public QObject {
    Q_OBJECT

public:
    /// A frame has sixteen milliseconds, and the merge at most half of it: slices for half of that,
    /// and room for the last one.
    static constexpr std::size_t ChangesPerSlice = 12;

    /// The store is open; the coordinator must outlive this.
    RemoteChangeWatch(NSPersistentStoreCoordinator& coordinator, const QString& file);

private:
    void mergeSome();

    NSPersistentStoreCoordinator& m_coordinator;
    StoreFileWatch m_file;
    QTimer m_next;
};
