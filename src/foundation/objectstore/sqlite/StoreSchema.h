#pragma once

#include "../NSManagedObjectModel.h"
#include "SqliteConnection.h"
#include "StoreReader.h"

/// Whether a store that an older model wrote is taken over.
enum class Migration { Refuse, AddAttributes };

/// The tables of a store file and their upkeep.
///
///   _store_metadata (key, value)             identifier of the store, version of its model
///   _store_entity (number, name, last)       last: the highest identity of a deleted record
///   _store_attribute (entity, number, name, type)   numbers are given once and never change
///   _store_origin (entity, first, identifier)  64 random bits that, before the number of a record
///                                            from `first` on, make its identifier unique anywhere
///   _store_history (number, stamp, author, kind, entity, attributes, identities)
///   one table for each entity, see EntityTable
///
/// PRAGMA application_id tells that the file is ours, user_version its format.
namespace StoreSchema {

/// Fails without touching the file where it is not ours, of a later format, or of a model that
/// cannot be taken over. Throws StoreError and SQLite::Exception.
void examine(SqliteConnection& connection, const NSManagedObjectModel& model, Migration migration);

/// Makes the tables in an empty file, adds what the model has more than an older one, and returns
/// how the entities lie in the file. Throws StoreError and SQLite::Exception.
std::shared_ptr<const EntityTables> prepare(
    SqliteConnection& connection, const NSManagedObjectModel& model, Migration migration);

} // namespace StoreSchema
