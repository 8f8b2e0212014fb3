#include "RowWriter.h"
#include "SqliteStore.h"

namespace {

[[noreturn]] void reportConflicts(const QStringList& conflicts)
{
    throw StoreError { StoreError::Code::Conflict,
        { QT_TRANSLATE_NOOP("StoreError", "Records were changed or deleted elsewhere.") },
        { { QStringLiteral("conflicts"), conflicts } } };
}

QString nameOf(const RowChange& change)
{
    return NSManagedObjectID(change.entity, change.id).toString();
}

SaveOutcome::Updated update(
    RowWriter& rows, const RowChange& change, NSMergePolicy policy, QStringList& conflicts)
{
    using Kind = SaveOutcome::Updated::Kind;
    const std::optional<qint64> version = rows.versionOf(change.entity, change.id);
    const bool isConflict = version != change.version;
    if (isConflict && policy == NSMergePolicy::NSErrorMergePolicy) {
        conflicts.append(nameOf(change));
        return { Kind::Gone, 0, {} };
    }
    if (!version)
        return { Kind::Gone, 0, {} };
    rows.update(change.entity, change.id, *version + 1, *change.values, change.changed);
    if (!isConflict)
        return { Kind::Written, *version + 1, {} };
    return { Kind::Merged, *version + 1, rows.values(change.entity, change.id).value() };
}

void examineDeletions(RowWriter& rows, const SaveRequest& request, QStringList& conflicts)
{
    if (request.policy != NSMergePolicy::NSErrorMergePolicy)
        return;
    for (const RowChange& change : request.deletes) {
        const std::optional<qint64> version = rows.versionOf(change.entity, change.id);
        if (version && *version != change.version)
            conflicts.append(nameOf(change));
    }
}

SaveOutcome write(RowWriter& rows, const SaveRequest& request)
{
    SaveOutcome outcome;
    QStringList conflicts;
    examineDeletions(rows, request, conflicts);
    for (const RowChange& change : request.updates)
        outcome.updated.push_back(update(rows, change, request.policy, conflicts));
    if (!conflicts.isEmpty())
        reportConflicts(conflicts);
    for (const RowChange& change : request.deletes)
        rows.remove(change.entity, change.id);
    outcome.inserted.reserve(request.inserts.size());
    for (const RowChange& change : request.inserts)
        outcome.inserted.push_back(rows.insert(change.entity, *change.values));
    return outcome;
}

} // namespace

Result<SaveOutcome> SqliteStore::save(const SaveRequest& request)
{
    return guarded(m_settings.path, [&] {
        SQLite::Transaction transaction(
            m_connection.database(), SQLite::TransactionBehavior::IMMEDIATE);
        m_connection.requireInPlace();
        RowWriter rows = rowWriter();
        SaveOutcome outcome = write(rows, request);
        writeHistory(rows, request.author);
        transaction.commit();
        return outcome;
    });
}

Result<std::vector<qint64>> SqliteStore::batchDelete(
    const NSFetchRequest& request, const QString& author)
{
    return guarded(m_settings.path, [&] {
        SQLite::Transaction transaction(
            m_connection.database(), SQLite::TransactionBehavior::IMMEDIATE);
        m_connection.requireInPlace();
        RowWriter rows = rowWriter();
        std::vector<qint64> ids = rows.remove(request);
        if (ids.empty())
            return ids;
        writeHistory(rows, author);
        transaction.commit();
        return ids;
    });
}

RowWriter SqliteStore::rowWriter() { return { m_connection, *m_tables, m_origin }; }

void SqliteStore::writeHistory(RowWriter& rows, const QString& author)
{
    if (!m_settings.keepsHistory)
        return;
    const qint64 number = rows.writeHistory(author);
    if (number != 0)
        m_ownTransactions.push_back(number);
}
