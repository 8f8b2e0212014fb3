#pragma once

#include "sqlite/SqliteConnection.h"

/// The mirror's tables in a store file, beside the records that they speak of:
///
///   _mirror_record (number, identifier, content, renamed, device, exact, carrier)
///       One for each record that was ever mirrored, for ever. number: the record's identity, below
///       zero where the record was never here; content: the time of the content, of a dead record
///       that of its end; renamed: null for a dead one; exact: the record as a line, where the row
///       of the record does not say it all; carrier: null where it is to be published.
///   _mirror_value (number, key, line, carrier)
///   _mirror_file (number, kind, folder, name, size, state, lines)
///   _mirror_memory   one row, see MemoryTable
///   _mirror_progress one row, see LocalChanges; none before mirroring was first switched on
///
/// Times are numbers that sort as they do: milliseconds times 100,000 and the counter.
namespace MirrorTables {

/// Makes those that are missing. Throws SQLite::Exception.
void prepare(SqliteConnection& connection);

} // namespace MirrorTables
