#pragma once

#include "AttributeValue.h"

#include <QHash>

#include <memory>

class NSManagedObject;
struct NSManagedObjectSeed;

/// One attribute of an entity.
struct NSAttributeDescription {
    QString name;
    AttributeType type = AttributeType::String;
    bool isOptional = false; ///< may be absent in a saved record
    AttributeValue defaultValue; ///< of a new record, and of an older one that lacked the attribute
};

/// One entity of a model: a name, its attributes in alphabetical order, and the attributes by
/// which its records are found fast.
class NSEntityDescription {
public:
    using ObjectMaker = std::shared_ptr<NSManagedObject> (*)(const NSManagedObjectSeed&);

    /// The attributes must be sorted by name and at most 63; `indexes` are positions in them.
    NSEntityDescription(
        QString name, std::vector<NSAttributeDescription> attributes, std::vector<int> indexes);

    [[nodiscard]] const QString& name() const { return m_name; }
    [[nodiscard]] const std::vector<NSAttributeDescription>& attributes() const
    {
        return m_attributes;
    }
    [[nodiscard]] int attributeCount() const { return static_cast<int>(m_attributes.size()); }
    /// Position of an attribute, or nothing where the entity has none of that name.
    [[nodiscard]] std::optional<int> indexOfAttribute(const QString& name) const;
    [[nodiscard]] const std::vector<int>& indexes() const { return m_indexes; }
    [[nodiscard]] const AttributeValues& defaultValues() const { return m_defaults; }

    /// From now on contexts make the records of this entity as objects of the class, which derives
    /// from NSManagedObject and inherits its constructors.
    template <class T> void setManagedObjectClass()
    {
        m_maker = [](const NSManagedObjectSeed& seed) -> std::shared_ptr<NSManagedObject> {
            return std::make_shared<T>(seed);
        };
    }
    [[nodiscard]] std::shared_ptr<NSManagedObject> makeObject(const NSManagedObjectSeed& seed) const
    {
        return m_maker(seed);
    }

private:
    QString m_name;
    std::vector<NSAttributeDescription> m_attributes;
    std::vector<int> m_indexes;
    AttributeValues m_defaults;
    QHash<QString, int> m_positions;
    ObjectMaker m_maker;
};
