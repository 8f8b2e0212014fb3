#include "SqliteRecordShelf.h"

#include "RecordLine.h"

namespace mirror {

namespace {

/// Whether the record here, or the fact of its end, says all that there is in the state.
bool isSaidByRows(const Record& record)
{
    if (const auto* live = std::get_if<LiveRecord>(&record.state))
        return !live->content.attributes.hasMore() && live->unknown == UnknownKeys();
    return std::get<DeadRecord>(record.state).unknown == UnknownKeys();
}

} // namespace

std::optional<Record> SqliteRecordShelf::find(const QUuid& id)
{
    return m_scope.attempt([&]() -> std::optional<Record> {
        const auto row = known(id);
        if (!row)
            return std::nullopt;
        return recordOf(*row,
            row->needsRecord() ? m_scope.rows().values(&m_mapping.entity(), row->number)
                               : std::nullopt);
    });
}

std::optional<MirroredRow> SqliteRecordShelf::known(const QUuid& id)
{
    flush();
    if (!m_lookup || m_lookup->id != id)
        m_lookup = Lookup { id, m_table.byIdentifier(id) };
    return m_lookup->row;
}

/// Nothing for a live one that is not here though nobody deleted it: then it is as if it had never
/// come, and comes again.
std::optional<Record> SqliteRecordShelf::recordOf(
    const MirroredRow& row, const std::optional<AttributeValues>& values) const
{
    if (!row.exact.isEmpty())
        return readRecordLine(row.exact, m_mapping.schema());
    if (!row.isLive())
        return Record { row.identifier, DeadRecord { row.content, {} } };
    auto attributes = values ? m_mapping.attributes(*values) : std::nullopt;
    if (!attributes)
        return std::nullopt;
    return Record { row.identifier,
        LiveRecord { { row.content, *std::move(attributes) },
            { *row.renamed, row.device, m_mapping.text(*values) }, {} } };
}

void SqliteRecordShelf::store(const Record& record)
{
    m_scope.attempt([&] { write(record); });
}

void SqliteRecordShelf::write(const Record& record)
{
    const auto before = known(record.id);
    MirroredRow row;
    row.identifier = record.id;
    if (const auto* live = std::get_if<LiveRecord>(&record.state)) {
        row.number = writeLive(before, *live);
        row.content = live->content.time;
        row.renamed = live->renaming.time;
        row.device = live->renaming.device;
    } else {
        row.number = writeDead(before);
        row.content = std::get<DeadRecord>(record.state).time;
    }
    if (!isSaidByRows(record))
        row.exact = recordLine(record);
    m_lookup = Lookup { record.id, row };
    m_unwritten = std::move(row);
}

/// Returns the record's number.
qint64 SqliteRecordShelf::writeLive(
    const std::optional<MirroredRow>& before, const LiveRecord& live)
{
    RowWriter& rows = m_scope.rows();
    const NSEntityDescription* const entity = &m_mapping.entity();
    const auto current
        = before && before->isLive() ? rows.values(entity, before->number) : std::nullopt;
    if (!current)
        return rows.insert(entity, m_mapping.merged(entity->defaultValues(), live));
    const AttributeValues merged = m_mapping.merged(*current, live);
    quint64 changed = 0;
    for (std::size_t i = 0; i < merged.size(); ++i) {
        if (!isSame(merged[i], current->at(i)))
            changed |= quint64(1) << i;
    }
    if (changed != 0)
        rows.update(entity, before->number, rows.versionOf(entity, before->number).value() + 1,
            merged, changed);
    return before->number;
}

qint64 SqliteRecordShelf::writeDead(const std::optional<MirroredRow>& before)
{
    if (!before)
        return m_table.numberForAbsent();
    if (before->isLive())
        m_scope.rows().remove(&m_mapping.entity(), before->number);
    return before->number;
}

void SqliteRecordShelf::setCarrier(const QUuid& id, const FileKey& file)
{
    m_scope.attempt([&] {
        const qint64 carrier = m_files.number(file).value();
        if (m_unwritten && m_unwritten->identifier == id) {
            m_unwritten->carrier = carrier;
            return;
        }
        flush();
        m_lookup.reset();
        m_table.setCarrier(id, carrier);
    });
}

void SqliteRecordShelf::setCarriers(std::span<const Record> records, const FileKey& file)
{
    if (records.empty())
        return;
    m_scope.attempt([&] {
        const auto first = known(records.front().id);
        const auto last = known(records.back().id);
        m_lookup.reset();
        if (!first || !last)
            return;
        // What cannot be mirrored stands between them, and has no carrier either.
        if (m_table.countUnpublished(first->number, last->number) == qint64(records.size()))
            m_table.setCarriers(first->number, last->number, m_files.number(file).value());
        else
            LocalShelf::setCarriers(records, file);
    });
}

std::vector<Record> SqliteRecordShelf::unpublished(
    const std::optional<QUuid>& after, std::size_t most)
{
    return m_scope.attempt([&] {
        flush();
        const EntityTable& entityTable = m_scope.rows().tables().of(&m_mapping.entity());
        qint64 last = std::numeric_limits<qint64>::min();
        if (const auto row = after ? m_table.byIdentifier(*after) : std::nullopt)
            last = row->number;
        std::vector<Record> records;
        while (records.empty()) { // what cannot be mirrored must not look like the end
            const auto found = m_table.unpublished(entityTable, last, most);
            if (found.empty())
                break;
            last = found.back().row.number;
            records.reserve(found.size());
            for (const auto& [row, values] : found) {
                if (auto record = recordOf(row, values))
                    records.push_back(*std::move(record));
            }
        }
        return records;
    });
}

qint64 SqliteRecordShelf::carriedBy(const FileKey& file)
{
    return m_scope.attempt([&] {
        flush();
        const auto carrier = m_files.number(file);
        return carrier ? m_table.carriedBy(*carrier) : 0;
    });
}

std::vector<SeenFile> SqliteRecordShelf::files(const QString& folder)
{
    return m_scope.attempt([&] { return m_files.files(folder); });
}

void SqliteRecordShelf::remember(const SeenFile& file)
{
    m_scope.attempt([&] { m_files.remember(file); });
}

void SqliteRecordShelf::forget(const FileKey& file)
{
    m_scope.attempt([&] {
        flush();
        m_lookup.reset();
        if (const auto carrier = m_files.number(file))
            m_table.takeCarrier(*carrier);
        m_files.forget(file);
    });
}

void SqliteRecordShelf::forgetAll()
{
    m_scope.attempt([&] {
        flush();
        m_lookup.reset();
        m_table.takeAllCarriers();
        m_files.forgetAll();
    });
}

void SqliteRecordShelf::flush()
{
    if (m_unwritten)
        m_table.write(*m_unwritten);
    m_unwritten.reset();
}

void SqliteRecordShelf::reset()
{
    m_lookup.reset();
    m_unwritten.reset();
    m_files.forgetNumbers();
}

} // namespace mirror
