// Writing: saves and batch deletions.

#include "NSManagedObjectContext.h"
#include "NSPersistentStoreCoordinator.h"
#include "sqlite/SqliteStore.h"

#include <algorithm>
#include <cmath>

namespace {

/// What is said of a record, the first place, that has the value in the attribute, the second.
const char* faultIn(const NSAttributeDescription& attribute, const AttributeValue& value)
{
    if (value.index() == 0 && !attribute.isOptional)
        return QT_TRANSLATE_NOOP("StoreError", "%1: %2 must have a value.");
    const auto* number = std::get_if<double>(&value);
    if (number != nullptr && std::isnan(*number)) // SQLite would store it as absent
        return QT_TRANSLATE_NOOP("StoreError", "%1: %2 is not a number.");
    return nullptr;
}

RowChange rowChangeOf(const NSManagedObject& object, qint64 version, const AttributeValues* values)
{
    return { &object.entity(), object.objectID().number(), version, values,
        object.changedAttributes() };
}

} // namespace

Result<void> NSManagedObjectContext::save()
{
    processPendingChanges();
    if (!hasChanges())
        return {};
    const Result<SqliteStore*> store = m_coordinator.loadedStore();
    if (!store)
        return store.error();
    compactChanged();
    if (Result<void> valid = validate(); !valid)
        return valid;
    const SaveRequest request = saveRequest();
    const Result<SaveOutcome> outcome = (*store)->save(request);
    if (!outcome)
        return outcome.error();
    const NSObjectIDChanges changes = adopt(request, *outcome);
    m_coordinator.didSave(*this, changes);
    return {};
}

Result<void> NSManagedObjectContext::validate() const
{
    for (const Object& object : m_changed) {
        if (object->isDeleted())
            continue;
        for (int i = 0; i < object->entity().attributeCount(); ++i) {
            const auto& attribute = object->entity().attributes()[static_cast<std::size_t>(i)];
            if (const char* const fault = faultIn(attribute, object->attribute(i)))
                return StoreError { StoreError::Code::Validation,
                    { fault, { object->objectID().toString(), attribute.name } },
                    { { QStringLiteral("attribute"), attribute.name } } };
        }
    }
    return {};
}

SaveRequest NSManagedObjectContext::saveRequest()
{
    using State = NSManagedObject::State;
    SaveRequest request;
    request.policy = m_mergePolicy;
    request.author = m_author;
    for (const Object& object : m_changed) {
        const RowChange change = rowChangeOf(*object, object->m_version, &object->m_values);
        if (object->m_state == State::Inserted)
            request.inserts.push_back(change);
        else if (object->m_state == State::Deleted)
            request.deletes.push_back(change);
        else if (change.changed != 0) // changed and changed back is nothing to write
            request.updates.push_back(change);
    }
    return request;
}

/// Brings the objects to the state that the store now has.
NSObjectIDChanges NSManagedObjectContext::adopt(
    const SaveRequest& request, const SaveOutcome& outcome)
{
    NSObjectIDChanges changes;
    ObjectChanges merged;
    (void)advanceGeneration(); // a pinned reader that cannot move on still reads the older state
    const PermanentIdentities identities = adoptInserted(request, outcome, changes);
    adoptUpdated(request, outcome, changes, merged);
    for (const RowChange& row : request.deletes) {
        const NSManagedObjectID id(row.entity, row.id);
        expel(*registeredObject(id));
        changes[NSDeletedObjectsKey].push_back(id);
    }
    for (const Object& object : std::exchange(m_changed, {})) {
        object->m_isListed = false;
        if (object->m_state == NSManagedObject::State::Updated)
            dropClaim(*object); // changed and changed back
    }
    renameAnnounced(identities);
    // Observers may save again, so they only hear of it when all is as the store has it.
    if (!identities.empty())
        Q_EMIT identitiesBecamePermanent(identities);
    if (!merged.isEmpty())
        Q_EMIT objectsDidChange(merged);
    return changes;
}

PermanentIdentities NSManagedObjectContext::adoptInserted(
    const SaveRequest& request, const SaveOutcome& outcome, NSObjectIDChanges& changes)
{
    PermanentIdentities identities;
    identities.reserve(request.inserts.size());
    std::vector<NSManagedObjectID> inserted;
    inserted.reserve(request.inserts.size());
    for (const Object& object : m_changed) { // in the order of the request
        if (object->m_state != NSManagedObject::State::Inserted)
            continue;
        const NSManagedObjectID before = object->m_id;
        dropClaim(*object);
        object->m_id = { before.entity(), outcome.inserted[inserted.size()] };
        object->m_version = 1;
        Registry& registry = registryOf(before.entity());
        registry.remove(before.number());
        registry.insert(object->m_id.number(), object.get());
        identities.emplace_back(before, object->m_id);
        inserted.push_back(object->m_id);
    }
    if (!inserted.empty())
        changes[NSInsertedObjectsKey] = std::move(inserted);
    return identities;
}

void NSManagedObjectContext::adoptUpdated(const SaveRequest& request, const SaveOutcome& outcome,
    NSObjectIDChanges& changes, ObjectChanges& merged)
{
    using Kind = SaveOutcome::Updated::Kind;
    for (std::size_t i = 0; i < request.updates.size(); ++i) {
        const NSManagedObjectID id(request.updates[i].entity, request.updates[i].id);
        const SaveOutcome::Updated& result = outcome.updated[i];
        NSManagedObject& object = *registeredObject(id);
        if (result.kind == Kind::Gone) {
            expel(object);
            object.m_isAnnounced = false;
            merged.deleted.push_back(id);
            continue;
        }
        dropClaim(object);
        object.m_version = result.version;
        changes[NSUpdatedObjectsKey].push_back(id);
        if (result.kind == Kind::Merged) {
            object.fulfil(result.values, result.version);
            merged.updated.push_back({ id });
        }
    }
}

Result<NSBatchDeleteResult> NSManagedObjectContext::execute(const NSBatchDeleteRequest& request)
{
    const Result<SqliteStore*> store = m_coordinator.loadedStore();
    if (!store)
        return store.error();
    const auto deleted = (*store)->batchDelete(request.fetchRequest, m_author);
    if (!deleted)
        return deleted.error();
    NSBatchDeleteResult result { request.resultType, true };
    if (request.resultType == NSBatchDeleteRequestResultType::resultTypeCount) {
        result.result = static_cast<qint64>(deleted->size());
    } else if (request.resultType == NSBatchDeleteRequestResultType::resultTypeObjectIDs) {
        const NSEntityDescription* entity
            = m_coordinator.managedObjectModel().entity(request.fetchRequest.entityName);
        std::vector<NSManagedObjectID> ids;
        ids.reserve(deleted->size());
        for (const qint64 number : *deleted)
            ids.emplace_back(entity, number);
        result.result = std::move(ids);
    }
    return result;
}
