#pragma once

#include "Listings.h"

namespace mirror {

/// How a sync goes on.
enum class Course : quint8 {
    Go,
    Wait, ///< the zone is missing, which may yet turn out to be a mistake
    Stop,
};

/// Decides by the zone's listing which epoch is mirrored. An epoch that is absent without a marker
/// is created again only after three valid listings over ten minutes, or where the user just
/// switched mirroring on.
class ZoneReview {
public:
    ZoneReview(MirrorWorld& world, const MirrorSetup& setup, Listings& listings)
        : m_world(world)
        , m_setup(setup)
        , m_listings(listings)
    {
    }

    /// A sync begins, in which the zone was not yet looked at.
    void begin() { m_isKnown = false; }
    /// Whether the zone is to be looked at, which every tenth call brings about.
    [[nodiscard]] bool isDue();
    /// The next call of isDue() is true.
    void demand() { m_isDue = true; }

    /// Looks at the zone, and joins or leaves an epoch, or creates one.
    Outcome<Course> review();
    /// Whether this sync looked at the zone.
    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    /// Epochs that are open beside the one that is mirrored.
    [[nodiscard]] const QList<Epoch>& others() const { return m_others; }

private:
    Outcome<Course> decide(const Zone& zone);
    Outcome<Course> join(const Zone& zone);
    Outcome<Course> stop();
    template <class Change> Outcome<Course> conclude(Course course, Change change);
    Outcome<Course> miss();
    Outcome<Course> createEpoch();

    MirrorWorld& m_world;
    const MirrorSetup& m_setup;
    Listings& m_listings;
    QList<Epoch> m_others;
    int m_polls = 0; // since the last look
    bool m_isKnown = false;
    bool m_isDue = true;
};

} // namespace mirror
