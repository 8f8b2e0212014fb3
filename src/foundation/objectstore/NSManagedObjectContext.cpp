#include "NSManagedObjectContext.h"

#include "Diagnostics.h"
#include "NSPersistentStoreCoordinator.h"
#include "sqlite/SqliteStore.h"

#include <algorithm>
#include <atomic>

namespace {

qint64 nextTemporaryNumber()
{
    // Of every context in every thread, so that no two temporary identities are equal.
    static std::atomic<qint64> last = 0;
    return --last;
}

} // namespace

NSManagedObjectContext::NSManagedObjectContext(NSPersistentStoreCoordinator& coordinator)
    : m_coordinator(coordinator)
{
    m_coordinator.m_contexts.push_back(this);
}

NSManagedObjectContext::~NSManagedObjectContext()
{
    std::erase(m_coordinator.m_contexts, this);
    for (auto& [entity, registry] : m_registries) {
        for (NSManagedObject* object : std::as_const(registry))
            object->m_context = nullptr;
    }
}

StoreReader* NSManagedObjectContext::reader() const
{
    if (m_pinned)
        return m_pinned.get();
    return m_coordinator.store() != nullptr ? &m_coordinator.store()->reader() : nullptr;
}

// Objects of the context

NSManagedObject* NSManagedObjectContext::registeredObject(const NSManagedObjectID& id) const
{
    const auto registry = m_registries.find(id.entity());
    return registry == m_registries.end() ? nullptr : registry->second.value(id.number());
}

NSManagedObjectContext::Object NSManagedObjectContext::registerObject(const NSManagedObjectID& id)
{
    Object object = id.entity()->makeObject({ this, id });
    registryOf(id.entity()).insert(id.number(), object.get());
    return object;
}

NSManagedObjectContext::Object NSManagedObjectContext::objectWithID(const NSManagedObjectID& id)
{
    if (NSManagedObject* known = registeredObject(id))
        return known->shared_from_this();
    return registerObject(id);
}

void NSManagedObjectContext::forget(const NSManagedObject& object)
{
    registryOf(object.m_id.entity()).remove(object.m_id.number());
}

/// Takes an object out of the context for good. Its holders may go on reading it.
void NSManagedObjectContext::expel(NSManagedObject& object)
{
    dropClaim(object);
    forget(object);
    object.m_context = nullptr;
    object.m_state = NSManagedObject::State::Gone;
}

/// The object has nothing to save any more.
void NSManagedObjectContext::dropClaim(NSManagedObject& object)
{
    if (object.m_state != NSManagedObject::State::Clean
        && object.m_state != NSManagedObject::State::Gone)
        --m_pendingCount;
    object.m_state = NSManagedObject::State::Clean;
    object.m_committed.reset();
}

// Unsaved changes

NSManagedObjectContext::Object NSManagedObjectContext::insertNewObject(const QString& entityName)
{
    const NSEntityDescription* entity = m_coordinator.managedObjectModel().entity(entityName);
    if (entity == nullptr)
        fatalError("The model has no entity " + entityName.toStdString());
    Object object = registerObject({ entity, nextTemporaryNumber() });
    object->fulfil(entity->defaultValues(), 0);
    object->m_state = NSManagedObject::State::Inserted;
    object->m_isAnnounced = false;
    noteChanged(*object);
    touch(*object);
    return object;
}

void NSManagedObjectContext::deleteObject(NSManagedObject& object)
{
    using State = NSManagedObject::State;
    if (object.isDeleted() || object.m_context != this)
        return;
    const Object held = object.shared_from_this();
    touch(object);
    if (object.m_state == State::Inserted)
        return expel(object);
    if (object.m_isFault)
        fireFault(object); // the save compares the version
    const bool wasClean = object.m_state == State::Clean;
    object.m_state = State::Deleted;
    if (wasClean)
        noteChanged(object);
}

void NSManagedObjectContext::noteChanged(NSManagedObject& object)
{
    ++m_pendingCount;
    if (!std::exchange(object.m_isListed, true))
        m_changed.push_back(object.shared_from_this());
}

void NSManagedObjectContext::touch(NSManagedObject& object)
{
    if (std::exchange(object.m_isTouched, true))
        return;
    m_touched.push_back(object.shared_from_this());
    if (!std::exchange(m_isAnnouncementQueued, true))
        QMetaObject::invokeMethod(this, "processPendingChanges", Qt::QueuedConnection);
}

void NSManagedObjectContext::processPendingChanges()
{
    m_isAnnouncementQueued = false;
    ObjectChanges changes;
    for (const Object& object : std::exchange(m_touched, {})) {
        object->m_isTouched = false;
        const quint64 attributes = std::exchange(object->m_unannounced, 0);
        const bool wasPresent = std::exchange(object->m_isAnnounced, !object->isDeleted());
        if (!wasPresent && object->m_isAnnounced)
            changes.inserted.push_back(object->m_id);
        else if (wasPresent && !object->m_isAnnounced)
            changes.deleted.push_back(object->m_id);
        else if (wasPresent && attributes != 0)
            changes.updated.push_back({ object->m_id, attributes });
    }
    if (changes.isEmpty())
        return;
    m_announcing.push_back(&changes);
    Q_EMIT objectsDidChange(changes);
    m_announcing.pop_back();
}

/// An observer may save what is just being announced; those that hear of it later must not be told
/// of identities that are no more.
void NSManagedObjectContext::renameAnnounced(const PermanentIdentities& identities)
{
    if (m_announcing.empty())
        return;
    QHash<NSManagedObjectID, NSManagedObjectID> permanent;
    for (const auto& [before, after] : identities)
        permanent.insert(before, after);
    for (ObjectChanges* changes : m_announcing) {
        for (NSManagedObjectID& id : changes->inserted)
            id = permanent.value(id, id);
        for (ObjectChanges::Update& update : changes->updated)
            update.id = permanent.value(update.id, update.id);
    }
}

bool NSManagedObjectContext::hasPendingOf(const NSEntityDescription* entity) const
{
    return m_pendingCount > 0
        && std::any_of(m_changed.begin(), m_changed.end(), [&](const Object& object) {
               return &object->entity() == entity
                   && object->m_state != NSManagedObject::State::Clean
                   && object->m_state != NSManagedObject::State::Gone;
           });
}

/// Drops from the list of changed objects those that have nothing to save any more.
void NSManagedObjectContext::compactChanged()
{
    std::erase_if(m_changed, [](const Object& object) {
        const bool isSettled = object->m_state == NSManagedObject::State::Clean
            || object->m_state == NSManagedObject::State::Gone;
        object->m_isListed = !isSettled;
        return isSettled;
    });
}

void NSManagedObjectContext::rollback()
{
    using State = NSManagedObject::State;
    compactChanged();
    std::vector<Object> restored;
    for (const Object& object : std::exchange(m_changed, {})) {
        object->m_isListed = false;
        object->m_unannounced = ~quint64(0);
        touch(*object);
        if (object->m_state == State::Inserted) {
            expel(*object);
        } else {
            dropClaim(*object);
            object->turnIntoFault();
            restored.push_back(object);
        }
    }
    // A record that is gone must not stay in lists with values that it never had.
    if (fulfilFaults(restored)) {
        for (const Object& object : restored) {
            if (object->m_isFault)
                expel(*object);
        }
    }
    processPendingChanges();
}

void NSManagedObjectContext::reset()
{
    const std::vector<Object> held = std::exchange(m_changed, {});
    for (const Object& object : held)
        object->m_isListed = false;
    for (auto& [entity, registry] : m_registries) {
        for (NSManagedObject* object : std::exchange(registry, {})) {
            object->m_context = nullptr;
            object->m_state = NSManagedObject::State::Gone;
        }
    }
    m_touched.clear();
    m_pendingCount = 0;
    (void)advanceGeneration();
    ObjectChanges changes;
    changes.isEverything = true;
    Q_EMIT objectsDidChange(changes);
}

void NSManagedObjectContext::perform(std::function<void()> work)
{
    m_work.push_back(std::move(work));
    QMetaObject::invokeMethod(this, "runWork", Qt::QueuedConnection);
}

void NSManagedObjectContext::runWork()
{
    const std::function<void()> work = std::move(m_work.front());
    m_work.pop_front();
    work();
}
