#include "RowWriter.h"

#include <algorithm>

namespace {

constexpr qint64 firstVersion = 1;

bool isBounded(const NSFetchRequest& request)
{
    return request.fetchLimit > 0 || request.fetchOffset > 0;
}

std::vector<qint64> identitiesToDelete(
    SqliteConnection& connection, const EntityTable& table, const NSFetchRequest& request)
{
    const RequestSql sql(table, request, RequestSql::Ties::StoreOrder);
    Query query(connection, "SELECT _id" + (isBounded(request) ? sql.whole() : sql.where()));
    if (isBounded(request))
        sql.bindWhole(*query);
    else
        sql.bindWhere(*query);
    std::vector<qint64> ids;
    while (query->executeStep())
        ids.push_back(query->getColumn(0).getInt64());
    std::sort(ids.begin(), ids.end());
    return ids;
}

void deleteByRequest(
    SqliteConnection& connection, const EntityTable& table, const NSFetchRequest& request)
{
    const RequestSql sql(table, request, RequestSql::Ties::StoreOrder);
    Query query(connection, "DELETE" + sql.where());
    sql.bindWhere(*query);
    query->exec();
}

void deleteById(SqliteConnection& connection, const EntityTable& table, qint64 id)
{
    Query query(connection, "DELETE FROM " + table.name() + " WHERE _id = ?");
    query->bind(1, static_cast<int64_t>(id));
    query->exec();
}

} // namespace

qint64 RowWriter::insert(const NSEntityDescription* entity, const AttributeValues& values)
{
    const EntityTable& table = m_tables.of(entity);
    auto last = m_lastIdentities.find(entity);
    if (last == m_lastIdentities.end()) {
        last = m_lastIdentities.emplace(entity, lastIdentity(table)).first;
        noteOrigin(table, last->second + 1);
    }
    const qint64 id = ++last->second;
    Query query(m_connection.statement(table.insertSql()));
    query->bind(1, static_cast<int64_t>(id));
    query->bind(2, static_cast<int64_t>(firstVersion));
    int position = 3;
    for (const AttributeValue& value : values)
        bindValue(*query, position++, value);
    query->exec();
    m_history.add(HistoryWriter::Kind::Insert, table, 0, id);
    return id;
}

std::optional<qint64> RowWriter::versionOf(const NSEntityDescription* entity, qint64 id)
{
    Query query(
        m_connection, "SELECT _version FROM " + m_tables.of(entity).name() + " WHERE _id = ?");
    query->bind(1, static_cast<int64_t>(id));
    if (!query->executeStep())
        return std::nullopt;
    return query->getColumn(0).getInt64();
}

void RowWriter::update(const NSEntityDescription* entity, qint64 id, qint64 version,
    const AttributeValues& values, quint64 changed)
{
    const EntityTable& table = m_tables.of(entity);
    Query query(m_connection, table.updateSql(changed));
    int position = 1;
    query->bind(position++, static_cast<int64_t>(version));
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (changed >> i & 1)
            bindValue(*query, position++, values[i]);
    }
    query->bind(position, static_cast<int64_t>(id));
    query->exec();
    m_history.add(HistoryWriter::Kind::Update, table, changed, id);
}

std::optional<AttributeValues> RowWriter::values(const NSEntityDescription* entity, qint64 id)
{
    const EntityTable& table = m_tables.of(entity);
    Query query(m_connection, table.rowSql());
    query->bind(1, static_cast<int64_t>(id));
    if (!query->executeStep())
        return std::nullopt;
    return table.values(*query);
}

void RowWriter::remove(const NSEntityDescription* entity, qint64 id)
{
    const EntityTable& table = m_tables.of(entity);
    noteDeleted(table, id);
    deleteById(m_connection, table, id);
    if (m_connection.database().getChanges() > 0)
        m_history.add(HistoryWriter::Kind::Delete, table, 0, id);
}

std::vector<qint64> RowWriter::remove(const NSFetchRequest& request)
{
    const EntityTable& table = m_tables.named(request.entityName);
    std::vector<qint64> ids = identitiesToDelete(m_connection, table, request);
    if (ids.empty())
        return ids;
    noteDeleted(table, ids.back());
    if (isBounded(request)) {
        for (const qint64 id : ids)
            deleteById(m_connection, table, id);
    } else {
        deleteByRequest(m_connection, table, request);
    }
    m_history.add(HistoryWriter::Kind::Delete, table, ids);
    return ids;
}

/// An identity is never given twice, also not after the record with the highest was deleted.
qint64 RowWriter::lastIdentity(const EntityTable& table)
{
    Query query(m_connection,
        "SELECT max(last, ifnull((SELECT max(_id) FROM " + table.name()
            + "), 0)) FROM _store_entity WHERE number = ?");
    query->bind(1, table.number());
    query->executeStep();
    return query->getColumn(0).getInt64();
}

/// Records take turns in origins when two processes save by turns; each turn is one row.
void RowWriter::noteOrigin(const EntityTable& table, qint64 first)
{
    Query last(m_connection,
        "SELECT identifier FROM _store_origin WHERE entity = ? ORDER BY first DESC LIMIT 1");
    last->bind(1, table.number());
    if (last->executeStep() && last->getColumn(0).getInt64() == m_origin)
        return;
    Query insert(m_connection, "INSERT OR REPLACE INTO _store_origin VALUES (?, ?, ?)");
    insert->bind(1, table.number());
    insert->bind(2, static_cast<int64_t>(first));
    insert->bind(3, static_cast<int64_t>(m_origin));
    insert->exec();
}

void RowWriter::noteDeleted(const EntityTable& table, qint64 highest)
{
    // Only a deletion at the end of the table can hide how far the numbers went.
    if (highest < m_connection.integer("SELECT ifnull(max(_id), 0) FROM " + table.name()))
        return;
    Query query(m_connection, "UPDATE _store_entity SET last = ?1 WHERE number = ?2 AND last < ?1");
    query->bind(1, static_cast<int64_t>(highest));
    query->bind(2, table.number());
    query->exec();
}
