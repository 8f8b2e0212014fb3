#pragma once

#include "FolderMirror.h"

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

/// Where the mirror keeps its files below the store's root. Paths of collections.
struct MirrorFolders {
    QString container; ///< for example "com.example.program/"

    [[nodiscard]] QString zone() const;
    [[nodiscard]] QString epoch(const Epoch& epoch) const;
    [[nodiscard]] QString keyValues() const;
};

/// Who mirrors what where.
struct MirrorSetup {
    MirrorFolders folders;
    QString account; ///< which server and which user: the carriers belong to it
    QByteArray readme; ///< for people who find the folder
    WriterId writer {}; ///< drawn at each start of the program
    CompactionRule compaction = {};
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
    struct Zone;
    /// What changes rarely is looked at at every tenth poll, and where there is a reason.
    static constexpr int PollsPerZoneListing = 10;
    enum class Course : quint8 { Go, Wait, Stop };

    Outcome<Course> mirror();
    Outcome<> checkAccount();
    void adoptAccount(MirrorMemory& memory);
    void correctClock();
    Outcome<> syncKeyValues();
    Outcome<> syncKeyValueFolder(const QString& folder);
    Outcome<> makeKeyValueFolder(const FileError& missing);
    Outcome<Course> syncZone();
    Outcome<Course> reviewZone();
    Outcome<Zone> listZone();
    Outcome<Course> decide(const Zone& zone);
    Outcome<Course> join(const Zone& zone);
    Outcome<Course> stop();
    Outcome<Course> miss();
    Outcome<Course> createEpoch();
    Outcome<Course> syncEpoch(const Epoch& epoch);
    Outcome<QList<FileEntry>> list(const QString& folder);
    Outcome<> readOthers();
    Outcome<> finishDeletion();
    Outcome<> journalEpochs(const Zone& zone);
    Outcome<> closeEpochs(const Zone& zone);
    Outcome<MirrorMemory> memory();
    template <class Change> Outcome<> remember(Change change);
    SyncReport report(const Outcome<Course>& outcome);
    double fraction();

    MirrorWorld m_world;
    MirrorSetup m_setup;
    FolderMirror<Record> m_records;
    FolderMirror<KeyValue> m_keyValues;
    QList<Epoch> m_others; // open, too, and only read
    int m_pollsSinceZone = 0;
    int m_pollsSinceKeyValues = PollsPerZoneListing;
    bool m_isZoneKnown = false; // in this sync
    bool m_isZoneDue = true;
    int m_failures = 0;
    std::optional<FileError::Kind> m_lastFailure;
};

} // namespace mirror
