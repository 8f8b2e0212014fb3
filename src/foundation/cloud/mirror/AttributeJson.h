#pragma once

#include "JsonLine.h"
#include "RecordSchema.h"

namespace mirror {

/// Whether the value is of the kind and can be mirrored: not a double that is infinite or no
/// number, nor a date out of range.
[[nodiscard]] bool isMirrorable(const Value& value, AttributeKind kind);

/// Appends the JSON text of a mirrorable value. A double is a string in the shortest decimal that
/// reads back bit for bit, a date an integer of milliseconds since 1970 UTC.
void appendAttribute(QByteArray& json, const Value& value);

/// The most bytes that the JSON text of a value has.
[[nodiscard]] qsizetype mostBytes(AttributeKind kind);

/// Reads what appendAttribute() writes, and other decimals of a finite double as well; nothing
/// where the JSON value has another form or is out of range.
[[nodiscard]] std::optional<Value> attributeValue(const JsonValue& json, AttributeKind kind);

} // namespace mirror
