#pragma once

#include "RecordState.h"

namespace mirror {

/// One record as a line, without its line end. Every record has one, of at most
/// JsonLimits::LineBytes.
[[nodiscard]] QByteArray recordLine(const Record& record);

/// Nothing where the line is not understood.
[[nodiscard]] std::optional<Record> readRecordLine(QByteArrayView line, const RecordSchema& schema);

/// Reads a line that is already known to be an object.
[[nodiscard]] std::optional<Record> readRecord(const JsonValue& line, const RecordSchema& schema);

} // namespace mirror
