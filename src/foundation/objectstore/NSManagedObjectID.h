#pragma once

#include "NSEntityDescription.h"

/// The identity of a record. Permanent ones stay the same for as long as the store file exists and
/// are never given to another record; a record that was not yet saved has a temporary one.
class NSManagedObjectID {
public:
    NSManagedObjectID() = default;
    /// A positive number is permanent, a negative one temporary.
    NSManagedObjectID(const NSEntityDescription* entity, qint64 number)
        : m_entity(entity)
        , m_number(number)
    {
    }

    /// Null for the identity of nothing.
    [[nodiscard]] const NSEntityDescription* entity() const { return m_entity; }
    [[nodiscard]] qint64 number() const { return m_number; }
    [[nodiscard]] bool isTemporaryID() const { return m_number < 0; }
    /// For messages, such as "Item/p12" or, temporary, "Item/t3".
    [[nodiscard]] QString toString() const
    {
        if (m_entity == nullptr)
            return QStringLiteral("none");
        return m_entity->name() + (isTemporaryID() ? QLatin1String("/t") : QLatin1String("/p"))
            + QString::number(qAbs(m_number));
    }

    friend bool operator==(const NSManagedObjectID&, const NSManagedObjectID&) = default;

private:
    const NSEntityDescription* m_entity = nullptr;
    qint64 m_number = 0;
};

inline size_t qHash(const NSManagedObjectID& id, size_t seed = 0) noexcept
{
    return qHashMulti(seed, id.entity(), id.number());
}

Q_DECLARE_METATYPE(NSManagedObjectID)
