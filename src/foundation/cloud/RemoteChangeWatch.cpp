#include "RemoteChangeWatch.h"

#include "NSPersistentStoreCoordinator.h"

#include <QElapsedTimer>

namespace {

constexpr qint64 MillisecondsPerTurn = 2;
constexpr int MillisecondsBetweenTurns = 2; // for what else waits, painting among it

} // namespace

RemoteChangeWatch::RemoteChangeWatch(NSPersistentStoreCoordinator& coordinator, const QString& file)
    : m_coordinator(coordinator)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &RemoteChangeWatch::mergeSome);
    connect(&m_file, &StoreFileWatch::maybeWritten, this, [this] {
        if (!m_next.isActive())
            mergeSome();
    });
    m_file.watch(file);
}

void RemoteChangeWatch::mergeSome()
{
    using Merge = NSPersistentStoreCoordinator::RemoteChanges;
    QElapsedTimer turn;
    turn.start();
    Result<Merge> merged = Merge::MoreToMerge;
    while (merged && *merged == Merge::MoreToMerge && turn.elapsed() < MillisecondsPerTurn)
        merged = m_coordinator.mergeRemoteChanges(ChangesPerSlice);
    // What cannot be read now is looked for again with the next change.
    if (merged && *merged == Merge::MoreToMerge)
        m_next.start(MillisecondsBetweenTurns);
}
