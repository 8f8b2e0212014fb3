#pragma once

#include "NSManagedObjectID.h"

#include <memory>

class NSManagedObjectContext;
struct FaultBatch;

/// What a context hands to the constructor of a managed object. Only contexts make objects.
struct NSManagedObjectSeed {
    NSManagedObjectContext* context;
    NSManagedObjectID id;
};

/// One record in one context: the context makes at most one object per identity, so a change is
/// seen by everyone who holds it.
///
/// An object is a fault until a value is asked for; the values are read from the store then. Where
/// they cannot be read (the record was deleted elsewhere, the file is unreadable), the object reads
/// as the entity's defaults and stays a fault.
///
/// The context holds changed objects only; whoever wants a clean one keeps it. An object that
/// outlives its context reads as it last was, or as the defaults.
class NSManagedObject : public std::enable_shared_from_this<NSManagedObject> {
public:
    enum class State {
        Clean, ///< as in the store
        Inserted, ///< not yet saved
        Updated, ///< changed since it was read
        Deleted, ///< to be deleted by the next save
        Gone, ///< no record of the context any more
    };

    explicit NSManagedObject(const NSManagedObjectSeed& seed);
    virtual ~NSManagedObject();
    NSManagedObject(const NSManagedObject&) = delete;
    NSManagedObject& operator=(const NSManagedObject&) = delete;

    [[nodiscard]] const NSManagedObjectID& objectID() const { return m_id; }
    [[nodiscard]] const NSEntityDescription& entity() const { return *m_id.entity(); }
    /// Null once the context is gone.
    [[nodiscard]] NSManagedObjectContext* managedObjectContext() const { return m_context; }
    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isFault() const { return m_isFault; }
    [[nodiscard]] bool isDeleted() const
    {
        return m_state == State::Deleted || m_state == State::Gone;
    }

    /// A value by the position of its attribute in the entity, or by name. The position or the name
    /// must exist. The reference holds until the next change of the object.
    [[nodiscard]] const AttributeValue& attribute(int index) const;
    [[nodiscard]] QVariant value(const QString& key) const;

    /// Sets a value, which must be of the attribute's type or absent. The same value again is no
    /// change; nor is anything done to an object that is gone.
    void setAttribute(int index, AttributeValue value);
    void setValue(const QVariant& value, const QString& key);

    /// The attributes that differ from the values last read or saved, as a set of bits by position;
    /// all of them for a record that was not yet saved.
    [[nodiscard]] quint64 changedAttributes() const;

private:
    friend class NSManagedObjectContext;

    int requiredIndex(const QString& key) const;
    void fulfil(AttributeValues values, qint64 version);
    void turnIntoFault();

    NSManagedObjectContext* m_context;
    NSManagedObjectID m_id;
    AttributeValues m_values; // empty in a fault
    std::unique_ptr<AttributeValues> m_committed; // as read, while the values differ
    std::shared_ptr<FaultBatch> m_batch; // the faults that are read together with this one
    qint64 m_version = 0;
    quint64 m_unannounced = 0; // attributes changed since the context last told its observers
    State m_state = State::Clean;
    bool m_isFault = true;
    bool m_isAnnounced = true; // observers know the object as present
    bool m_isTouched = false; // waits in the context to be announced
    bool m_isListed = false; // stands in the context's list of changed objects
};
