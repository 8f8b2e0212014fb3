#include "StoreReader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <sqlite3.h>

namespace {

constexpr std::size_t identitiesPerQuery = 64;

NSFetchRequest withoutBounds(NSFetchRequest request)
{
    request.fetchLimit = 0;
    request.fetchOffset = 0;
    return request;
}

std::string rowsSql(const EntityTable& table)
{
    std::string sql = table.selectSql() + " FROM " + table.name() + " WHERE _id IN (?";
    for (std::size_t i = 1; i < identitiesPerQuery; ++i)
        sql += ", ?";
    return sql + ")";
}

} // namespace

const EntityTable& EntityTables::named(const QString& name) const
{
    for (const EntityTable& table : m_tables) {
        if (table.entity().name() == name)
            return table;
    }
    throw StoreError { StoreError::Code::InvalidRequest,
        { "The model has no entity %1.", { name } }, {} };
}

const EntityTable& EntityTables::of(const NSEntityDescription* entity) const
{
    for (const EntityTable& table : m_tables) {
        if (&table.entity() == entity)
            return table;
    }
    return named(entity->name());
}

const EntityTable* EntityTables::numbered(int number) const
{
    const auto found = std::find_if(m_tables.begin(), m_tables.end(),
        [&](const EntityTable& table) { return table.number() == number; });
    return found == m_tables.end() ? nullptr : &*found;
}

StoreReader::StoreReader(const QString& path, std::shared_ptr<const EntityTables> tables, View view)
    : m_tables(std::move(tables))
    , m_connection(path, SqliteConnection::Access::Read)
    , m_view(view)
{
    if (m_view == View::Pinned)
        pin();
}

StoreReader::~StoreReader() = default;

void StoreReader::pin()
{
    m_connection.database().exec("BEGIN");
    m_connection.integer("SELECT count(*) FROM sqlite_schema"); // the first read takes the snapshot
}

Result<void> StoreReader::advance()
{
    if (m_view == View::Newest)
        return {};
    return guarded(m_connection.path(), [&] {
        if (sqlite3_get_autocommit(m_connection.database().getHandle()) == 0)
            m_connection.database().exec("ROLLBACK");
        shortenLog();
        pin();
    });
}

/// The log only starts again from its beginning while nobody reads from it. A reader that always
/// stands at its last transaction would let it grow for as long as the program runs; once all of
/// the log is in the file, the reader stands on the file instead.
void StoreReader::shortenLog()
{
    sqlite3* database = m_connection.database().getHandle();
    const char* log = sqlite3_filename_wal(sqlite3_db_filename(database, "main"));
    if (QFileInfo(QFile::decodeName(log)).size() > SqliteConnection::usualLogSize)
        m_connection.database().exec("PRAGMA wal_checkpoint(PASSIVE)");
}

Result<std::optional<StoredRow>> StoreReader::row(const NSEntityDescription* entity, qint64 id)
{
    return guarded(m_connection.path(), [&]() -> std::optional<StoredRow> {
        const EntityTable& table = m_tables->of(entity);
        Query query(m_connection, table.rowSql());
        query->bind(1, static_cast<int64_t>(id));
        if (!query->executeStep())
            return std::nullopt;
        return StoredRow { id, query->getColumn(1).getInt64(), table.values(*query) };
    });
}

Result<void> StoreReader::rows(
    const NSEntityDescription* entity, const std::vector<qint64>& ids, const Visitor& visit)
{
    return guarded(m_connection.path(), [&] {
        const EntityTable& table = m_tables->of(entity);
        // A record alone is asked for often, and would stand among NULLs.
        const std::string sql = ids.size() == 1 ? table.rowSql() : rowsSql(table);
        for (std::size_t first = 0; first < ids.size(); first += identitiesPerQuery) {
            Query query(m_connection, sql);
            query->clearBindings(); // unused places stay NULL, which is no identity
            const std::size_t count = std::min(identitiesPerQuery, ids.size() - first);
            for (std::size_t i = 0; i < count; ++i)
                query->bind(static_cast<int>(i + 1), static_cast<int64_t>(ids[first + i]));
            while (query->executeStep())
                visit({ query->getColumn(0).getInt64(), query->getColumn(1).getInt64(),
                    table.values(*query) });
        }
    });
}

Result<void> StoreReader::rows(const NSFetchRequest& request, const Visitor& visit)
{
    return guarded(m_connection.path(), [&] {
        const EntityTable& table = m_tables->named(request.entityName);
        const RequestSql sql(table, request, RequestSql::Ties::StoreOrder);
        Query query(m_connection, table.selectSql() + sql.whole());
        sql.bindWhole(*query);
        while (query->executeStep())
            visit({ query->getColumn(0).getInt64(), query->getColumn(1).getInt64(),
                table.values(*query) });
    });
}

Result<std::vector<qint64>> StoreReader::identities(const NSFetchRequest& request)
{
    return guarded(m_connection.path(), [&] {
        const EntityTable& table = m_tables->named(request.entityName);
        const RequestSql sql(table, request, RequestSql::Ties::StoreOrder);
        Query query(m_connection, "SELECT _id" + sql.whole());
        sql.bindWhole(*query);
        std::vector<qint64> identities;
        while (query->executeStep())
            identities.push_back(query->getColumn(0).getInt64());
        return identities;
    });
}

Result<qint64> StoreReader::count(const NSFetchRequest& request)
{
    return guarded(m_connection.path(), [&] {
        const EntityTable& table = m_tables->named(request.entityName);
        const RequestSql sql(table, withoutBounds(request), RequestSql::Ties::StoreOrder);
        Query query(m_connection, "SELECT count(*)" + sql.where());
        sql.bindWhere(*query);
        query->executeStep();
        qint64 count = query->getColumn(0).getInt64();
        count = std::max<qint64>(0, count - std::max(request.fetchOffset, 0));
        return request.fetchLimit > 0 ? std::min<qint64>(count, request.fetchLimit) : count;
    });
}
