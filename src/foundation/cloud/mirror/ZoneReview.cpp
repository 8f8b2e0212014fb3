#include "ZoneReview.h"

#include <algorithm>

namespace mirror {

namespace {

using namespace std::chrono_literals;

constexpr int PollsPerLook = 10;
constexpr int ListingsWhileMissing = 3;
constexpr auto TimeWhileMissing = 10min;
constexpr qsizetype MaxClosedEpochs = 256;

void addClosed(QList<Epoch>& known, const std::set<Epoch>& closed)
{
    for (const Epoch& epoch : closed) {
        if (!known.contains(epoch))
            known.append(epoch);
    }
    if (known.size() > MaxClosedEpochs)
        known.remove(0, known.size() - MaxClosedEpochs);
}

} // namespace

bool ZoneReview::isDue() { return m_isDue || ++m_polls >= PollsPerLook; }

Outcome<Course> ZoneReview::review()
{
    m_isDue = true; // until it succeeded
    const auto zone = m_listings.zone();
    if (!zone)
        return zone.error();
    m_polls = 0;
    m_isKnown = true;
    m_isDue = false;
    return decide(*zone);
}

Outcome<Course> ZoneReview::decide(const Zone& zone)
{
    const auto remembered = remember(
        m_world.local, [&](MirrorMemory& memory) { addClosed(memory.closedEpochs, zone.closed); });
    const auto known = memoryOf(m_world.local);
    if (!remembered || !known)
        return localFailure();
    if (!zone.open().isEmpty())
        return join(zone);
    if (known->phase == MirrorPhase::Joining)
        return createEpoch();
    if (known->phase == MirrorPhase::Deleted)
        return Course::Stop;
    // A marker that was seen and is gone with its folder still counts.
    if (known->epoch && known->closedEpochs.contains(*known->epoch))
        return stop();
    return miss();
}

Outcome<Course> ZoneReview::join(const Zone& zone)
{
    m_others = zone.open();
    const Epoch oldest = m_others.takeFirst();
    return conclude(Course::Go, [&](MirrorMemory& memory) {
        if (memory.epoch != oldest)
            m_world.local.records().forgetAll();
        memory.epoch = oldest;
        memory.phase = MirrorPhase::Mirroring;
        memory.missingListings = 0;
    });
}

Outcome<Course> ZoneReview::stop()
{
    return conclude(Course::Stop, [&](MirrorMemory& memory) {
        m_world.local.records().forgetAll();
        memory.phase = MirrorPhase::Deleted;
    });
}

/// What the user decided since the zone was listed stands.
template <class Change> Outcome<Course> ZoneReview::conclude(Course course, Change change)
{
    bool isOff = false;
    const auto remembered = remember(m_world.local, [&](MirrorMemory& memory) {
        isOff = memory.phase == MirrorPhase::Off;
        if (!isOff)
            change(memory);
    });
    if (!remembered)
        return remembered.error();
    return isOff ? Course::Stop : course;
}

Outcome<Course> ZoneReview::miss()
{
    m_isDue = true;
    const WallTime now = m_world.now();
    bool isLost = false;
    const auto counted = remember(m_world.local, [&](MirrorMemory& memory) {
        if (memory.missingListings == 0 || now < memory.missingSince) {
            memory.missingSince = now;
            memory.missingListings = 0;
        }
        ++memory.missingListings;
        isLost = memory.missingListings >= ListingsWhileMissing
            && now - memory.missingSince >= TimeWhileMissing;
    });
    if (!counted)
        return counted.error();
    return isLost ? createEpoch() : Course::Wait;
}

Outcome<Course> ZoneReview::createEpoch()
{
    const MirrorFolders& folders = m_setup.folders;
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    const WallTime now = m_world.now() + known->clockOffset;
    const Epoch epoch { std::clamp<qint64>(
                            now.time_since_epoch().count(), 0, HybridTime::MaxMilliseconds),
        m_world.random() };
    for (const QString& folder : { folders.container, folders.zone(), folders.epoch(epoch) }) {
        if (auto made = m_world.files.makeCollection(folder); !made)
            return made.error();
    }
    const QString readme = folders.container + QStringLiteral("README.txt");
    if (auto stored = m_world.files.put(readme, m_setup.readme); !stored)
        return stored.error();
    const auto zone = m_listings.zone(); // another device may have been faster
    if (!zone)
        return zone.error();
    if (zone->open().isEmpty())
        return notUnderstood(QStringLiteral("The epoch that was created is not there."));
    return join(*zone);
}

} // namespace mirror
