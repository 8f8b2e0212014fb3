#pragma once

#include "Listings.h"

namespace mirror {

/// Deletes the epochs of the zone on purpose: tells the other devices of each by a marker, and then
/// removes its folder. Journalled, so that it may be finished after a crash at any point.
class ZoneDeletion {
public:
    ZoneDeletion(MirrorWorld& world, const MirrorFolders& folders, Listings& listings)
        : m_world(world)
        , m_folders(folders)
        , m_listings(listings)
    {
    }

    /// Goes on with the deletion that is journalled, until a listing shows that it is complete.
    Outcome<> finish();

private:
    Outcome<QList<Epoch>> journalEpochs(const Zone& zone);
    Outcome<> closeEpochs(const Zone& zone, const QList<Epoch>& epochs);
    Outcome<> putMarkers(const Zone& zone, const QList<Epoch>& epochs);
    Outcome<> removeFolders(const Zone& zone, const QList<Epoch>& epochs);

    MirrorWorld& m_world;
    const MirrorFolders& m_folders;
    Listings& m_listings;
};

} // namespace mirror
