#include "Compaction.h"

#include "RowFormat.h"

#include <QBuffer>
#include <QTemporaryFile>

#include <algorithm>

namespace mirror {

namespace {

constexpr qint64 MaxInputBytes = 4 * FileLimits::WrittenBytes; // what is held in memory

} // namespace

template <class Row> Outcome<> Compaction<Row>::compactWhenDue(const QString& folder)
{
    const std::vector<SeenFile> inputs = filesToCompact(folder);
    if (inputs.empty()) {
        m_due.reset();
        return {};
    }
    const WallTime now = m_world.now();
    if (!m_due || *m_due > now + m_rule.delay) {
        m_due = now + randomDelay(m_world, m_rule.delay);
        return {};
    }
    if (now < *m_due)
        return {};
    m_due.reset();
    return compact(folder, inputs);
}

/// None where there is no need.
template <class Row> std::vector<SeenFile> Compaction<Row>::filesToCompact(const QString& folder)
{
    LocalTransaction reading(m_world.local);
    std::vector<SeenFile> files = m_shelf.files(folder);
    std::erase_if(files, [](const SeenFile& file) {
        return file.state != SeenFile::State::Understood || !file.size;
    });
    qint64 bytes = 0;
    qint64 lines = 0;
    qint64 carried = 0;
    for (const SeenFile& file : files) {
        bytes += *file.size;
        lines += file.lines;
        carried += m_shelf.carriedBy(file.key);
    }
    const bool isOutdated = bytes > m_rule.bytes && 2 * carried < lines;
    if (!reading.commit() || (files.size() <= m_rule.files && !isOutdated))
        return {};
    std::ranges::sort(files, {}, [](const SeenFile& file) { return *file.size; });
    return worthIt(files, isOutdated);
}

/// As many as are worth it, from the first.
template <class Row>
std::vector<SeenFile> Compaction<Row>::worthIt(
    const std::vector<SeenFile>& files, bool isOutdated) const
{
    std::vector<SeenFile> inputs;
    qint64 taken = 0;
    for (const SeenFile& file : files) {
        taken += *file.size;
        if (inputs.size() == m_rule.inputs || taken > MaxInputBytes)
            break;
        inputs.push_back(file);
    }
    const auto outputs = std::size_t(std::min(taken, MaxInputBytes) / FileLimits::WrittenBytes) + 1;
    return isOutdated || inputs.size() > outputs ? inputs : std::vector<SeenFile>();
}

template <class Row>
Outcome<> Compaction<Row>::compact(const QString& folder, const std::vector<SeenFile>& inputs)
{
    const auto keys = keysIn(inputs);
    if (!keys)
        return keys.error();
    const auto rows = rowsOf(*keys);
    if (!rows)
        return rows.error();
    if (auto written = writeChecked(folder, *rows); !written)
        return written;
    return deleteFiles(inputs);
}

/// Whose rows stand in the files, which are fetched anew: only what is now known to be in them may
/// be deleted with them.
template <class Row>
auto Compaction<Row>::keysIn(const std::vector<SeenFile>& inputs) -> Outcome<std::set<Key>>
{
    std::set<Key> keys;
    for (const SeenFile& input : inputs) {
        QTemporaryFile bytes;
        if (!bytes.open())
            return localFailure();
        const auto download = m_world.files.get(input.key.path(), bytes, FileLimits::ReadBytes);
        if (!download)
            return download.error();
        bytes.seek(0);
        auto reader = RowFormat<Row>::reader(bytes, m_world.schema);
        while (const auto row = reader.next())
            keys.insert(keyOf(*row));
        if (download->sha256 != FileName::fromText(input.key.name).value().sha256
            || reader.file().status() != FileStatus::Understood)
            return notUnderstood(QStringLiteral("A file is no longer what it was."));
    }
    return keys;
}

template <class Row> Outcome<std::vector<Row>> Compaction<Row>::rowsOf(const std::set<Key>& keys)
{
    LocalTransaction reading(m_world.local);
    std::vector<Row> rows;
    for (const Key& key : keys) {
        const auto row = m_shelf.find(key);
        if (!row) // read before, and never dropped: without it nothing may be deleted
            return localFailure();
        rows.push_back(*row);
    }
    if (!reading.commit())
        return localFailure();
    return rows;
}

template <class Row>
Outcome<> Compaction<Row>::writeChecked(const QString& folder, std::span<const Row> rows)
{
    while (!rows.empty()) {
        const auto part = m_export.build(folder, rows, WriterId(m_world.random()));
        if (!part)
            return part.error();
        const QString path = part->file.path();
        if (auto stored = m_world.files.put(path, part->content.bytes); !stored)
            return stored;
        QBuffer copy;
        copy.open(QIODevice::WriteOnly);
        const auto readBack = m_world.files.get(path, copy, FileLimits::ReadBytes);
        if (!readBack || copy.data() != part->content.bytes)
            return notUnderstood(
                QStringLiteral("A file that was stored is not there as it was stored."));
        if (auto carried = m_export.carry(*part, rows, std::nullopt); !carried)
            return carried;
        rows = rows.subspan(part->content.taken);
    }
    return {};
}

/// Forgotten first: nothing may be believed to stand in a file that is about to go.
template <class Row> Outcome<> Compaction<Row>::deleteFiles(const std::vector<SeenFile>& files)
{
    for (const SeenFile& file : files) {
        auto forgotten = transact(m_world.local, [&] { m_shelf.forget(file.key); });
        if (!forgotten)
            return forgotten;
        auto removed = m_world.files.remove(file.key.path(), Trash::Skip);
        if (!removed && removed.error().kind != FileError::Kind::NotFound)
            return removed;
        ++m_filesDeleted;
    }
    return {};
}

template class Compaction<Record>;
template class Compaction<KeyValue>;

} // namespace mirror
