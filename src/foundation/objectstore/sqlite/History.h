#pragma once

#include "../PersistentHistory.h"
#include "StoreReader.h"

#include <map>
#include <tuple>

/// Gathers what a transaction changes and writes it as history.
///
/// A row stands for all records that were changed alike, its identities as ascending numbers, each
/// the difference to the one before it, seven bits a byte, low bits first: a single record takes
/// three bytes and half a million neighbours half a megabyte. The first row of a transaction has
/// the stamp; its number is that of the transaction.
class HistoryWriter {
public:
    using Kind = PersistentHistoryChangeKind;

    void add(Kind kind, const EntityTable& table, quint64 attributes, qint64 id);
    void add(Kind kind, const EntityTable& table, const std::vector<qint64>& ids);
    /// Returns the transaction's number. Throws SQLite::Exception.
    qint64 write(SqliteConnection& connection, const QString& author);

private:
    struct Group {
        Kind kind;
        int entity;
        quint64 attributes;
        friend bool operator<(const Group& a, const Group& b)
        {
            return std::tie(a.kind, a.entity, a.attributes)
                < std::tie(b.kind, b.entity, b.attributes);
        }
    };

    std::map<Group, std::vector<qint64>> m_groups;
};

/// The transactions after one of that number, oldest first, as many as have so many changes
/// together; entities that the model no longer knows are left out. Throws SQLite::Exception, and
/// StoreError for a damaged row.
std::vector<PersistentHistoryTransaction> readHistory(
    SqliteConnection& connection, const EntityTables& tables, qint64 after, std::size_t changes);

/// One row of the history, for whoever goes through it slice by slice.
struct HistoryRow {
    qint64 number = 0;
    qint64 stamp = 0; ///< of its transaction, in milliseconds since 1970 UTC
    QString author; ///< of its transaction
    PersistentHistoryChangeKind kind = PersistentHistoryChangeKind::Insert;
    const EntityTable* table = nullptr; ///< null for an entity that the model no longer knows
    quint64 attributes = 0;
    std::vector<qint64> ids; ///< ascending
};

/// The first row after that number. Throws SQLite::Exception, and StoreError for a damaged row.
std::optional<HistoryRow> historyRowAfter(
    SqliteConnection& connection, const EntityTables& tables, qint64 number);

/// Forgets the insertions and updates of the transactions up to one of that number. Throws
/// SQLite::Exception.
void pruneHistory(SqliteConnection& connection, qint64 upTo);

std::string packIdentities(std::vector<qint64> ids);
/// Nothing for bytes that packIdentities cannot have written.
std::optional<std::vector<qint64>> unpackIdentities(std::string_view bytes);
