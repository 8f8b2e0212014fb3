#include "NSPersistentStoreCoordinator.h"

#include "sqlite/SqliteStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <sys/stat.h>

namespace {

/// A folder that is made here is for the user alone; one that exists belongs to someone else.
bool ensureFolder(const QString& folder)
{
    if (QFileInfo::exists(folder))
        return true;
    return QDir().mkpath(QFileInfo(folder).absolutePath())
        && (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0 || errno == EEXIST);
}

const QString& keyOf(PersistentHistoryChangeKind kind)
{
    switch (kind) {
    case PersistentHistoryChangeKind::Insert:
        return NSInsertedObjectsKey;
    case PersistentHistoryChangeKind::Update:
        return NSUpdatedObjectsKey;
    case PersistentHistoryChangeKind::Delete:
        break;
    }
    return NSDeletedObjectsKey;
}

} // namespace

NSPersistentStoreCoordinator::NSPersistentStoreCoordinator(
    std::shared_ptr<const NSManagedObjectModel> model)
    : m_model(std::move(model))
{
}

NSPersistentStoreCoordinator::~NSPersistentStoreCoordinator() = default;

Result<void> NSPersistentStoreCoordinator::addPersistentStore(
    const NSPersistentStoreDescription& description, History history)
{
    const QString path = description.url().toLocalFile();
    if (m_store || path.isEmpty() || !ensureFolder(QFileInfo(path).absolutePath()))
        return StoreError { StoreError::Code::CannotOpen,
            { QT_TRANSLATE_NOOP("StoreError", "The store's folder cannot be used.") },
            { { QStringLiteral("path"), path } } };
    StoreSettings settings;
    settings.path = path;
    if (description.isOn(NSMigratePersistentStoresAutomaticallyOption)
        && description.isOn(NSInferMappingModelAutomaticallyOption))
        settings.migration = Migration::AddAttributes;
    settings.keepsHistory
        = history == History::Required || description.isOn(NSPersistentHistoryTrackingKey);
    auto opened = SqliteStore::open(settings, *m_model);
    if (!opened)
        return opened.error();
    const Result<qint64> last = (*opened)->lastTransaction();
    if (!last)
        return last.error();
    m_store = std::move(*opened);
    m_lastSeenTransaction = *last;
    m_notifiesOfRemoteChanges
        = description.isOn(NSPersistentStoreRemoteChangeNotificationOptionKey);
    return {};
}

Result<SqliteStore*> NSPersistentStoreCoordinator::loadedStore() const
{
    if (!m_store)
        return StoreError { StoreError::Code::NoStore,
            { QT_TRANSLATE_NOOP("StoreError", "The container has not loaded its store.") }, {} };
    return m_store.get();
}

void NSPersistentStoreCoordinator::didSave(
    const NSManagedObjectContext& saver, const NSObjectIDChanges& changes)
{
    mergeAutomatically(&saver, changes);
}

void NSPersistentStoreCoordinator::mergeAutomatically(
    const NSManagedObjectContext* except, const NSObjectIDChanges& changes)
{
    std::vector<NSManagedObjectContext*> into;
    std::copy_if(
        m_contexts.begin(), m_contexts.end(), std::back_inserter(into), [&](auto* context) {
            return context != except && context->automaticallyMergesChangesFromParent();
        });
    NSManagedObjectContext::mergeChanges(changes, into);
}

Result<bool> NSPersistentStoreCoordinator::pollRemoteChanges()
{
    bool isAny = false;
    while (true) {
        const auto merged = mergeRemoteChanges(std::numeric_limits<std::size_t>::max());
        if (!merged)
            return merged.error();
        isAny = isAny || *merged != RemoteChanges::None;
        if (*merged != RemoteChanges::MoreToMerge)
            return isAny;
    }
}

auto NSPersistentStoreCoordinator::mergeRemoteChanges(std::size_t most) -> Result<RemoteChanges>
{
    const Result<SqliteStore*> store = loadedStore();
    if (!store)
        return store.error();
    if (m_unmerged.empty()) {
        const Result<bool> isChanged = (*store)->wasChangedElsewhere();
        if (!isChanged)
            return isChanged.error();
        if (!*isChanged && m_isHistoryRead)
            return RemoteChanges::None;
        if (!(*store)->keepsHistory())
            return refreshEverything();
        if (const Result<void> read = readChangesOfOthers(most); !read)
            return read.error();
    }
    const NSObjectIDChanges changes = takeUnmerged(most);
    const bool isMore = !m_isHistoryRead || !m_unmerged.empty();
    if (!changes.isEmpty()) {
        mergeAutomatically(nullptr, changes);
        if (m_notifiesOfRemoteChanges)
            Q_EMIT remoteChange(changes);
    }
    if (isMore)
        return RemoteChanges::MoreToMerge;
    return changes.isEmpty() ? RemoteChanges::None : RemoteChanges::Merged;
}

/// Without a history nobody knows what was changed.
NSPersistentStoreCoordinator::RemoteChanges NSPersistentStoreCoordinator::refreshEverything()
{
    for (NSManagedObjectContext* context : std::vector(m_contexts)) {
        if (context->automaticallyMergesChangesFromParent())
            context->refreshAllObjects();
    }
    if (m_notifiesOfRemoteChanges)
        Q_EMIT remoteChange({});
    return RemoteChanges::Merged;
}

Result<void> NSPersistentStoreCoordinator::readChangesOfOthers(std::size_t most)
{
    const auto transactions = m_store->historyAfter(m_lastSeenTransaction, most);
    if (!transactions)
        return transactions.error();
    std::size_t count = 0;
    const std::vector<qint64>& own = m_store->ownTransactions();
    QSet<NSManagedObjectID> deleted;
    for (const PersistentHistoryTransaction& transaction : *transactions) {
        m_lastSeenTransaction = transaction.number;
        const bool isOwn = std::find(own.begin(), own.end(), transaction.number) != own.end();
        count += transaction.changes.size();
        for (const PersistentHistoryChange& change : transaction.changes) {
            if (change.kind == PersistentHistoryChangeKind::Delete)
                deleted.insert(change.id);
            if (!isOwn)
                m_unmerged.push_back(change);
        }
    }
    m_isHistoryRead = count < most;
    m_store->forgetOwnTransactions(m_lastSeenTransaction);
    // What came and went between two looks never was, whoever deleted it.
    std::erase_if(m_unmerged, [&](const PersistentHistoryChange& change) {
        return change.kind != PersistentHistoryChangeKind::Delete && deleted.contains(change.id);
    });
    return {};
}

NSObjectIDChanges NSPersistentStoreCoordinator::takeUnmerged(std::size_t most)
{
    NSObjectIDChanges changes;
    for (std::size_t i = 0; i < most && !m_unmerged.empty(); ++i) {
        changes[keyOf(m_unmerged.front().kind)].push_back(m_unmerged.front().id);
        m_unmerged.pop_front();
    }
    return changes;
}

Result<std::vector<PersistentHistoryTransaction>> NSPersistentStoreCoordinator::persistentHistory(
    qint64 after) const
{
    const Result<SqliteStore*> store = loadedStore();
    if (!store)
        return store.error();
    return (*store)->historyAfter(after);
}

Result<void> NSPersistentStoreCoordinator::prunePersistentHistory(qint64 upTo)
{
    const Result<SqliteStore*> store = loadedStore();
    if (!store)
        return store.error();
    return (*store)->pruneHistory(upTo);
}

Result<QUuid> NSPersistentStoreCoordinator::identifierOf(const NSManagedObjectID& id) const
{
    const Result<SqliteStore*> store = loadedStore();
    if (!store)
        return store.error();
    return (*store)->identifierOf(id);
}
