#include "MirrorEngine.h"

#include "RetryDelay.h"

namespace mirror {

namespace {

using namespace std::chrono_literals;

constexpr auto MissingPause = 4min;
constexpr auto IdlePause = 5min;

} // namespace

MirrorEngine::MirrorEngine(MirrorWorld world, MirrorSetup setup)
    : m_world(std::move(world))
    , m_setup(std::move(setup))
    , m_listings(m_world, m_setup.folders)
    , m_keyValues(m_world, m_setup, m_listings)
    , m_records(m_world, m_world.local.records(), m_setup.writer, m_setup.compaction)
    , m_zone(m_world, m_setup, m_listings)
    , m_deletion(m_world, m_setup.folders, m_listings)
{
}

SyncReport MirrorEngine::sync()
{
    m_zone.begin();
    return report(mirror());
}

Outcome<Course> MirrorEngine::mirror()
{
    if (auto checked = checkAccount(); !checked)
        return checked.error();
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    if (known->phase == MirrorPhase::OtherAccount)
        return Course::Stop;
    if (known->deletion) {
        if (auto deleted = m_deletion.finish(); !deleted)
            return deleted.error();
    }
    if (auto synced = m_keyValues.sync(); !synced)
        return synced.error();
    return known->phase == MirrorPhase::Off ? Course::Go : syncZone();
}

bool MirrorEngine::switchOn()
{
    const auto known = memoryOf(m_world.local);
    if (known && known->account == m_setup.account
        && (known->phase == MirrorPhase::Joining || known->phase == MirrorPhase::Mirroring))
        return true;
    m_zone.demand();
    m_keyValues.demand();
    m_failures = 0;
    return bool(remember(m_world.local, [this](MirrorMemory& memory) {
        if (memory.account != m_setup.account)
            adoptAccount(memory);
        if (memory.deletion && !memory.deletion->isListed)
            memory.deletion.reset(); // nothing of it has begun
        m_world.local.keyValues().forgetAll();
        memory.phase = MirrorPhase::Joining;
        memory.missingListings = 0;
    }));
}

bool MirrorEngine::switchOff()
{
    const auto known = memoryOf(m_world.local);
    if (known && known->phase == MirrorPhase::Off)
        return true;
    return bool(
        remember(m_world.local, [](MirrorMemory& memory) { memory.phase = MirrorPhase::Off; }));
}

bool MirrorEngine::deleteZone()
{
    return bool(remember(m_world.local, [this](MirrorMemory& memory) {
        if (memory.account.isEmpty())
            memory.account = m_setup.account;
        // Without any, there is nothing of which the user could have thought.
        if (!memory.account.isEmpty())
            memory.deletion = DeletionJournal();
        memory.phase = MirrorPhase::Off;
    }));
}

bool MirrorEngine::setDevice(DeviceId device)
{
    return bool(remember(m_world.local, [&](MirrorMemory& memory) {
        memory.device = device;
        memory.missingListings = 0;
    }));
}

Outcome<> MirrorEngine::checkAccount()
{
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    if (known->account == m_setup.account)
        return {};
    return remember(m_world.local, [this](MirrorMemory& memory) {
        if (memory.account.isEmpty() || memory.phase == MirrorPhase::Off)
            adoptAccount(memory);
        else
            memory.phase = MirrorPhase::OtherAccount;
    });
}

/// Nothing of what was seen in another one counts any more.
void MirrorEngine::adoptAccount(MirrorMemory& memory)
{
    m_world.local.records().forgetAll();
    m_world.local.keyValues().forgetAll();
    memory.epoch.reset();
    memory.closedEpochs.clear();
    memory.deletion.reset();
    memory.account = m_setup.account;
}

Outcome<Course> MirrorEngine::syncZone()
{
    if (m_zone.isDue()) {
        auto course = m_zone.review();
        if (!course || *course != Course::Go)
            return course;
    }
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    if (known->phase == MirrorPhase::Deleted)
        return Course::Stop;
    if (!known->epoch) {
        m_zone.demand();
        return notUnderstood(QStringLiteral("There is no epoch to mirror into."));
    }
    return syncEpoch(*known->epoch);
}

Outcome<Course> MirrorEngine::syncEpoch(const Epoch& epoch)
{
    const QString folder = m_setup.folders.epoch(epoch);
    const auto listing = m_listings.list(folder);
    if (!listing) {
        if (isAbsent(listing.error()))
            m_zone.demand();
        if (!isAbsent(listing.error()) || m_zone.isKnown())
            return listing.error();
        return syncZone();
    }
    if (auto read = m_records.read(folder, *listing); !read)
        return read.error();
    if (m_records.hasUnpublished() && !m_zone.isKnown()) {
        auto course = m_zone.review(); // the epoch may have been closed
        if (!course || *course != Course::Go)
            return course;
        const auto known = memoryOf(m_world.local);
        if (!known)
            return known.error();
        if (known->epoch != epoch)
            return syncZone();
    }
    return writeEpoch(folder);
}

Outcome<Course> MirrorEngine::writeEpoch(const QString& folder)
{
    if (auto read = readOthers(); !read)
        return read.error();
    if (auto published = m_records.publish(folder); !published) {
        if (isAbsent(published.error()))
            m_zone.demand();
        return published.error();
    }
    if (auto compacted = m_records.compactWhenDue(folder); !compacted)
        return compacted.error();
    return Course::Go;
}

/// What was written into another epoch, before its writer saw the older one, is not lost.
Outcome<> MirrorEngine::readOthers()
{
    if (!m_zone.isKnown())
        return {};
    for (const Epoch& other : m_zone.others()) {
        const QString folder = m_setup.folders.epoch(other);
        const auto listing = m_listings.list(folder);
        if (!listing && isAbsent(listing.error()))
            continue;
        if (!listing)
            return listing.error();
        if (auto read = m_records.readOther(folder, *listing); !read)
            return read;
    }
    return {};
}

SyncReport MirrorEngine::report(const Outcome<Course>& outcome)
{
    SyncReport result;
    result.records = m_records.takeCounts();
    result.keyValues = m_keyValues.takeCounts();
    if (const auto known = memoryOf(m_world.local)) {
        result.phase = known->phase;
        result.isDeletionPending = known->deletion.has_value();
    } else {
        result.isDeletionPending = true; // as far as is known
    }
    if (!outcome) {
        fail(result, outcome.error());
        return result;
    }
    m_failures = 0;
    m_lastFailure.reset();
    switch (*outcome) {
    case Course::Go:
        result.comeBack = m_records.isWaiting() || m_keyValues.isWaiting()
            ? m_setup.compaction.delay
            : IdlePause;
        break;
    case Course::Wait:
        result.result = SyncReport::Result::Waiting;
        result.comeBack = MissingPause;
        break;
    case Course::Stop:
        result.result = SyncReport::Result::Stopped;
        if (result.phase == MirrorPhase::Deleted)
            result.comeBack = IdlePause;
        break;
    }
    return result;
}

void MirrorEngine::fail(SyncReport& report, const FileError& error)
{
    m_failures = error.kind == m_lastFailure ? m_failures + 1 : 1;
    m_lastFailure = error.kind;
    report.result = SyncReport::Result::Failed;
    report.error = error;
    report.comeBack = retryDelay(error, m_failures, randomFraction(m_world));
}

} // namespace mirror
