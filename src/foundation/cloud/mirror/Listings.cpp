#include "Listings.h"

#include <algorithm>

namespace mirror {

namespace {

using namespace std::chrono_literals;

constexpr auto LeastClockOffset = 60s;
constexpr auto LeastOffsetChange = 5s; // what the server's date is cut to is no change

} // namespace

QList<Epoch> Zone::open() const
{
    QList<Epoch> result;
    std::ranges::set_difference(folders, closed, std::back_inserter(result));
    return result;
}

Outcome<QList<FileEntry>> Listings::list(const QString& folder)
{
    auto listing = m_world.files.list(folder);
    if (listing)
        correctClock();
    return listing;
}

/// From the newest answer, at once: a request may take longer than the error that counts.
void Listings::correctClock()
{
    const auto date = m_world.files.serverDate();
    if (!date)
        return;
    std::chrono::milliseconds offset(
        date->toMSecsSinceEpoch() - m_world.now().time_since_epoch().count());
    if (std::chrono::abs(offset) < LeastClockOffset)
        offset = {};
    const auto known = memoryOf(m_world.local);
    if (!known || std::chrono::abs(known->clockOffset - offset) < LeastOffsetChange)
        return;
    // Without it, changes merge the same way everywhere, though in an order that may surprise.
    static_cast<void>(
        remember(m_world.local, [&](MirrorMemory& memory) { memory.clockOffset = offset; }));
}

Outcome<Zone> Listings::zone()
{
    const auto listing = list(m_folders.zone());
    if (!listing) {
        if (!isAbsent(listing.error()))
            return listing.error();
        const auto known = memoryOf(m_world.local);
        const auto around = list(m_folders.container);
        const bool isNothingNeeded = known
            && (known->phase == MirrorPhase::Joining || known->phase == MirrorPhase::Deleted);
        if (around || (isAbsent(around.error()) && isNothingNeeded))
            return Zone();
        return around.error();
    }
    Zone zone { true, {}, {} };
    for (const FileEntry& entry : *listing) {
        const auto folder = Epoch::fromFolderName(entry.name);
        if (folder && entry.type == FileEntry::Type::Collection)
            zone.folders.insert(*folder);
        if (const auto closed = Epoch::fromClosedMarkerName(entry.name))
            zone.closed.insert(*closed);
    }
    return zone;
}

} // namespace mirror
