#pragma once

#include "FolderMirror.h"
#include "Listings.h"

namespace mirror {

/// Mirrors small values into a folder of their own, which outlives the zone: also where records are
/// not mirrored. They change rarely, so they are looked at at every tenth poll.
class KeyValueMirror {
public:
    KeyValueMirror(MirrorWorld& world, const MirrorSetup& setup, Listings& listings)
        : m_world(world)
        , m_folders(setup.folders)
        , m_listings(listings)
        , m_values(world, world.local.keyValues(), setup.writer, setup.compaction)
    {
    }

    Outcome<> sync();
    /// The next sync looks at them.
    void demand() { m_isDue = true; }

    [[nodiscard]] bool isWaiting() const { return m_values.isWaiting(); }
    [[nodiscard]] SyncCounts takeCounts() { return m_values.takeCounts(); }

private:
    Outcome<> syncFolder(const QString& folder);
    Outcome<> makeFolder(const FileError& missing);

    MirrorWorld& m_world;
    const MirrorFolders& m_folders;
    Listings& m_listings;
    FolderMirror<KeyValue> m_values;
    int m_polls = 0; // since the last look
    bool m_isDue = true;
};

} // namespace mirror
