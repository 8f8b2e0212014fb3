// Taking in what was changed elsewhere.

#include "NSManagedObjectContext.h"
#include "NSPersistentStoreCoordinator.h"
#include "sqlite/SqliteStore.h"

void NSManagedObjectContext::mergeChanges(const NSObjectIDChanges& fromRemoteContextSave,
    const std::vector<NSManagedObjectContext*>& into)
{
    for (NSManagedObjectContext* context : into) {
        context->processPendingChanges();
        (void)context->advanceGeneration(); // the older state is still a state
        ObjectChanges announced;
        context->mergeDeleted(fromRemoteContextSave, announced);
        context->mergeUpdated(fromRemoteContextSave, announced);
        announced.inserted = fromRemoteContextSave.value(NSInsertedObjectsKey);
        if (!announced.isEmpty())
            Q_EMIT context->objectsDidChange(announced);
    }
}

void NSManagedObjectContext::mergeDeleted(
    const NSObjectIDChanges& changes, ObjectChanges& announced)
{
    announced.deleted = changes.value(NSDeletedObjectsKey);
    for (const NSManagedObjectID& id : announced.deleted) {
        NSManagedObject* object = registeredObject(id);
        if (object == nullptr)
            continue;
        const Object held = object->shared_from_this();
        expel(*object);
        object->m_isAnnounced = false;
    }
    compactChanged();
}

void NSManagedObjectContext::mergeUpdated(
    const NSObjectIDChanges& changes, ObjectChanges& announced)
{
    for (const NSManagedObjectID& id : changes.value(NSUpdatedObjectsKey)) {
        if (NSManagedObject* object = registeredObject(id))
            refreshWithoutNotice(*object);
        announced.updated.push_back({ id });
    }
}

void NSManagedObjectContext::refreshWithoutNotice(NSManagedObject& object)
{
    using State = NSManagedObject::State;
    if (object.m_isFault || object.m_state == State::Inserted)
        return;
    if (object.m_state == State::Clean)
        object.turnIntoFault();
    else
        mergeStoreValues(object);
}

/// Keeps what was changed in memory, takes the rest from the store, and knows the record's present
/// version from now on: the next save is no conflict.
void NSManagedObjectContext::mergeStoreValues(NSManagedObject& object)
{
    StoreReader* store = reader();
    if (store == nullptr)
        return;
    auto row = store->row(object.m_id.entity(), object.m_id.number());
    if (!row)
        return;
    if (!*row) { // deleted elsewhere: there is nothing left to keep a change of
        expel(object);
        return compactChanged();
    }
    const quint64 changed = object.changedAttributes();
    for (std::size_t i = 0; i < object.m_values.size(); ++i) {
        if ((changed >> i & 1) == 0)
            object.m_values[i] = (*row)->values[i];
    }
    object.m_version = (*row)->version;
    if (object.m_committed)
        *object.m_committed = std::move((*row)->values);
}

void NSManagedObjectContext::refresh(NSManagedObject& object, Refresh mode)
{
    using State = NSManagedObject::State;
    if (object.m_context != this || object.m_state == State::Inserted)
        return;
    const Object held = object.shared_from_this();
    if (mode == Refresh::DiscardChanges) {
        dropClaim(object);
        object.turnIntoFault();
    } else {
        refreshWithoutNotice(object);
    }
    object.m_unannounced = ~quint64(0);
    touch(object);
    processPendingChanges();
}

void NSManagedObjectContext::refreshAllObjects()
{
    processPendingChanges();
    (void)advanceGeneration();
    for (auto& [entity, registry] : m_registries) {
        const Registry objects = registry; // those without a record any more leave it
        for (NSManagedObject* object : objects)
            refreshWithoutNotice(*object);
    }
    ObjectChanges changes;
    changes.isEverything = true;
    Q_EMIT objectsDidChange(changes);
}
