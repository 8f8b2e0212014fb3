#include "FetchOrder.h"

namespace {

/// The store's order: saved records by identity, then the unsaved ones as they were made.
bool isEarlier(const NSManagedObjectID& left, const NSManagedObjectID& right)
{
    if (left.isTemporaryID() != right.isTemporaryID())
        return right.isTemporaryID();
    return left.isTemporaryID() ? left.number() > right.number() : left.number() < right.number();
}

} // namespace

FetchOrder::FetchOrder(const NSEntityDescription& entity, const NSFetchRequest& request)
{
    for (const SortDescriptor& sort : request.sortDescriptors) {
        const int attribute = entity.indexOfAttribute(sort.attribute).value_or(0);
        m_keys.push_back({ attribute, sort.order == SortDescriptor::Order::Descending });
        m_attributes |= quint64(1) << attribute;
    }
    if (request.predicate) {
        m_compared = entity.indexOfAttribute(request.predicate->attribute).value_or(0);
        m_comparison = request.predicate->comparison;
        const auto type = entity.attributes()[static_cast<std::size_t>(m_compared)].type;
        m_value = fromVariant(request.predicate->value, type).value_or(AttributeValue());
        m_attributes |= quint64(1) << m_compared;
    }
}

bool FetchOrder::matches(const NSManagedObject& object) const
{
    if (m_compared < 0)
        return true;
    const AttributeValue& value = object.attribute(m_compared);
    const int order = compare(value, m_value);
    if (m_comparison == Predicate::Comparison::Equal)
        return order == 0;
    if (isAbsent(value) || isAbsent(m_value))
        return false;
    switch (m_comparison) {
    case Predicate::Comparison::LessThan:
        return order < 0;
    case Predicate::Comparison::LessOrEqual:
        return order <= 0;
    case Predicate::Comparison::GreaterOrEqual:
        return order >= 0;
    default:
        return order > 0;
    }
}

bool FetchOrder::precedes(const NSManagedObject& left, const NSManagedObject& right) const
{
    for (const Key& key : m_keys) {
        const int order = compare(left.attribute(key.attribute), right.attribute(key.attribute));
        if (order != 0)
            return key.isDescending ? order > 0 : order < 0;
    }
    return isEarlier(left.objectID(), right.objectID());
}
