#include "StoreReader.h"

#include <algorithm>

namespace {

using Key = std::variant<std::monostate, qint64, double, std::string>;

Key keyOf(const SQLite::Column& column)
{
    if (column.isInteger())
        return static_cast<qint64>(column.getInt64());
    if (column.isFloat())
        return column.getDouble();
    if (column.isText())
        return column.getString();
    return {};
}

/// An index walked backwards gives equal keys in the reverse of the store's order. Sorting each
/// such run in the database would cost a sorter a row; turning it round here costs nothing.
bool isWalkedBackwards(const NSFetchRequest& request)
{
    return request.sortDescriptors.size() == 1
        && request.sortDescriptors.front().order == SortDescriptor::Order::Descending
        && request.fetchLimit <= 0 && request.fetchOffset <= 0;
}

std::string walkSql(const EntityTable& table, const NSFetchRequest& request, const RequestSql& sql)
{
    if (!isWalkedBackwards(request))
        return "SELECT _id" + sql.whole();
    const auto key = table.entity().indexOfAttribute(request.sortDescriptors.front().attribute);
    return "SELECT _id, " + table.column(*key) + sql.whole();
}

} // namespace

struct IdentityCursor::Walk {
    Walk(SqliteConnection& connection, const EntityTable& table, const NSFetchRequest& request)
        : sql(table, request,
            isWalkedBackwards(request) ? RequestSql::Ties::AsIndexed : RequestSql::Ties::StoreOrder)
        , turnsRuns(isWalkedBackwards(request))
        , statement(connection.database(), walkSql(table, request, sql))
    {
        sql.bindWhole(statement);
    }

    void take(std::vector<qint64>& identities)
    {
        if (turnsRuns) {
            Key key = keyOf(statement.getColumn(1));
            if (key != runKey)
                endRun(identities);
            runKey = std::move(key);
            run.push_back(statement.getColumn(0).getInt64());
        } else {
            identities.push_back(statement.getColumn(0).getInt64());
        }
    }

    void endRun(std::vector<qint64>& identities)
    {
        identities.insert(identities.end(), run.rbegin(), run.rend());
        run.clear();
    }

    RequestSql sql;
    bool turnsRuns;
    bool isAtEnd = false;
    std::vector<qint64> run; // the records of equal keys that stand last
    Key runKey;
    SQLite::Statement statement;
};

IdentityCursor::IdentityCursor(
    const QString& path, std::shared_ptr<const EntityTables> tables, const NSFetchRequest& request)
    : m_tables(std::move(tables))
    , m_request(request)
    , m_connection(path, SqliteConnection::Access::Read)
{
    m_connection.database().exec("BEGIN");
    m_walk = std::make_unique<Walk>(m_connection, m_tables->named(request.entityName), request);
    m_connection.integer("SELECT count(*) FROM sqlite_schema"); // the first read takes the snapshot
}

IdentityCursor::~IdentityCursor() = default;

Result<qint64> IdentityCursor::count()
{
    return guarded(m_connection.path(), [&] {
        Query query(m_connection, "SELECT count(*)" + m_walk->sql.where());
        m_walk->sql.bindWhere(*query);
        query->executeStep();
        qint64 count = query->getColumn(0).getInt64();
        count = std::max<qint64>(0, count - std::max(m_request.fetchOffset, 0));
        return m_request.fetchLimit > 0 ? std::min<qint64>(count, m_request.fetchLimit) : count;
    });
}

Result<bool> IdentityCursor::next(std::size_t atLeast, std::vector<qint64>& identities)
{
    return guarded(m_connection.path(), [&] {
        const std::size_t wanted = identities.size() + atLeast;
        while (identities.size() < wanted && !m_walk->isAtEnd) {
            if (m_walk->statement.executeStep())
                m_walk->take(identities);
            else
                m_walk->isAtEnd = true;
        }
        if (m_walk->isAtEnd)
            m_walk->endRun(identities);
        return !m_walk->isAtEnd;
    });
}
