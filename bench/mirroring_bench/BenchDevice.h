#pragma once

#include "CountingStore.h"
#include "MirrorSession.h"
#include "NSFetchedResultsController.h"
#include "NSPersistentContainer.h"

#include <QTemporaryDir>

/// What one sync cost.
struct Cost {
    double milliseconds = 0;
    int requests = 0;
    qint64 peakGrowth = 0; ///< bytes of resident memory above what there was before
};

/// One device: the program's container, and the mirror beside it. Stops the process where anything
/// fails.
class BenchDevice {
public:
    explicit BenchDevice(const QUrl& root);

    /// Saves so many bills with one save.
    void saveBills(int count);
    /// One sync, the first one with mirroring just switched on.
    Cost sync();
    [[nodiscard]] qint64 bills() const;
    /// From now on there is an open list of the bills, newest first, which follows the store.
    void openList();
    /// Merges what came into the open list, in slices as the program does. Milliseconds of the
    /// longest one.
    [[nodiscard]] double mergeIntoList();
    [[nodiscard]] QString file() const
    {
        return m_folder.filePath(QStringLiteral("Vexilo.sqlite"));
    }

private:
    QTemporaryDir m_folder;
    std::shared_ptr<const NSManagedObjectModel> m_model;
    CountingStore m_files;
    std::unique_ptr<NSPersistentContainer> m_container;
    std::unique_ptr<NSFetchedResultsController> m_list;
    std::unique_ptr<mirror::MirrorSession> m_session;
};
