#include "MirrorTables.h"

void MirrorTables::prepare(SqliteConnection& connection)
{
    // One index serves all that is asked of carriers: those that are missing in the order of the
    // numbers, how many rows one carries, and which.
    connection.database().exec(R"(
        BEGIN IMMEDIATE;
        CREATE TABLE IF NOT EXISTS _mirror_record (number INTEGER PRIMARY KEY,
            identifier BLOB UNIQUE, content INTEGER, renamed INTEGER, device INTEGER, exact TEXT,
            carrier INTEGER);
        CREATE INDEX IF NOT EXISTS _mirror_record_carrier ON _mirror_record (carrier);
        CREATE TABLE IF NOT EXISTS _mirror_value (number INTEGER PRIMARY KEY, key BLOB UNIQUE,
            line TEXT, carrier INTEGER);
        CREATE TABLE IF NOT EXISTS _mirror_file (number INTEGER PRIMARY KEY, kind INTEGER,
            folder TEXT, name TEXT, size INTEGER, state INTEGER, lines INTEGER,
            UNIQUE (kind, folder, name));
        CREATE TABLE IF NOT EXISTS _mirror_memory (one INTEGER PRIMARY KEY CHECK (one = 1),
            home TEXT, phase INTEGER, account TEXT, certificate TEXT, epoch TEXT, device INTEGER,
            time INTEGER, offset INTEGER, closed TEXT, deletion TEXT, missing INTEGER,
            since INTEGER);
        CREATE TABLE IF NOT EXISTS _mirror_progress (one INTEGER PRIMARY KEY CHECK (one = 1),
            history INTEGER, done INTEGER, scanned INTEGER);
        COMMIT;
    )");
}
