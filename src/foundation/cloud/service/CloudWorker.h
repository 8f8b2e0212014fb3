#pragma once

#include "AccountFileStore.h"
#include "FileLock.h"
#include "MirrorSession.h"
#include "SharedValues.h"
#include "StoreFileWatch.h"
#include "SyncTriggers.h"

#include "CKContainer.h"

#include <future>

namespace mirror {

/// Does what CloudService promises, on a thread of its own.
///
/// A sync waits for the server within this thread's event loop; what is asked for meanwhile is done
/// afterwards.
class CloudWorker : public QObject {
    Q_OBJECT

public:
    using StatusPromise = std::promise<CKContainer::AccountAnswer>;
    using DeletionPromise = std::promise<std::optional<CKError>>;

    explicit CloudWorker(std::shared_ptr<Cancellation> cancellation);
    ~CloudWorker() override;

    /// Begins, once. Until then the questions wait.
    void start(const CloudSetup& setup, bool isMirrored);
    // The user's word; the later one counts.
    void switchOn();
    /// Stops, and has what is in the cloud deleted.
    void switchOff();
    void askStatus(StatusPromise answer);
    /// As switchOff(), unless the user switched mirroring on meanwhile. Answered after the first
    /// attempt; where that fails, it is tried again by itself.
    void deleteZone(const QString& container, const CKRecordZoneID& zone, DeletionPromise answer);
    /// All that are pending.
    void setChanges(const QList<UbiquitousChange>& changes);
    void setActive(bool isActive);
    void noteNetwork();

Q_SIGNALS:
    /// There is one that can be used, again or for the first time.
    void accountFound();
    void changesKept(const QList<UbiquitousChange>& changes);
    void valuesKnown(const QList<SharedValue>& values);

private:
    void defer(std::function<void()> work);
    void runDeferred();
    void onAccountsChanged();
    void answerStatus();
    void sync();
    bool prepare();
    bool openSession();
    void settle();
    bool decide();
    bool decideAtStart();
    [[nodiscard]] bool wasSwitchedOffHere() const;
    SyncReport syncOnce();
    void noteCertificate(const QByteArray& known);
    [[nodiscard]] bool isMoreToDo(const SyncReport& report);
    void exchangeValues();
    void lookForEdits();
    void answerDeletions(const SyncReport& report);
    void failDeletions(const CKError& error);
    void tell(const SyncReport& report);
    void tellOnce(const QString& sentence);

    std::shared_ptr<Cancellation> m_cancellation;
    CloudSetup m_setup;
    bool m_isStarted = false;
    bool m_isMirrored = false; // a store was, at the start of this process
    bool m_isDecided = false; // whether this start means "on" or "off"
    std::optional<MirrorPhase> m_phaseAtStart; // as first seen
    enum class Word { None, On, Off };
    Word m_word = Word::None; // the user's last one
    bool m_isWordNoted = true;
    bool m_isHolder = false; // of the lock, at the last sync
    bool m_isSyncing = false;
    bool m_isDueAgain = false;
    bool m_isUsable = false; // an account, as far as is known
    std::vector<std::function<void()>> m_deferred;
    std::unique_ptr<CloudAccounts> m_accounts;
    std::unique_ptr<AccountFileStore> m_files;
    std::unique_ptr<MirrorSession> m_session;
    std::unique_ptr<FileLock> m_lock;
    std::unique_ptr<SyncTriggers> m_triggers;
    std::unique_ptr<StoreFileWatch> m_storeFile;
    MirrorStanding m_standing; // after the last sync
    QList<UbiquitousChange> m_changes;
    std::vector<StatusPromise> m_questions;
    std::vector<DeletionPromise> m_deletions;
    QString m_told;
};

} // namespace mirror
