#include "RecordTable.h"

namespace mirror {

namespace {

std::string rowsWhere(const char* condition)
{
    std::string sql = "SELECT number, identifier, content, renamed, device, exact, carrier "
                      "FROM _mirror_record WHERE ";
    sql += condition;
    return sql;
}

/// `first` is the place of its first column.
MirroredRow rowIn(SQLite::Statement& row, int first = 0)
{
    const auto column = [&](int place) { return row.getColumn(first + place); };
    MirroredRow result;
    result.number = column(0).getInt64();
    result.identifier = QUuid::fromRfc4122(
        { static_cast<const char*>(column(1).getBlob()), column(1).getBytes() });
    result.content = unpacked(column(2).getInt64());
    if (!column(3).isNull())
        result.renamed = unpacked(column(3).getInt64());
    result.device = DeviceId(column(4).getInt64());
    result.exact = QByteArray(column(5).getText(), column(5).getBytes());
    if (!column(6).isNull())
        result.carrier = column(6).getInt64();
    return result;
}

} // namespace

std::optional<MirroredRow> RecordTable::byIdentifier(const QUuid& identifier)
{
    static const std::string sql = rowsWhere("identifier = ?");
    Query query(m_scope.connection(), sql);
    const QByteArray bytes = identifier.toRfc4122();
    query->bind(1, bytes.constData(), int(bytes.size()));
    return query->executeStep() ? std::optional(rowIn(*query)) : std::nullopt;
}

std::optional<MirroredRow> RecordTable::byNumber(qint64 number)
{
    static const std::string sql = rowsWhere("number = ?");
    Query query(m_scope.connection(), sql);
    query->bind(1, static_cast<int64_t>(number));
    return query->executeStep() ? std::optional(rowIn(*query)) : std::nullopt;
}

std::vector<MirroredRecord> RecordTable::unpublished(
    const EntityTable& records, qint64 after, std::size_t most)
{
    Query query(m_scope.connection(),
        records.selectSql()
            + ", mirrored.number, mirrored.identifier, mirrored.content, mirrored.renamed, "
              "mirrored.device, mirrored.exact, mirrored.carrier "
              "FROM _mirror_record AS mirrored LEFT JOIN "
            + records.name()
            + " ON _id = mirrored.number WHERE mirrored.carrier IS NULL AND mirrored.number > ? "
              "ORDER BY mirrored.number LIMIT ?");
    query->bind(1, static_cast<int64_t>(after));
    query->bind(2, static_cast<int64_t>(most));
    std::vector<MirroredRecord> found;
    while (query->executeStep()) {
        MirroredRecord& each = found.emplace_back();
        each.row = rowIn(*query, query->getColumnCount() - 7);
        if (!query->getColumn(0).isNull())
            each.values = records.values(*query);
    }
    return found;
}

void RecordTable::write(const MirroredRow& row)
{
    Query query(
        m_scope.connection(), "INSERT OR REPLACE INTO _mirror_record VALUES (?, ?, ?, ?, ?, ?, ?)");
    query->clearBindings();
    query->bind(1, static_cast<int64_t>(row.number));
    const QByteArray identifier = row.identifier.toRfc4122();
    query->bind(2, identifier.constData(), int(identifier.size()));
    query->bind(3, static_cast<int64_t>(packed(row.content)));
    if (row.renamed) {
        query->bind(4, static_cast<int64_t>(packed(*row.renamed)));
        query->bind(5, static_cast<int64_t>(row.device));
    }
    if (!row.exact.isEmpty())
        query->bind(6, row.exact.toStdString());
    if (row.carrier)
        query->bind(7, static_cast<int64_t>(*row.carrier));
    query->exec();
}

void RecordTable::setCarrier(const QUuid& identifier, qint64 carrier)
{
    static const std::string sql
        = "UPDATE _mirror_record SET carrier = ?1 WHERE identifier = ?2 AND carrier IS NOT ?1";
    Query query(m_scope.connection(), sql);
    query->bind(1, static_cast<int64_t>(carrier));
    const QByteArray bytes = identifier.toRfc4122();
    query->bind(2, bytes.constData(), int(bytes.size()));
    query->exec();
}

qint64 RecordTable::countUnpublished(qint64 first, qint64 last)
{
    Query query(m_scope.connection(),
        "SELECT count(*) FROM _mirror_record WHERE carrier IS NULL AND number BETWEEN ? AND ?");
    query->bind(1, static_cast<int64_t>(first));
    query->bind(2, static_cast<int64_t>(last));
    query->executeStep();
    return query->getColumn(0).getInt64();
}

void RecordTable::setCarriers(qint64 first, qint64 last, qint64 carrier)
{
    Query query(m_scope.connection(),
        "UPDATE _mirror_record SET carrier = ? WHERE carrier IS NULL AND number BETWEEN ? AND ?");
    query->bind(1, static_cast<int64_t>(carrier));
    query->bind(2, static_cast<int64_t>(first));
    query->bind(3, static_cast<int64_t>(last));
    query->exec();
}

qint64 RecordTable::carriedBy(qint64 carrier)
{
    Query query(m_scope.connection(), "SELECT count(*) FROM _mirror_record WHERE carrier = ?");
    query->bind(1, static_cast<int64_t>(carrier));
    query->executeStep();
    return query->getColumn(0).getInt64();
}

void RecordTable::takeCarrier(qint64 carrier)
{
    Query query(m_scope.connection(), "UPDATE _mirror_record SET carrier = NULL WHERE carrier = ?");
    query->bind(1, static_cast<int64_t>(carrier));
    query->exec();
}

void RecordTable::takeAllCarriers()
{
    Query query(
        m_scope.connection(), "UPDATE _mirror_record SET carrier = NULL WHERE carrier IS NOT NULL");
    query->exec();
}

qint64 RecordTable::numberForAbsent()
{
    return m_scope.connection().integer("SELECT min(0, ifnull(min(number), 0)) FROM _mirror_record")
        - 1;
}

} // namespace mirror
