#pragma once

#include "History.h"
#include "StoreReader.h"

/// Writes records in a transaction that is open on the connection, and then the history of what it
/// wrote. One for a transaction.
class RowWriter {
public:
    /// `origin` are the random bits that new identifiers begin with from here on.
    RowWriter(SqliteConnection& connection, const EntityTables& tables, qint64 origin)
        : m_connection(connection)
        , m_tables(tables)
        , m_origin(origin)
    {
    }

    [[nodiscard]] const EntityTables& tables() const { return m_tables; }

    // All throw SQLite::Exception, and StoreError for an entity that the model lacks.

    /// A new record; returns its identity.
    qint64 insert(const NSEntityDescription* entity, const AttributeValues& values);
    /// Nothing where there is no such record.
    std::optional<qint64> versionOf(const NSEntityDescription* entity, qint64 id);
    /// Writes the attributes of the set, and the version, of a record that exists.
    void update(const NSEntityDescription* entity, qint64 id, qint64 version,
        const AttributeValues& values, quint64 changed);
    /// What the store now has; nothing where there is no such record.
    std::optional<AttributeValues> values(const NSEntityDescription* entity, qint64 id);
    /// One without a record is none.
    void remove(const NSEntityDescription* entity, qint64 id);
    /// Returns the identities of what is deleted, ascending.
    std::vector<qint64> remove(const NSFetchRequest& request);

    /// Returns the transaction's number; 0 where nothing was written.
    qint64 writeHistory(const QString& author) { return m_history.write(m_connection, author); }

private:
    qint64 lastIdentity(const EntityTable& table);
    void noteOrigin(const EntityTable& table, qint64 first);
    void noteDeleted(const EntityTable& table, qint64 highest);

    SqliteConnection& m_connection;
    const EntityTables& m_tables;
    qint64 m_origin;
    std::map<const NSEntityDescription*, qint64> m_lastIdentities; // of entities inserted into
    HistoryWriter m_history;
};
