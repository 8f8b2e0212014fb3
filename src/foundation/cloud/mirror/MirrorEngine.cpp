#include "MirrorEngine.h"

#include "LineFields.h"
#include "RetryDelay.h"

#include <algorithm>
#include <set>

namespace mirror {

namespace {

using namespace std::chrono_literals;
using Kind = FileError::Kind;

constexpr int ListingsWhileMissing = 3;
constexpr auto TimeWhileMissing = 10min;
constexpr auto MissingPause = 4min;
constexpr auto IdlePause = 5min;
constexpr auto LeastClockOffset = 60s;
constexpr qsizetype MaxClosedEpochs = 256;

FileError notUnderstood(const QString& sentence)
{
    return { Kind::NotUnderstood, 0, std::nullopt, sentence };
}

bool isAbsent(const FileError& error)
{
    return error.kind == Kind::NotFound || error.kind == Kind::Conflict;
}

} // namespace

QString MirrorFolders::zone() const
{
    return container + QStringLiteral("com.apple.coredata.cloudkit.zone/");
}

QString MirrorFolders::epoch(const Epoch& epoch) const
{
    return zone() + epoch.folderName() + QLatin1Char('/');
}

QString MirrorFolders::keyValues() const { return container + QStringLiteral("kv/"); }

/// What a valid listing shows.
struct MirrorEngine::Zone {
    bool exists = false;
    std::set<Epoch> folders;
    std::set<Epoch> closed;

    [[nodiscard]] QList<Epoch> open() const
    {
        QList<Epoch> result;
        std::ranges::set_difference(folders, closed, std::back_inserter(result));
        return result;
    }
};

MirrorEngine::MirrorEngine(MirrorWorld world, MirrorSetup setup)
    : m_world(std::move(world))
    , m_setup(std::move(setup))
    , m_records(m_world, m_world.local.records(), m_setup.writer, m_setup.compaction)
    , m_keyValues(m_world, m_world.local.keyValues(), m_setup.writer, m_setup.compaction)
{
}

SyncReport MirrorEngine::sync()
{
    m_isZoneKnown = false;
    return report(mirror());
}

Outcome<MirrorEngine::Course> MirrorEngine::mirror()
{
    if (auto checked = checkAccount(); !checked)
        return checked.error();
    auto known = memory();
    if (!known)
        return known.error();
    if (known->phase == MirrorPhase::OtherAccount)
        return Course::Stop;
    if (known->deletion) {
        if (auto deleted = finishDeletion(); !deleted)
            return deleted.error();
    }
    if (auto synced = syncKeyValues(); !synced)
        return synced.error();
    return known->phase == MirrorPhase::Off ? Course::Go : syncZone();
}

bool MirrorEngine::switchOn()
{
    const auto known = memory();
    if (known && known->account == m_setup.account
        && (known->phase == MirrorPhase::Joining || known->phase == MirrorPhase::Mirroring))
        return true;
    m_isZoneDue = true;
    m_pollsSinceKeyValues = PollsPerZoneListing;
    m_failures = 0;
    return bool(remember([this](MirrorMemory& memory) {
        if (memory.account != m_setup.account)
            adoptAccount(memory);
        m_world.local.keyValues().forgetAll();
        memory.phase = MirrorPhase::Joining;
        memory.missingListings = 0;
    }));
}

bool MirrorEngine::switchOff()
{
    const auto known = memory();
    if (known && known->phase == MirrorPhase::Off)
        return true;
    return bool(remember([](MirrorMemory& memory) { memory.phase = MirrorPhase::Off; }));
}

bool MirrorEngine::deleteZone()
{
    return bool(remember([](MirrorMemory& memory) {
        memory.deletion = DeletionJournal();
        memory.phase = MirrorPhase::Off;
    }));
}

bool MirrorEngine::setDevice(DeviceId device)
{
    return bool(remember([&](MirrorMemory& memory) {
        memory.device = device;
        memory.missingListings = 0;
    }));
}

Outcome<> MirrorEngine::checkAccount()
{
    const auto known = memory();
    if (!known)
        return known.error();
    if (known->account == m_setup.account)
        return {};
    return remember([this](MirrorMemory& memory) {
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

Outcome<QList<FileEntry>> MirrorEngine::list(const QString& folder)
{
    auto listing = m_world.files.list(folder);
    if (listing)
        correctClock();
    return listing;
}

/// From the newest answer, at once: a request may take longer than the error that counts.
void MirrorEngine::correctClock()
{
    const auto date = m_world.files.serverDate();
    if (!date)
        return;
    std::chrono::milliseconds offset(
        date->toMSecsSinceEpoch() - m_world.now().time_since_epoch().count());
    if (std::chrono::abs(offset) < LeastClockOffset)
        offset = {};
    const auto known = memory();
    // What the server's date is cut to would change the offset at every answer.
    if (!known || std::chrono::abs(known->clockOffset - offset) < 5s)
        return;
    // Without it, changes merge the same way everywhere, though in an order that may surprise.
    static_cast<void>(remember([&](MirrorMemory& memory) { memory.clockOffset = offset; }));
}

Outcome<> MirrorEngine::syncKeyValues()
{
    if (++m_pollsSinceKeyValues < PollsPerZoneListing && !m_keyValues.isWaiting()
        && !m_keyValues.hasUnpublished())
        return {};
    auto synced = syncKeyValueFolder(m_setup.folders.keyValues());
    m_pollsSinceKeyValues = synced ? 0 : PollsPerZoneListing;
    return synced;
}

Outcome<> MirrorEngine::syncKeyValueFolder(const QString& folder)
{
    auto listing = list(folder);
    if (!listing) {
        if (!isAbsent(listing.error()))
            return listing.error();
        if (auto made = makeKeyValueFolder(listing.error()); !made || !m_keyValues.hasUnpublished())
            return made;
        listing = QList<FileEntry>();
    }
    if (auto pulled = m_keyValues.pull(folder, *listing, Carriers::Set); !pulled)
        return pulled;
    if (auto forgotten = m_keyValues.forgetVanished(folder, *listing); !forgotten)
        return forgotten;
    if (auto published = m_keyValues.publish(folder); !published)
        return published;
    return m_keyValues.compactWhenDue(folder);
}

/// Where the container is there and the folder is not, it is made for entries that have no file;
/// where neither is, only if there never was one.
Outcome<> MirrorEngine::makeKeyValueFolder(const FileError& missing)
{
    const QString& container = m_setup.folders.container;
    const auto around = list(container);
    if (!around && !isAbsent(around.error()))
        return around.error();
    LocalTransaction writing(m_world.local);
    LocalShelf<KeyValue>& shelf = m_world.local.keyValues();
    const bool wasThere = !shelf.files(m_setup.folders.keyValues()).empty();
    if (around)
        shelf.forgetAll();
    const bool isNeeded = !shelf.unpublished({}, 1).empty();
    if (!writing.commit())
        return localFailure();
    if (!around && wasThere)
        return missing;
    if (!isNeeded)
        return {};
    if (!around) {
        if (auto made = m_world.files.makeCollection(container); !made)
            return made.error();
    }
    if (auto made = m_world.files.makeCollection(m_setup.folders.keyValues()); !made)
        return made.error();
    return {};
}

Outcome<MirrorEngine::Course> MirrorEngine::syncZone()
{
    if (m_isZoneDue || ++m_pollsSinceZone >= PollsPerZoneListing) {
        auto course = reviewZone();
        if (!course || *course != Course::Go)
            return course;
    }
    const auto known = memory();
    if (!known)
        return known.error();
    if (known->phase == MirrorPhase::Deleted)
        return Course::Stop;
    if (!known->epoch) {
        m_isZoneDue = true;
        return notUnderstood(QStringLiteral("There is no epoch to mirror into."));
    }
    return syncEpoch(*known->epoch);
}

Outcome<MirrorEngine::Course> MirrorEngine::syncEpoch(const Epoch& epoch)
{
    const QString folder = m_setup.folders.epoch(epoch);
    const auto listing = list(folder);
    if (!listing) {
        m_isZoneDue = m_isZoneDue || isAbsent(listing.error());
        if (!isAbsent(listing.error()) || m_isZoneKnown)
            return listing.error();
        return syncZone();
    }
    if (auto pulled = m_records.pull(folder, *listing, Carriers::Set); !pulled)
        return pulled.error();
    if (auto forgotten = m_records.forgetVanished(folder, *listing); !forgotten)
        return forgotten.error();
    if (m_records.hasUnpublished() && !m_isZoneKnown) {
        m_isZoneDue = true; // the epoch may have been closed
        auto course = reviewZone();
        if (!course || *course != Course::Go)
            return course;
        const auto known = memory();
        if (!known)
            return known.error();
        if (known->epoch != epoch)
            return syncZone();
    }
    if (auto read = readOthers(); !read)
        return read.error();
    if (auto published = m_records.publish(folder); !published) {
        m_isZoneDue = m_isZoneDue || isAbsent(published.error());
        return published.error();
    }
    if (auto compacted = m_records.compactWhenDue(folder); !compacted)
        return compacted.error();
    return Course::Go;
}

/// What was written into another epoch, before its writer saw the older one, is not lost.
Outcome<> MirrorEngine::readOthers()
{
    if (!m_isZoneKnown)
        return {};
    for (const Epoch& other : m_others) {
        const QString folder = m_setup.folders.epoch(other);
        const auto listing = list(folder);
        if (!listing && isAbsent(listing.error()))
            continue;
        if (!listing)
            return listing.error();
        if (auto pulled = m_records.pull(folder, *listing, Carriers::Leave); !pulled)
            return pulled;
    }
    return {};
}

Outcome<MirrorEngine::Course> MirrorEngine::reviewZone()
{
    const auto zone = listZone();
    if (!zone)
        return zone.error();
    m_pollsSinceZone = 0;
    m_isZoneKnown = true;
    m_isZoneDue = false;
    return decide(*zone);
}

/// Missing where the container's listing lacks it. Where the container is absent, too, nothing is
/// known to a mirror that writes there; for one that waits or begins there is nothing.
Outcome<MirrorEngine::Zone> MirrorEngine::listZone()
{
    const auto listing = list(m_setup.folders.zone());
    if (!listing) {
        if (!isAbsent(listing.error()))
            return listing.error();
        const auto known = memory();
        const auto around = list(m_setup.folders.container);
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

Outcome<MirrorEngine::Course> MirrorEngine::decide(const Zone& zone)
{
    auto remembered = remember([&](MirrorMemory& memory) {
        for (const Epoch& epoch : zone.closed) {
            if (!memory.closedEpochs.contains(epoch))
                memory.closedEpochs.append(epoch);
        }
        const qsizetype tooMany = memory.closedEpochs.size() - MaxClosedEpochs;
        if (tooMany > 0)
            memory.closedEpochs.remove(0, tooMany);
    });
    const auto known = memory();
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

Outcome<MirrorEngine::Course> MirrorEngine::join(const Zone& zone)
{
    m_others = zone.open();
    const Epoch oldest = m_others.takeFirst();
    const auto joined = remember([&](MirrorMemory& memory) {
        if (memory.epoch != oldest)
            m_world.local.records().forgetAll();
        memory.epoch = oldest;
        memory.phase = MirrorPhase::Mirroring;
        memory.missingListings = 0;
    });
    return joined ? Outcome<Course>(Course::Go) : joined.error();
}

Outcome<MirrorEngine::Course> MirrorEngine::stop()
{
    const auto stopped = remember([&](MirrorMemory& memory) {
        m_world.local.records().forgetAll();
        memory.phase = MirrorPhase::Deleted;
    });
    return stopped ? Outcome<Course>(Course::Stop) : stopped.error();
}

Outcome<MirrorEngine::Course> MirrorEngine::miss()
{
    m_isZoneDue = true;
    const WallTime now = m_world.now();
    bool isLost = false;
    const auto counted = remember([&](MirrorMemory& memory) {
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

Outcome<MirrorEngine::Course> MirrorEngine::createEpoch()
{
    const MirrorFolders& folders = m_setup.folders;
    const auto known = memory();
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
    if (auto stored
        = m_world.files.put(folders.container + QStringLiteral("README.txt"), m_setup.readme);
        !stored)
        return stored.error();
    const auto zone = listZone(); // another device may have been faster
    if (!zone)
        return zone.error();
    if (zone->open().isEmpty())
        return notUnderstood(QStringLiteral("The epoch that was created is not there."));
    return join(*zone);
}

Outcome<> MirrorEngine::finishDeletion()
{
    const auto zone = listZone();
    if (!zone)
        return zone.error();
    if (auto journalled = journalEpochs(*zone); !journalled)
        return journalled;
    if (auto closed = closeEpochs(*zone); !closed)
        return closed;
    const auto left = listZone();
    const auto known = memory();
    if (!left || !known)
        return left ? known.error() : left.error();
    for (const Epoch& epoch : known->deletion->epochs) {
        if (left->folders.contains(epoch) || !left->closed.contains(epoch))
            return notUnderstood(QStringLiteral("The deletion is not complete."));
    }
    return remember([](MirrorMemory& memory) { memory.deletion.reset(); });
}

/// What is created later is not what the user wanted deleted.
Outcome<> MirrorEngine::journalEpochs(const Zone& zone)
{
    return remember([&](MirrorMemory& memory) {
        if (!memory.deletion || memory.deletion->isListed)
            return;
        QList<Epoch> epochs(zone.folders.begin(), zone.folders.end());
        if (memory.epoch && !epochs.contains(*memory.epoch))
            epochs.append(*memory.epoch);
        memory.deletion = DeletionJournal { true, epochs };
    });
}

/// All markers before the first folder: no device may ever see only that one is missing.
Outcome<> MirrorEngine::closeEpochs(const Zone& zone)
{
    const auto known = memory();
    if (!known)
        return known.error();
    const QList<Epoch> epochs = known->deletion->epochs;
    if (!zone.exists && !epochs.isEmpty()) {
        for (const QString& folder : { m_setup.folders.container, m_setup.folders.zone() }) {
            if (auto made = m_world.files.makeCollection(folder); !made)
                return made.error();
        }
    }
    const QByteArray marker = "{\"by\":\"" + deviceText(known->device) + "\",\"at\":"
        + QByteArray::number(qint64(m_world.now().time_since_epoch().count())) + "}\n";
    for (const Epoch& epoch : epochs) {
        if (zone.closed.contains(epoch))
            continue;
        const QString path = m_setup.folders.zone() + epoch.closedMarkerName();
        if (auto stored = m_world.files.put(path, marker); !stored)
            return stored;
    }
    const auto marked = listZone(); // what is not seen there is not there
    if (!marked)
        return marked.error();
    for (const Epoch& epoch : epochs) {
        if (!marked->closed.contains(epoch))
            return notUnderstood(QStringLiteral("A marker that was stored is not there."));
    }
    auto forgotten = remember([&](MirrorMemory& memory) {
        if (memory.epoch && epochs.contains(*memory.epoch))
            m_world.local.records().forgetAll();
    });
    if (!forgotten)
        return forgotten;
    for (const Epoch& epoch : epochs) {
        if (!zone.folders.contains(epoch))
            continue;
        auto removed = m_world.files.remove(m_setup.folders.epoch(epoch), Trash::Use);
        if (!removed && removed.error().kind != Kind::NotFound)
            return removed;
    }
    return {};
}

Outcome<MirrorMemory> MirrorEngine::memory()
{
    LocalTransaction reading(m_world.local);
    MirrorMemory known = m_world.local.memory();
    if (!reading.commit())
        return localFailure();
    return known;
}

template <class Change> Outcome<> MirrorEngine::remember(Change change)
{
    LocalTransaction writing(m_world.local);
    MirrorMemory known = m_world.local.memory();
    change(known);
    m_world.local.setMemory(known);
    return writing.commit() ? Outcome<>() : localFailure();
}

double MirrorEngine::fraction() { return double(m_world.random() % 1001) / 1000; }

SyncReport MirrorEngine::report(const Outcome<Course>& outcome)
{
    SyncReport result;
    result.records = m_records.takeCounts();
    result.keyValues = m_keyValues.takeCounts();
    if (const auto known = memory()) {
        result.phase = known->phase;
        result.isDeletionPending = known->deletion.has_value();
    }
    if (!outcome) {
        const FileError& error = outcome.error();
        m_failures = error.kind == m_lastFailure ? m_failures + 1 : 1;
        m_lastFailure = error.kind;
        result.result = SyncReport::Result::Failed;
        result.error = error;
        result.comeBack = retryDelay(error, m_failures, fraction());
        return result;
    }
    m_failures = 0;
    m_lastFailure.reset();
    if (*outcome == Course::Stop) {
        result.result = SyncReport::Result::Stopped;
        if (result.phase == MirrorPhase::Deleted)
            result.comeBack = IdlePause;
        return result;
    }
    const bool isSoon = m_records.isWaiting() || m_keyValues.isWaiting();
    result.comeBack = isSoon ? m_setup.compaction.delay : IdlePause;
    if (*outcome == Course::Wait) {
        result.result = SyncReport::Result::Waiting;
        result.comeBack = MissingPause;
    }
    return result;
}

} // namespace mirror
