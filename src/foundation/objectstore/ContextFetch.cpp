// Reading: fetches, faults, pinning.

#include "FetchOrder.h"
#include "NSManagedObjectContext.h"
#include "NSPersistentStoreCoordinator.h"
#include "sqlite/SqliteStore.h"

#include <QSet>

#include <algorithm>

/// Faults of one fetch that are read together as soon as one of them is.
struct FaultBatch {
    const NSEntityDescription* entity;
    std::vector<qint64> ids;
};

namespace {

StoreError noStore()
{
    return { StoreError::Code::NoStore,
        { QT_TRANSLATE_NOOP("StoreError", "The container has not loaded its store.") }, {} };
}

NSFetchRequest withoutBounds(NSFetchRequest request)
{
    request.fetchLimit = 0;
    request.fetchOffset = 0;
    return request;
}

std::vector<NSManagedObjectID> withinBounds(
    std::vector<NSManagedObjectID> ids, const NSFetchRequest& request)
{
    const auto size = static_cast<qint64>(ids.size());
    const qint64 first = std::clamp<qint64>(request.fetchOffset, 0, size);
    const qint64 end = request.fetchLimit > 0 ? std::min(size, first + request.fetchLimit) : size;
    return { ids.begin() + first, ids.begin() + end };
}

} // namespace

Result<std::vector<NSManagedObjectID>> NSManagedObjectContext::fetchIdentities(
    const NSFetchRequest& request)
{
    processPendingChanges();
    if (reader() == nullptr)
        return noStore();
    const NSEntityDescription* entity
        = m_coordinator.managedObjectModel().entity(request.entityName);
    const bool isPending = hasPendingOf(entity);
    const auto stored = reader()->identities(isPending ? withoutBounds(request) : request);
    if (!stored)
        return stored.error();

    std::vector<NSManagedObjectID> ids;
    ids.reserve(stored->size());
    for (const qint64 number : *stored)
        ids.emplace_back(entity, number);
    if (!isPending)
        return ids;

    // What is changed in memory takes the place that it has in memory.
    compactChanged();
    QSet<NSManagedObjectID> changed;
    for (const Object& object : m_changed)
        changed.insert(object->objectID());
    std::erase_if(ids, [&](const auto& id) { return changed.contains(id); });
    const FetchOrder order(*entity, request);
    for (const Object& object : std::vector(m_changed)) {
        if (&object->entity() != entity || object->isDeleted() || !order.matches(*object))
            continue;
        const auto place = std::upper_bound(ids.begin(), ids.end(), *object,
            [&](const NSManagedObject& inserted, const NSManagedObjectID& id) {
                return order.precedes(inserted, *objectWithID(id));
            });
        ids.insert(place, object->objectID());
    }
    return withinBounds(std::move(ids), request);
}

Result<std::vector<NSManagedObjectContext::Object>> NSManagedObjectContext::fetch(
    const NSFetchRequest& request)
{
    processPendingChanges();
    if (request.fetchBatchSize > 0)
        return fetchFaults(request);
    const NSEntityDescription* entity
        = m_coordinator.managedObjectModel().entity(request.entityName);
    return hasPendingOf(entity) ? fetchWithPending(request) : fetchClean(request);
}

Result<std::vector<NSManagedObjectContext::Object>> NSManagedObjectContext::fetchClean(
    const NSFetchRequest& request)
{
    if (reader() == nullptr)
        return noStore();
    const NSEntityDescription* entity
        = m_coordinator.managedObjectModel().entity(request.entityName);
    std::vector<Object> objects;
    const Result<void> read = reader()->rows(request, [&](StoredRow&& row) {
        objects.push_back(objectWithID({ entity, row.id }));
        if (objects.back()->m_isFault)
            objects.back()->fulfil(std::move(row.values), row.version);
    });
    if (!read)
        return read.error();
    return objects;
}

Result<std::vector<NSManagedObjectContext::Object>> NSManagedObjectContext::fetchWithPending(
    const NSFetchRequest& request)
{
    const auto ids = fetchIdentities(request);
    if (!ids)
        return ids.error();
    std::vector<Object> objects;
    for (const NSManagedObjectID& id : *ids)
        objects.push_back(objectWithID(id));
    if (const Result<void> read = fulfilFaults(objects); !read)
        return read.error();
    return objects;
}

Result<std::vector<NSManagedObjectContext::Object>> NSManagedObjectContext::fetchFaults(
    const NSFetchRequest& request)
{
    const auto ids = fetchIdentities(request);
    if (!ids)
        return ids.error();
    std::vector<Object> objects;
    std::shared_ptr<FaultBatch> batch;
    for (const NSManagedObjectID& id : *ids) {
        if (!batch || batch->ids.size() == static_cast<std::size_t>(request.fetchBatchSize))
            batch = std::make_shared<FaultBatch>(FaultBatch { id.entity(), {} });
        objects.push_back(objectWithID(id));
        if (!objects.back()->m_isFault)
            continue;
        batch->ids.push_back(id.number());
        objects.back()->m_batch = batch;
    }
    return objects;
}

Result<qint64> NSManagedObjectContext::count(const NSFetchRequest& request)
{
    processPendingChanges();
    if (reader() == nullptr)
        return noStore();
    if (!hasPendingOf(m_coordinator.managedObjectModel().entity(request.entityName)))
        return reader()->count(request);
    const auto ids = fetchIdentities(request);
    if (!ids)
        return ids.error();
    return static_cast<qint64>(ids->size());
}

Result<NSManagedObjectContext::Object> NSManagedObjectContext::existingObject(
    const NSManagedObjectID& id)
{
    Object object = objectWithID(id);
    if (object->m_isFault) {
        if (const Result<void> read = fulfilFaults({ object }); !read)
            return read.error();
    }
    if (object->m_isFault || object->isDeleted())
        return StoreError { StoreError::Code::ObjectMissing,
            { "There is no record %1.", { id.toString() } }, {} };
    return object;
}

Result<void> NSManagedObjectContext::fulfilFaults(const std::vector<Object>& objects)
{
    std::unordered_map<const NSEntityDescription*, std::vector<qint64>> wanted;
    for (const Object& object : objects) {
        if (object->m_isFault && object->m_context == this)
            wanted[&object->entity()].push_back(object->m_id.number());
    }
    if (reader() == nullptr)
        return noStore();
    for (const auto& [entity, ids] : wanted) {
        Result<void> read = reader()->rows(entity, ids, [&, of = entity](StoredRow&& row) {
            NSManagedObject* object = registeredObject({ of, row.id });
            if (object != nullptr && object->m_isFault)
                object->fulfil(std::move(row.values), row.version);
        });
        if (!read)
            return read;
    }
    return {};
}

void NSManagedObjectContext::fireFault(NSManagedObject& object)
{
    if (reader() == nullptr || object.m_id.isTemporaryID())
        return;
    if (const auto batch = std::exchange(object.m_batch, nullptr)) {
        std::vector<Object> together;
        for (const qint64 id : batch->ids) {
            if (NSManagedObject* other = registeredObject({ batch->entity, id }))
                together.push_back(other->shared_from_this());
        }
        (void)fulfilFaults(together); // where that fails, they are read one by one
    }
    if (!object.m_isFault)
        return;
    auto row = reader()->row(object.m_id.entity(), object.m_id.number());
    if (row && *row)
        object.fulfil(std::move((*row)->values), (*row)->version);
}

Result<void> NSManagedObjectContext::setQueryGenerationFrom(QueryGeneration generation)
{
    m_pinned.reset();
    if (generation == QueryGeneration::Unpinned)
        return {};
    const Result<SqliteStore*> store = m_coordinator.loadedStore();
    if (!store)
        return StoreError { StoreError::Code::GenerationUnavailable,
            { "There is no store to pin yet." }, {} };
    auto pinned = (*store)->openPinnedReader();
    if (!pinned)
        return StoreError { StoreError::Code::GenerationUnavailable, pinned.error().description,
            pinned.error().userInfo };
    m_pinned = std::move(*pinned);
    return {};
}

Result<void> NSManagedObjectContext::advanceGeneration()
{
    return m_pinned ? m_pinned->advance() : Result<void>();
}
