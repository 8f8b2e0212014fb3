#pragma once

#include "MirrorSetup.h"

#include <set>

namespace mirror {

/// What a valid listing of the zone shows.
struct Zone {
    bool exists = false;
    std::set<Epoch> folders;
    std::set<Epoch> closed;

    /// The oldest first.
    [[nodiscard]] QList<Epoch> open() const;
};

/// Lists folders, and sets our clock by the same answers.
class Listings {
public:
    Listings(MirrorWorld& world, const MirrorFolders& folders)
        : m_world(world)
        , m_folders(folders)
    {
    }

    Outcome<QList<FileEntry>> list(const QString& folder);

    /// A zone that does not exist where the container's listing lacks it. Where the container is
    /// absent, too, nothing is known to a mirror that writes there; for one that waits or begins
    /// there is nothing.
    Outcome<Zone> zone();

private:
    void correctClock();

    MirrorWorld& m_world;
    const MirrorFolders& m_folders;
};

} // namespace mirror
