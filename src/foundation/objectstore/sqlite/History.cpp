#include "History.h"

#include <algorithm>

namespace {

void insertRow(SqliteConnection& connection, bool isFirst, const QString& author, int kind,
    int entity, quint64 attributes, const std::string& identities)
{
    Query insert(connection,
        "INSERT INTO _store_history (stamp, author, kind, entity, attributes, identities) "
        "VALUES (?, ?, ?, ?, ?, ?)");
    insert->clearBindings();
    if (isFirst)
        insert->bind(1, static_cast<int64_t>(QDateTime::currentMSecsSinceEpoch()));
    if (isFirst && !author.isEmpty())
        insert->bind(2, author.toStdString());
    insert->bind(3, kind);
    insert->bind(4, entity);
    if (attributes != 0)
        insert->bind(5, static_cast<int64_t>(attributes));
    insert->bind(6, identities.data(), static_cast<int>(identities.size()));
    insert->exec();
}

std::vector<qint64> identitiesIn(const SQLite::Column& bytes)
{
    auto ids = unpackIdentities(
        { static_cast<const char*>(bytes.getBlob()), static_cast<std::size_t>(bytes.getBytes()) });
    if (!ids)
        throw StoreError { StoreError::Code::Corrupt,
            { QT_TRANSLATE_NOOP("StoreError", "The history is damaged.") }, {} };
    return *std::move(ids);
}

std::size_t appendChanges(
    PersistentHistoryTransaction& transaction, SQLite::Statement& row, const EntityTable& table)
{
    const std::vector<qint64> ids = identitiesIn(row.getColumn(5));
    const auto kind = static_cast<PersistentHistoryChangeKind>(row.getColumn(2).getInt());
    const quint64 attributes = table.fromFile(static_cast<quint64>(row.getColumn(4).getInt64()));
    for (const qint64 id : ids)
        transaction.changes.push_back({ kind, { &table.entity(), id }, attributes });
    return ids.size();
}

/// Where the transaction after one of that number begins; the last one, whose number must not be
/// given again, is always after. Transactions are forgotten as a whole.
qint64 firstAfter(SqliteConnection& connection, qint64 number)
{
    Query query(connection,
        "SELECT ifnull(min(number), (SELECT max(number) FROM _store_history WHERE stamp IS NOT "
        "NULL)) FROM _store_history WHERE number > ? AND stamp IS NOT NULL");
    query->bind(1, static_cast<int64_t>(number));
    return query->executeStep() ? query->getColumn(0).getInt64() : 0;
}

} // namespace

void HistoryWriter::add(Kind kind, const EntityTable& table, quint64 attributes, qint64 id)
{
    m_groups[{ kind, table.number(), table.toFile(attributes) }].push_back(id);
}

void HistoryWriter::add(Kind kind, const EntityTable& table, const std::vector<qint64>& ids)
{
    if (ids.empty())
        return;
    auto& group = m_groups[{ kind, table.number(), 0 }];
    group.insert(group.end(), ids.begin(), ids.end());
}

qint64 HistoryWriter::write(SqliteConnection& connection, const QString& author)
{
    qint64 number = 0;
    for (auto& [group, ids] : m_groups) {
        insertRow(connection, number == 0, author, static_cast<int>(group.kind), group.entity,
            group.attributes, packIdentities(std::move(ids)));
        if (number == 0)
            number = connection.database().getLastInsertRowid();
    }
    return number;
}

std::vector<PersistentHistoryTransaction> readHistory(
    SqliteConnection& connection, const EntityTables& tables, qint64 after, std::size_t changes)
{
    std::vector<PersistentHistoryTransaction> transactions;
    std::size_t count = 0;
    Query query(connection,
        "SELECT number, stamp, kind, entity, attributes, identities, author FROM _store_history "
        "WHERE number > ? ORDER BY number");
    query->bind(1, static_cast<int64_t>(after));
    while (query->executeStep()) {
        const bool isFirst = !query->getColumn(1).isNull();
        if (isFirst && count >= changes)
            break;
        if (isFirst)
            transactions.push_back({ query->getColumn(0).getInt64(),
                QDateTime::fromMSecsSinceEpoch(query->getColumn(1).getInt64(), Qt::UTC),
                QString::fromUtf8(query->getColumn(6).getText()), {} });
        const EntityTable* table = tables.numbered(query->getColumn(3).getInt());
        if (!transactions.empty() && table != nullptr) // before: the rest of transaction `after`
            count += appendChanges(transactions.back(), *query, *table);
    }
    return transactions;
}

std::optional<HistoryRow> historyRowAfter(
    SqliteConnection& connection, const EntityTables& tables, qint64 number)
{
    Query query(connection,
        "SELECT number, kind, entity, attributes, identities FROM _store_history "
        "WHERE number > ? ORDER BY number LIMIT 1");
    query->bind(1, static_cast<int64_t>(number));
    if (!query->executeStep())
        return std::nullopt;
    HistoryRow row;
    row.number = query->getColumn(0).getInt64();
    row.kind = static_cast<PersistentHistoryChangeKind>(query->getColumn(1).getInt());
    row.table = tables.numbered(query->getColumn(2).getInt());
    if (row.table != nullptr)
        row.attributes = row.table->fromFile(static_cast<quint64>(query->getColumn(3).getInt64()));
    row.ids = identitiesIn(query->getColumn(4));
    Query transaction(connection,
        "SELECT stamp, author FROM _store_history WHERE number <= ? AND stamp IS NOT NULL "
        "ORDER BY number DESC LIMIT 1");
    transaction->bind(1, static_cast<int64_t>(row.number));
    if (transaction->executeStep()) {
        row.stamp = transaction->getColumn(0).getInt64();
        row.author = QString::fromUtf8(transaction->getColumn(1).getText());
    }
    return row;
}

void pruneHistory(SqliteConnection& connection, qint64 upTo)
{
    const qint64 end = firstAfter(connection, upTo);
    // The row with the stamp speaks for the deletions of its transaction, so it stays with them.
    Query remove(connection,
        "DELETE FROM _store_history WHERE number < ?1 AND kind <> 2 AND (stamp IS NULL OR "
        "NOT EXISTS (SELECT 1 FROM _store_history AS later WHERE later.number > "
        "_store_history.number AND later.kind = 2 AND later.number < ifnull((SELECT "
        "min(number) FROM _store_history AS next WHERE next.number > _store_history.number "
        "AND next.stamp IS NOT NULL), 9223372036854775807)))");
    remove->bind(1, static_cast<int64_t>(end));
    remove->exec();
}

std::string packIdentities(std::vector<qint64> ids)
{
    std::sort(ids.begin(), ids.end());
    std::string bytes;
    quint64 previous = 0;
    for (const qint64 id : ids) {
        quint64 rest = static_cast<quint64>(id) - previous;
        previous = static_cast<quint64>(id);
        for (; rest >= 0x80; rest >>= 7)
            bytes += static_cast<char>((rest & 0x7f) | 0x80);
        bytes += static_cast<char>(rest);
    }
    return bytes;
}

std::optional<std::vector<qint64>> unpackIdentities(std::string_view bytes)
{
    std::vector<qint64> ids;
    quint64 number = 0;
    quint64 difference = 0;
    int shift = 0;
    for (const char character : bytes) {
        const auto byte = static_cast<quint8>(character);
        if (shift > 56)
            return std::nullopt;
        difference |= static_cast<quint64>(byte & 0x7f) << shift;
        shift += 7;
        if ((byte & 0x80) != 0)
            continue;
        number += difference;
        ids.push_back(static_cast<qint64>(number));
        difference = 0;
        shift = 0;
    }
    if (shift != 0)
        return std::nullopt;
    return ids;
}
