#pragma once

#include "JsonLine.h"
#include "RecordSchema.h"

namespace mirror {

/// Appends the JSON text of a value. A double is a string in the shortest decimal that reads back
/// bit for bit, a date an integer of milliseconds since 1970 UTC. False for a double that is
/// infinite or no number, a date out of range, and a value that is not of the kind.
[[nodiscard]] bool appendAttribute(QByteArray& json, const Value& value, AttributeKind kind);

/// Reads what appendAttribute() writes, and other decimals of a finite double as well; nothing
/// where the JSON value has another form or is out of range.
[[nodiscard]] std::optional<Value> attributeValue(const JsonValue& json, AttributeKind kind);

} // namespace mirror
