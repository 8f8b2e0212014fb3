#pragma once

#include "HybridClock.h"
#include "MirrorText.h"

#include <variant>
#include <vector>

namespace mirror {

/// What an attribute holds. Only dates and texts can be null.
enum class AttributeKind : quint8 { Boolean, Integer32, Double, Date, Text };

struct SchemaAttribute {
    QByteArray name; ///< valid UTF-8, one of its kind
    AttributeKind kind = AttributeKind::Text;
};

/// What the mirror knows of the records that it carries.
struct RecordSchema {
    QByteArray format; ///< the "fmt" of their files
    QByteArray renamable; ///< the one text that changes after a record was made
    std::vector<SchemaAttribute> attributes; ///< all others, which never do
};

/// Dates run from the year 1 to the year 9999.
inline constexpr WallTime EarliestDate { std::chrono::milliseconds(-62'135'596'800'000) };
inline constexpr WallTime LatestDate { std::chrono::milliseconds(253'402'300'799'999) };

/// One attribute's value; null where it holds std::monostate.
using Value = std::variant<std::monostate, bool, qint32, double, WallTime, Text>;

/// The values of one record, in the order of the schema's attributes.
using Values = std::vector<Value>;

} // namespace mirror
