#pragma once

#include "AttributeValue.h"

#include <optional>
#include <vector>

/// A comparison of one attribute with a value. A record without the attribute only ever matches
/// the equality with an absent value.
struct Predicate {
    enum class Comparison { LessThan, LessOrEqual, Equal, GreaterOrEqual, GreaterThan };

    QString attribute;
    Comparison comparison = Comparison::Equal;
    QVariant value; ///< of the attribute's type; invalid for absent
};

/// One key of a sort. Absent values come first in ascending order.
struct SortDescriptor {
    enum class Order { Ascending, Descending };

    QString attribute;
    Order order = Order::Ascending;
};

/// Which records are wanted, in which order. Records that the sort does not tell apart, and all of
/// them where it is empty, come in the store's order: that in which they were first saved.
struct NSFetchRequest {
    QString entityName;
    std::optional<Predicate> predicate;
    std::vector<SortDescriptor> sortDescriptors;
    int fetchLimit = 0; ///< 0 for no limit
    int fetchOffset = 0;
    int fetchBatchSize
        = 0; ///< objects come as faults that are read this many at a time; 0: at once
};
