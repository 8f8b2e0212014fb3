#pragma once

#include "NSBatchDeleteRequest.h"
#include "NSManagedObject.h"
#include "NSMergePolicy.h"
#include "ObjectChanges.h"
#include "StoreError.h"

#include <QObject>

#include <deque>
#include <functional>
#include <unordered_map>

class NSPersistentStoreCoordinator;
class StoreReader;
struct SaveOutcome;
struct SaveRequest;

/// A working copy of the store: makes one object per record, tracks what is inserted, changed and
/// deleted, and saves it in one transaction. A save that returned is on the disk.
///
/// Fetches and live fetches see unsaved changes. A context, its objects and its container belong
/// to one thread, the one with the event loop that runs what is given to perform().
class NSManagedObjectContext : public QObject {
    Q_OBJECT

public:
    using Object = std::shared_ptr<NSManagedObject>;

    /// The coordinator must outlive the context.
    explicit NSManagedObjectContext(NSPersistentStoreCoordinator& coordinator);
    ~NSManagedObjectContext() override;

    /// A new record with the defaults. The entity must be one of the model.
    Object insertNewObject(const QString& entityName);
    /// Deletes at the next save; fetches leave the object out at once.
    void deleteObject(NSManagedObject& object);

    /// The one object of an identity; a fault where it is not yet known. Never null.
    [[nodiscard]] Object objectWithID(const NSManagedObjectID& id);
    /// The same, read from the store at once; fails with ObjectMissing where there is no record,
    /// and with the store's error where it cannot be read.
    Result<Object> existingObject(const NSManagedObjectID& id);
    /// Reads the values of those that are faults, in few queries. One without a record stays one.
    Result<void> fulfilFaults(const std::vector<Object>& objects);
    Result<std::vector<Object>> fetch(const NSFetchRequest& request);
    Result<std::vector<NSManagedObjectID>> fetchIdentities(const NSFetchRequest& request);
    Result<qint64> count(const NSFetchRequest& request);
    Result<NSBatchDeleteResult> execute(const NSBatchDeleteRequest& request);

    [[nodiscard]] bool hasChanges() const { return m_pendingCount > 0; }
    /// On failure everything unsaved stays in the context as it was. A store file that was deleted,
    /// moved or replaced since it was opened is a failure: CannotOpen.
    Result<void> save();
    /// Gives up everything unsaved; objects that were changed are read afresh.
    void rollback();
    /// Forgets every object; those still held become Gone.
    void reset();

    enum class Refresh { DiscardChanges, MergeChanges };
    /// Reads the object afresh. With MergeChanges its unsaved values are kept over the store's,
    /// unless the record was deleted there: then the object leaves the context.
    void refresh(NSManagedObject& object, Refresh mode);
    /// Refreshes every object, with MergeChanges.
    void refreshAllObjects();

    /// Runs the work later, from the event loop of the context's thread. Not run any more if the
    /// context goes first.
    void perform(std::function<void()> work);

    [[nodiscard]] NSMergePolicy mergePolicy() const { return m_mergePolicy; }
    void setMergePolicy(NSMergePolicy policy) { m_mergePolicy = policy; }
    /// Whether what other contexts of the container save, and what its coordinator finds of other
    /// processes' saves, is merged into this context without being asked. False at first.
    [[nodiscard]] bool automaticallyMergesChangesFromParent() const { return m_mergesFromParent; }
    void setAutomaticallyMergesChangesFromParent(bool merges) { m_mergesFromParent = merges; }
    /// Recorded in the persistent history with every save.
    void setTransactionAuthor(const QString& author) { m_author = author; }

    enum class QueryGeneration { Unpinned, Current };
    /// With Current, reads see the store as it is now, whatever others save, until this context
    /// saves, merges or refreshes all: then it moves on to the newest state. Until then the log
    /// beside the file keeps all that others save. Fails with GenerationUnavailable while no store
    /// is loaded.
    Result<void> setQueryGenerationFrom(QueryGeneration generation);

    /// Tells the contexts what a save elsewhere changed: deleted objects leave them at once,
    /// changed ones are read afresh, keeping unsaved values.
    static void mergeChanges(const NSObjectIDChanges& fromRemoteContextSave,
        const std::vector<NSManagedObjectContext*>& into);

    /// Announces what changed since the last time. Happens by itself before a fetch and a save, and
    /// in the next turn of the event loop.
    Q_INVOKABLE void processPendingChanges();

    [[nodiscard]] NSPersistentStoreCoordinator& persistentStoreCoordinator() const
    {
        return m_coordinator;
    }
    /// The object of an identity if the context has one, else null. Never reads.
    [[nodiscard]] NSManagedObject* registeredObject(const NSManagedObjectID& id) const;
    [[nodiscard]] bool isPinned() const { return m_pinned != nullptr; }

Q_SIGNALS:
    /// Something in the context's view of the store changed, saved or not.
    void objectsDidChange(const ObjectChanges& changes);
    /// A save gave these records their permanent identities.
    void identitiesBecamePermanent(const PermanentIdentities& identities);

private:
    friend class NSManagedObject;
    friend class NSPersistentStoreCoordinator;

    using Registry = QHash<qint64, NSManagedObject*>;

    StoreReader* reader() const;
    Result<void> advanceGeneration();

    Object registerObject(const NSManagedObjectID& id);
    Registry& registryOf(const NSEntityDescription* entity) { return m_registries[entity]; }
    Q_INVOKABLE void runWork();
    void forget(const NSManagedObject& object);
    void noteChanged(NSManagedObject& object);
    void touch(NSManagedObject& object);
    void fireFault(NSManagedObject& object);
    void dropClaim(NSManagedObject& object);
    void expel(NSManagedObject& object);
    void renameAnnounced(const PermanentIdentities& identities);
    bool hasPendingOf(const NSEntityDescription* entity) const;
    void compactChanged();

    Result<std::vector<Object>> fetchClean(const NSFetchRequest& request);
    Result<std::vector<Object>> fetchFaults(const NSFetchRequest& request);
    Result<std::vector<Object>> fetchWithPending(const NSFetchRequest& request);

    Result<void> validate() const;
    SaveRequest saveRequest();
    NSObjectIDChanges adopt(const SaveRequest& request, const SaveOutcome& outcome);
    PermanentIdentities adoptInserted(
        const SaveRequest& request, const SaveOutcome& outcome, NSObjectIDChanges& changes);
    void adoptUpdated(const SaveRequest& request, const SaveOutcome& outcome,
        NSObjectIDChanges& changes, ObjectChanges& merged);

    void mergeDeleted(const NSObjectIDChanges& changes, ObjectChanges& announced);
    void mergeUpdated(const NSObjectIDChanges& changes, ObjectChanges& announced);
    void mergeStoreValues(NSManagedObject& object);
    void refreshWithoutNotice(NSManagedObject& object);

    NSPersistentStoreCoordinator& m_coordinator;
    std::unordered_map<const NSEntityDescription*, Registry> m_registries;
    std::vector<Object> m_changed; // in the order of the first change; may hold settled ones
    std::vector<Object> m_touched; // to be announced
    std::vector<ObjectChanges*> m_announcing; // on their way to the observers, innermost last
    std::deque<std::function<void()>> m_work; // waits for its turn of the event loop
    std::size_t m_pendingCount = 0;
    bool m_isAnnouncementQueued = false;
    NSMergePolicy m_mergePolicy = NSMergePolicy::NSErrorMergePolicy;
    bool m_mergesFromParent = false;
    QString m_author;
    std::unique_ptr<StoreReader> m_pinned;
};
