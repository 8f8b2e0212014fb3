#pragma once

#include "RecordState.h"

namespace mirror {

/// One record as a line, without its line end. Every record has one, of at most
/// JsonLimits::LineBytes.
[[nodiscard]] QByteArray recordLine(const Record& record);

/// Reads the lines of live records that are exactly as recordLine() writes them, with nothing added
/// by a newer version: nearly all there are. Nothing for every other one, so that it agrees with
/// readRecord() wherever it returns something: one record has one line.
[[nodiscard]] std::optional<Record> readOwnRecordLine(
    QByteArrayView line, const RecordSchema& schema);

/// Nothing where the line is not understood.
[[nodiscard]] std::optional<Record> readRecordLine(QByteArrayView line, const RecordSchema& schema);

/// Reads a line that is already known to be an object.
[[nodiscard]] std::optional<Record> readRecord(const JsonValue& line, const RecordSchema& schema);

} // namespace mirror
