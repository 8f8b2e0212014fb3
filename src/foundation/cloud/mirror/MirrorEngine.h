#pragma once

#include "KeyValueMirror.h"
#include "ZoneDeletion.h"
#include "ZoneReview.h"

namespace mirror {

/// What a sync came to.
struct SyncReport {
    enum class Result : quint8 {
        Done, ///< all is read and written, or there is nothing to do
        Waiting, ///< the zone is missing, which may yet turn out to be a mistake
        Stopped, ///< see the phase, which says why
        Failed, ///< see the error
    };

    Result result = Result::Done;
    MirrorPhase phase = MirrorPhase::Off;
    bool isDeletionPending = false;
    std::optional<FileError> error;
    /// At the latest; nothing: not before the credentials change, or the user does something.
    std::optional<std::chrono::milliseconds> comeBack;
    SyncCounts records;
    SyncCounts keyValues;
};

/// Mirrors rows and small values into files that the user's devices share.
///
/// No row is ever deleted because something is absent: only a row's own tombstone does that. An
/// epoch that is absent without a marker is created again only after three valid listings over ten
/// minutes, or where the user switches mirroring on. Where another device deleted the zone, this
/// one stops, and goes on as soon as it sees that a device began a new epoch.
///
/// Synchronous, on one thread, without timers: whoever owns it calls sync() when comeBack is over,
/// and sooner where there is a reason.
class MirrorEngine {
public:
    MirrorEngine(MirrorWorld world, MirrorSetup setup);
    MirrorEngine(const MirrorEngine&) = delete;
    MirrorEngine& operator=(const MirrorEngine&) = delete;
    ~MirrorEngine() = default;

    /// One round: listens, reads, writes, tidies up. May be called at any time, also after a crash
    /// at any point of an earlier one.
    SyncReport sync();

    // What the user decides; each is remembered when it returns true, and done by the next syncs.
    // Another process may decide on the same memory during a sync of this one.

    /// Joins the oldest open epoch, or creates one. Ends every stop; changes nothing where
    /// mirroring is on in this account.
    [[nodiscard]] bool switchOn();
    /// Everything is kept, here and there.
    [[nodiscard]] bool switchOff();
    /// Deletes what all devices keep in the zone; their own rows stay, and they stop. Switches
    /// mirroring off here. Complete when isDeletionPending is false; forgotten where the account
    /// becomes another one before.
    [[nodiscard]] bool deleteZone();

    /// This is another device than the one that remembered all this: a copied profile, with another
    /// clock.
    [[nodiscard]] bool setDevice(DeviceId device);

    /// The network is back, or the window is used again: delays start from their least.
    void forgetFailures() { m_failures = 0; }

private:
    Outcome<Course> mirror();
    Outcome<> checkAccount();
    void adoptAccount(MirrorMemory& memory);
    Outcome<Course> syncZone();
    Outcome<Course> syncEpoch(const Epoch& epoch);
    Outcome<Course> writeEpoch(const QString& folder);
    Outcome<> readOthers();
    SyncReport report(const Outcome<Course>& outcome);
    void fail(SyncReport& report, const FileError& error);

    MirrorWorld m_world;
    MirrorSetup m_setup;
    Listings m_listings;
    KeyValueMirror m_keyValues;
    FolderMirror<Record> m_records;
    ZoneReview m_zone;
    ZoneDeletion m_deletion;
    int m_failures = 0;
    std::optional<FileError::Kind> m_lastFailure;
};

} // namespace mirror
