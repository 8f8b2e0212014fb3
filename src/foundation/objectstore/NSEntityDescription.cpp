#include "NSEntityDescription.h"

#include "NSManagedObject.h"

NSEntityDescription::NSEntityDescription(
    QString name, std::vector<NSAttributeDescription> attributes, std::vector<int> indexes)
    : m_name(std::move(name))
    , m_attributes(std::move(attributes))
    , m_indexes(std::move(indexes))
{
    for (const NSAttributeDescription& attribute : m_attributes) {
        m_positions.insert(attribute.name, static_cast<int>(m_defaults.size()));
        m_defaults.push_back(attribute.defaultValue);
    }
    setManagedObjectClass<NSManagedObject>();
}

std::optional<int> NSEntityDescription::indexOfAttribute(const QString& name) const
{
    const auto found = m_positions.constFind(name);
    if (found == m_positions.cend())
        return std::nullopt;
    return *found;
}
