#pragma once

#include "NSManagedObjectContext.h"
#include "NSManagedObjectModel.h"
#include "NSPersistentStoreDescription.h"
#include "PersistentHistory.h"

#include <QUuid>

#include <deque>

class SqliteStore;

/// Stands between the contexts of a container and its store file: carries saves from one context
/// to the others, and finds out what other processes saved.
class NSPersistentStoreCoordinator : public QObject {
    Q_OBJECT

public:
    explicit NSPersistentStoreCoordinator(std::shared_ptr<const NSManagedObjectModel> model);
    ~NSPersistentStoreCoordinator() override;

    enum class History { AsDescribed, Required };
    /// Opens the store file, creating it and its folder where there is none. At most once.
    Result<void> addPersistentStore(
        const NSPersistentStoreDescription& description, History history);

    [[nodiscard]] const NSManagedObjectModel& managedObjectModel() const { return *m_model; }
    /// Null until a store is added.
    [[nodiscard]] SqliteStore* store() const { return m_store.get(); }
    /// The store, or the NoStore error where there is none.
    Result<SqliteStore*> loadedStore() const;

    /// What a look at what others changed came to.
    enum class RemoteChanges { None, Merged, MoreToMerge };
    /// Looks whether another process (or another container) changed the store since the last look.
    /// If so, merges the next changes, about so many, into the contexts that merge automatically,
    /// and emits remoteChange where the store's option wishes it. Costs microseconds when there is
    /// nothing new.
    Result<RemoteChanges> mergeRemoteChanges(std::size_t most);
    /// Merges all that there is; false where there was nothing.
    Result<bool> pollRemoteChanges();

    /// The recorded transactions after one of that number, oldest first; all of them after 0.
    Result<std::vector<PersistentHistoryTransaction>> persistentHistory(qint64 after) const;
    /// Forgets the insertions and updates recorded up to a transaction; deletions are kept. Another
    /// process that did not look since (pollRemoteChanges) never hears of what was forgotten.
    Result<void> prunePersistentHistory(qint64 upTo);
    /// An identifier of a saved record that no other record in any copy of any store has, not even
    /// in two copies of one file that each go on growing. Does not depend on the record's values.
    Result<QUuid> identifierOf(const NSManagedObjectID& id) const;

Q_SIGNALS:
    /// Others changed the store. What exactly is only known where the history is kept; where it is
    /// not, every context was refreshed and the changes are empty.
    void remoteChange(const NSObjectIDChanges& changes);

private:
    friend class NSManagedObjectContext;

    void didSave(const NSManagedObjectContext& saver, const NSObjectIDChanges& changes);
    Result<void> readChangesOfOthers(std::size_t most);
    NSObjectIDChanges takeUnmerged(std::size_t most);
    RemoteChanges refreshEverything();
    void mergeAutomatically(const NSManagedObjectContext* except, const NSObjectIDChanges& changes);

    std::shared_ptr<const NSManagedObjectModel> m_model;
    std::unique_ptr<SqliteStore> m_store;
    std::vector<NSManagedObjectContext*> m_contexts;
    bool m_notifiesOfRemoteChanges = false;
    qint64 m_lastSeenTransaction = 0;
    std::deque<PersistentHistoryChange> m_unmerged; // of others, read and not yet merged
    bool m_isHistoryRead = true; // to its end
};
