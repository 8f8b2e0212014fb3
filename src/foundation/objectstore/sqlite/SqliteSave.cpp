#include "SqliteStore.h"

#include <algorithm>

namespace {

constexpr qint64 firstVersion = 1;

std::vector<qint64> identitiesToDelete(
    SqliteConnection& connection, const EntityTable& table, const NSFetchRequest& request)
{
    const RequestSql sql(table, request, RequestSql::Ties::StoreOrder);
    const bool isBounded = request.fetchLimit > 0 || request.fetchOffset > 0;
    Query query(connection, "SELECT _id" + (isBounded ? sql.whole() : sql.where()));
    if (isBounded)
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

[[noreturn]] void reportConflicts(const QStringList& conflicts)
{
    throw StoreError { StoreError::Code::Conflict,
        QStringLiteral("Records were changed or deleted elsewhere."),
        { { QStringLiteral("conflicts"), conflicts } } };
}

void insertRow(SQLite::Statement& insert, qint64 id, const AttributeValues& values)
{
    Query query(insert);
    query->bind(1, static_cast<int64_t>(id));
    query->bind(2, static_cast<int64_t>(firstVersion));
    int position = 3;
    for (const AttributeValue& value : values)
        bindValue(*query, position++, value);
    query->exec();
}

void writeUpdate(
    SqliteConnection& connection, const EntityTable& table, const RowChange& change, qint64 version)
{
    Query query(connection, table.updateSql(change.changed));
    int position = 1;
    query->bind(position++, static_cast<int64_t>(version));
    for (std::size_t i = 0; i < change.values->size(); ++i) {
        if (change.changed >> i & 1)
            bindValue(*query, position++, (*change.values)[i]);
    }
    query->bind(position, static_cast<int64_t>(change.id));
    query->exec();
}

AttributeValues currentValues(SqliteConnection& connection, const EntityTable& table, qint64 id)
{
    Query query(connection, table.rowSql());
    query->bind(1, static_cast<int64_t>(id));
    query->executeStep();
    return table.values(*query);
}

} // namespace

Result<SaveOutcome> SqliteStore::save(const SaveRequest& request)
{
    return guarded(m_settings.path, [&] {
        SaveOutcome outcome;
        HistoryWriter history;
        SQLite::Transaction transaction(
            m_connection.database(), SQLite::TransactionBehavior::IMMEDIATE);
        m_connection.requireInPlace();
        updateRows(request, outcome, history);
        deleteRows(request, history);
        insertRows(request, outcome, history);
        writeHistory(history, request.author);
        transaction.commit();
        return outcome;
    });
}

void SqliteStore::writeHistory(HistoryWriter& history, const QString& author)
{
    if (!m_settings.keepsHistory)
        return;
    const qint64 number = history.write(m_connection, author);
    if (number != 0)
        m_ownTransactions.push_back(number);
}

void SqliteStore::insertRows(
    const SaveRequest& request, SaveOutcome& outcome, HistoryWriter& history)
{
    outcome.inserted.reserve(request.inserts.size());
    const EntityTable* table = nullptr;
    qint64 last = 0;
    for (const RowChange& change : request.inserts) {
        if (table == nullptr || &table->entity() != change.entity) {
            table = &m_tables->of(change.entity);
            last = lastIdentity(*table);
            noteOrigin(*table, last + 1);
        }
        insertRow(m_connection.statement(table->insertSql()), ++last, *change.values);
        outcome.inserted.push_back(last);
        history.add(HistoryWriter::Kind::Insert, *table, 0, last);
    }
}

void SqliteStore::updateRows(
    const SaveRequest& request, SaveOutcome& outcome, HistoryWriter& history)
{
    QStringList conflicts;
    examineDeletions(request, conflicts);
    for (const RowChange& change : request.updates) {
        outcome.updated.push_back(update(change, request.policy, conflicts));
        if (outcome.updated.back().kind != SaveOutcome::Updated::Kind::Gone)
            history.add(HistoryWriter::Kind::Update, m_tables->of(change.entity), change.changed,
                change.id);
    }
    if (!conflicts.isEmpty())
        reportConflicts(conflicts);
}

SaveOutcome::Updated SqliteStore::update(
    const RowChange& change, NSMergePolicy policy, QStringList& conflicts)
{
    using Kind = SaveOutcome::Updated::Kind;
    const EntityTable& table = m_tables->of(change.entity);
    const std::optional<qint64> version = versionOf(table, change.id);
    const bool isConflict = version != change.version;
    if (isConflict && policy == NSMergePolicy::NSErrorMergePolicy) {
        conflicts.append(NSManagedObjectID(change.entity, change.id).toString());
        return { Kind::Gone, 0, {} };
    }
    if (!version)
        return { Kind::Gone, 0, {} };
    writeUpdate(m_connection, table, change, *version + 1);
    if (!isConflict)
        return { Kind::Written, *version + 1, {} };
    return { Kind::Merged, *version + 1, currentValues(m_connection, table, change.id) };
}

void SqliteStore::examineDeletions(const SaveRequest& request, QStringList& conflicts)
{
    if (request.policy != NSMergePolicy::NSErrorMergePolicy)
        return;
    for (const RowChange& change : request.deletes) {
        const std::optional<qint64> version = versionOf(m_tables->of(change.entity), change.id);
        if (version && *version != change.version)
            conflicts.append(NSManagedObjectID(change.entity, change.id).toString());
    }
}

void SqliteStore::deleteRows(const SaveRequest& request, HistoryWriter& history)
{
    for (const RowChange& change : request.deletes) {
        const EntityTable& table = m_tables->of(change.entity);
        noteDeleted(table, change.id);
        deleteById(m_connection, table, change.id);
        if (m_connection.database().getChanges() > 0)
            history.add(HistoryWriter::Kind::Delete, table, 0, change.id);
    }
}

Result<std::vector<qint64>> SqliteStore::batchDelete(
    const NSFetchRequest& request, const QString& author)
{
    return guarded(m_settings.path, [&]() -> std::vector<qint64> {
        const EntityTable& table = m_tables->named(request.entityName);
        const bool isBounded = request.fetchLimit > 0 || request.fetchOffset > 0;
        SQLite::Transaction transaction(
            m_connection.database(), SQLite::TransactionBehavior::IMMEDIATE);
        m_connection.requireInPlace();
        std::vector<qint64> ids = identitiesToDelete(m_connection, table, request);
        if (ids.empty())
            return ids;
        noteDeleted(table, ids.back());
        if (isBounded) {
            for (const qint64 id : ids)
                deleteById(m_connection, table, id);
        } else {
            deleteByRequest(m_connection, table, request);
        }
        HistoryWriter history;
        history.add(HistoryWriter::Kind::Delete, table, ids);
        writeHistory(history, author);
        transaction.commit();
        return ids;
    });
}

std::optional<qint64> SqliteStore::versionOf(const EntityTable& table, qint64 id)
{
    Query query(m_connection, "SELECT _version FROM " + table.name() + " WHERE _id = ?");
    query->bind(1, static_cast<int64_t>(id));
    if (!query->executeStep())
        return std::nullopt;
    return query->getColumn(0).getInt64();
}

/// An identity is never given twice, also not after the record with the highest was deleted.
qint64 SqliteStore::lastIdentity(const EntityTable& table)
{
    Query query(m_connection,
        "SELECT max(last, ifnull((SELECT max(_id) FROM " + table.name()
            + "), 0)) FROM _store_entity WHERE number = ?");
    query->bind(1, table.number());
    query->executeStep();
    return query->getColumn(0).getInt64();
}

/// Records take turns in origins when two processes save by turns; each turn is one row.
void SqliteStore::noteOrigin(const EntityTable& table, qint64 first)
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

void SqliteStore::noteDeleted(const EntityTable& table, qint64 highest)
{
    // Only a deletion at the end of the table can hide how far the numbers went.
    if (highest < m_connection.integer("SELECT ifnull(max(_id), 0) FROM " + table.name()))
        return;
    Query query(m_connection, "UPDATE _store_entity SET last = ?1 WHERE number = ?2 AND last < ?1");
    query->bind(1, static_cast<int64_t>(highest));
    query->bind(2, table.number());
    query->exec();
}
