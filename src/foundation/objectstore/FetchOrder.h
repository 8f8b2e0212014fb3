#pragma once

#include "NSFetchRequest.h"
#include "NSManagedObject.h"

/// Decides in memory what a fetch request decides in the store: which records match and which come
/// first. The request must name attributes of the entity, and values of their types.
class FetchOrder {
public:
    FetchOrder(const NSEntityDescription& entity, const NSFetchRequest& request);

    [[nodiscard]] bool matches(const NSManagedObject& object) const;
    [[nodiscard]] bool precedes(const NSManagedObject& left, const NSManagedObject& right) const;
    /// The attributes on which the two answers depend, as a set of bits.
    [[nodiscard]] quint64 attributes() const { return m_attributes; }

private:
    struct Key {
        int attribute;
        bool isDescending;
    };

    std::vector<Key> m_keys;
    int m_compared = -1;
    Predicate::Comparison m_comparison = Predicate::Comparison::Equal;
    AttributeValue m_value;
    quint64 m_attributes = 0;
};
