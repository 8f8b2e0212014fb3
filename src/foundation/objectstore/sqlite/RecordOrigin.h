#pragma once

#include "../NSManagedObjectID.h"
#include "EntityTable.h"
#include "SqliteConnection.h"

#include <QUuid>

/// The records of an entity that were first saved in one place, one after the other: with their
/// numbers its random bits make identifiers that no other record anywhere has.
struct RecordOrigin {
    qint64 first = 0; ///< number of a record
    qint64 end = 0; ///< number of the first record after them
    quint64 bits = 0;

    [[nodiscard]] bool has(qint64 number) const { return first <= number && number < end; }
    [[nodiscard]] QUuid identifierOf(qint64 number) const;
};

/// The one of that record. Throws SQLite::Exception, and StoreError where no such record was ever
/// saved.
RecordOrigin originOf(
    SqliteConnection& connection, const NSManagedObjectID& id, const EntityTable& table);
