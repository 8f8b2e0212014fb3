#include "LocalChanges.h"

#include "RecordLine.h"
#include "SqliteRecordShelf.h"
#include "sqlite/SqliteStore.h"

namespace mirror {

void LocalChanges::startFollowing()
{
    if (progress())
        return;
    write({ m_scope.connection().integer("SELECT max(number) FROM _store_history"), 0, 0 });
}

bool LocalChanges::follow(std::size_t most)
{
    auto known = progress();
    if (!known)
        return true;
    m_origin.reset();
    std::size_t taken = 0;
    while (taken < most) {
        const std::size_t step
            = known->scanned ? scan(*known, most - taken) : takeIn(*known, most - taken);
        if (step == 0 && !known->scanned)
            break;
        taken += step;
    }
    if (taken > 0)
        write(*known);
    return taken < most;
}

bool LocalChanges::hasNews()
{
    const auto known = progress();
    if (!known)
        return false;
    if (known->scanned)
        return true;
    Query query(m_scope.connection(),
        "SELECT 1 FROM _store_history WHERE number > ? AND stamp IS NOT NULL AND author IS NOT ? "
        "LIMIT 1");
    query->bind(1, static_cast<int64_t>(known->history));
    query->bind(2, MirrorAuthor.toStdString());
    return query->executeStep();
}

auto LocalChanges::progress() -> std::optional<Progress>
{
    Query query(m_scope.connection(), "SELECT history, done, scanned FROM _mirror_progress");
    if (!query->executeStep())
        return std::nullopt;
    Progress progress { query->getColumn(0).getInt64(), query->getColumn(1).getInt64(), {} };
    if (!query->getColumn(2).isNull())
        progress.scanned = query->getColumn(2).getInt64();
    return progress;
}

void LocalChanges::write(const Progress& progress)
{
    Query query(
        m_scope.connection(), "INSERT OR REPLACE INTO _mirror_progress VALUES (1, ?, ?, ?)");
    query->clearBindings();
    query->bind(1, static_cast<int64_t>(progress.history));
    query->bind(2, static_cast<int64_t>(progress.done));
    if (progress.scanned)
        query->bind(3, static_cast<int64_t>(*progress.scanned));
    query->exec();
}

/// Returns how many records there were.
std::size_t LocalChanges::scan(Progress& progress, std::size_t most)
{
    const EntityTable& table = m_store.tables().of(&m_mapping.entity());
    std::vector<std::pair<qint64, AttributeValues>> records;
    {
        Query query(m_scope.connection(),
            table.selectSql() + " FROM " + table.name()
                + " WHERE _id > ? AND _id NOT IN (SELECT number FROM _mirror_record) "
                  "ORDER BY _id LIMIT ?");
        query->bind(1, static_cast<int64_t>(*progress.scanned));
        query->bind(2, static_cast<int64_t>(most));
        while (query->executeStep())
            records.emplace_back(query->getColumn(0).getInt64(), table.values(*query));
    }
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const auto& [number, values] : records)
        insert(number, values, now);
    if (records.size() < most)
        progress.scanned.reset();
    else
        progress.scanned = records.back().first;
    return std::max<std::size_t>(records.size(), 1); // the end of it is progress, too
}

/// Returns how many changes there were; 0 only where there is nothing more.
std::size_t LocalChanges::takeIn(Progress& progress, std::size_t most)
{
    const auto row = historyRowAfter(m_scope.connection(), m_store.tables(), progress.history);
    if (!row)
        return 0;
    const bool isOurs = row->table != nullptr && &row->table->entity() == &m_mapping.entity()
        && row->author != MirrorAuthor;
    const auto total = isOurs ? qint64(row->ids.size()) : progress.done;
    const qint64 end = std::min(total, progress.done + qint64(most));
    const auto taken = std::size_t(end - progress.done);
    for (qint64 i = progress.done; i < end; ++i)
        takeIn(*row, row->ids[std::size_t(i)]);
    progress.done = end;
    if (end == total) {
        progress.history = row->number;
        progress.done = 0;
    }
    return std::max<std::size_t>(taken, 1);
}

void LocalChanges::takeIn(const HistoryRow& row, qint64 number)
{
    auto known = m_table.byNumber(number);
    if (known && !known->isLive())
        return;
    if (row.kind == PersistentHistoryChangeKind::Delete) {
        if (known)
            remove(*std::move(known), row.stamp);
    } else if (!known) {
        if (const auto values = m_scope.rows().values(&m_mapping.entity(), number))
            insert(number, *values, row.stamp);
    } else if (row.kind == PersistentHistoryChangeKind::Update) {
        change(*std::move(known), row.attributes, row.stamp);
    }
}

/// What cannot be mirrored stays on this device alone.
void LocalChanges::insert(qint64 number, const AttributeValues& values, qint64 stamp)
{
    if (!m_mapping.isMirrorable(values))
        return;
    MirroredRow row;
    row.number = number;
    row.identifier = identifierOf(number);
    row.content = stampFor(stamp);
    row.renamed = row.content;
    row.device = m_memory.memory().device;
    m_table.write(row);
}

QUuid LocalChanges::identifierOf(qint64 number)
{
    const NSEntityDescription* entity = &m_mapping.entity();
    if (!m_origin || !m_origin->has(number))
        m_origin = originOf(
            m_scope.connection(), NSManagedObjectID(entity, number), m_store.tables().of(entity));
    return m_origin->identifierOf(number);
}

void LocalChanges::change(MirroredRow row, quint64 attributes, qint64 stamp)
{
    const auto values = m_scope.rows().values(&m_mapping.entity(), row.number);
    if (!values)
        return; // deleted since, as the history tells next
    if ((attributes & m_mapping.renamable()) != 0) {
        row.renamed = stampFor(stamp);
        row.device = m_memory.memory().device;
        auto exact
            = row.exact.isEmpty() ? std::nullopt : readRecordLine(row.exact, m_mapping.schema());
        if (exact) {
            std::get<LiveRecord>(exact->state).renaming
                = { *row.renamed, row.device, m_mapping.text(*values) };
            row.exact = recordLine(*exact);
        }
    }
    row.carrier.reset();
    m_table.write(row);
}

void LocalChanges::remove(MirroredRow row, qint64 stamp)
{
    row.content = stampFor(stamp);
    row.renamed.reset();
    row.exact.clear();
    row.carrier.reset();
    m_table.write(row);
}

HybridTime LocalChanges::stampFor(qint64 milliseconds)
{
    MirrorMemory memory = m_memory.memory();
    HybridClock clock(memory.lastTime);
    memory.lastTime
        = clock.next(WallTime(std::chrono::milliseconds(milliseconds)), memory.clockOffset);
    m_memory.setMemory(memory);
    return memory.lastTime;
}

} // namespace mirror
