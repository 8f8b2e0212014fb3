#include "Compaction.h"

#include "RetryDelay.h"
#include "RowFormat.h"

#include <QBuffer>
#include <QTemporaryFile>

#include <algorithm>

namespace mirror {

namespace {

using namespace std::chrono_literals;

constexpr qint64 MaxInputBytes = 4 * FileLimits::WrittenBytes; // what is held in memory

} // namespace

template <class Row> Outcome<> Compaction<Row>::compactWhenDue(const QString& folder)
{
    if (isPaused())
        return {};
    if (!m_joined.empty()) {
        auto deleted = settle(deleteJoinedBefore());
        if (deleted)
            giveUpJoined();
        return deleted;
    }
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
    return settle(compact(folder, inputs));
}

/// A clock that was set back must not put it off for long.
template <class Row> bool Compaction<Row>::isPaused() const
{
    const WallTime now = m_world.now();
    return m_failures > 0 && m_failedAt <= now
        && now < m_failedAt + doubledDelay(5min, 24h, m_failures);
}

template <class Row> Outcome<> Compaction<Row>::settle(const Outcome<>& attempt)
{
    if (attempt) {
        m_failures = 0;
        return {};
    }
    if (attempt.error().kind == FileError::Kind::NotFound)
        return {}; // another device was faster
    if (!isAboutOneFile(attempt.error()))
        return attempt;
    ++m_failures;
    m_failedAt = m_world.now();
    return {};
}

/// What was to be deleted stays, unless all that it stands in is still there.
template <class Row> Outcome<> Compaction<Row>::deleteJoinedBefore()
{
    for (const FileKey& written : m_written) {
        QBuffer copy;
        copy.open(QIODevice::WriteOnly);
        const auto download = m_world.files.get(written.path(), copy, FileLimits::ReadBytes);
        const bool isGone = !download && download.error().kind == FileError::Kind::NotFound;
        if (!download && !isGone)
            return download.error();
        if (isGone || !isAsNamed(*download, written)) {
            m_joined.clear();
            return {};
        }
    }
    return deleteJoined();
}

/// None where there is no need.
template <class Row> std::vector<SeenFile> Compaction<Row>::filesToCompact(const QString& folder)
{
    LocalTransaction reading(m_world.local);
    std::vector<SeenFile> files = m_shelf.files(folder);
    // What an attempt stored would make other inputs of the same, and so another file each time.
    std::erase_if(files, [this](const SeenFile& file) {
        return file.state != SeenFile::State::Understood || !file.size
            || m_attempted.contains(file.key.path()) || m_undeletable.contains(file.key.path());
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
    chooseWriter(inputs);
    m_written.clear();
    if (auto written = writeChecked(folder, *rows); !written)
        return written;
    m_attempted.clear();
    m_joined = inputs;
    return deleteJoined();
}

/// One for each set of files that are joined: an attempt that failed is repeated under its name, so
/// that a server that keeps only halves is not filled with them.
template <class Row> void Compaction<Row>::chooseWriter(const std::vector<SeenFile>& inputs)
{
    std::set<QString> paths;
    for (const SeenFile& input : inputs)
        paths.insert(input.key.path());
    if (std::exchange(m_inputs, paths) != paths)
        m_writer = WriterId(m_world.random());
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
        if (!isAsNamed(*download, input.key) || reader.file().status() != FileStatus::Understood)
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
        const auto part = m_export.build(folder, rows, m_writer);
        if (!part)
            return part.error();
        const QString path = part->file.path();
        m_attempted.insert(path);
        if (auto stored = m_world.files.put(path, part->content.bytes); !stored)
            return stored;
        QBuffer copy;
        copy.open(QIODevice::WriteOnly);
        const auto readBack = m_world.files.get(path, copy, FileLimits::ReadBytes);
        if (!readBack || copy.data() != part->content.bytes)
            return readBack ? notUnderstood(
                       QStringLiteral("A file that was stored is not there as it was stored."))
                            : readBack.error();
        if (auto carried = m_export.carry(*part, rows, std::nullopt); !carried)
            return carried;
        m_written.push_back(part->file);
        rows = rows.subspan(part->content.taken);
    }
    return {};
}

/// One that the server keeps does not keep the others.
template <class Row> Outcome<> Compaction<Row>::deleteJoined()
{
    Outcome<> result;
    std::vector<SeenFile> kept;
    while (!m_joined.empty()) {
        if (auto deleted = deleteFile(m_joined.back()); !deleted) {
            result = deleted;
            if (!isAboutOneFile(deleted.error()))
                break;
            kept.push_back(m_joined.back());
        }
        m_joined.pop_back();
    }
    m_joined.insert(m_joined.end(), kept.begin(), kept.end());
    return result;
}

/// Forgotten first: nothing may be believed to stand in a file that is about to go. One that stays
/// is known again, so that it is not read as if it were new.
template <class Row> Outcome<> Compaction<Row>::deleteFile(const SeenFile& file)
{
    auto forgotten = transact(m_world.local, [&] { m_shelf.forget(file.key); });
    if (!forgotten)
        return forgotten;
    auto removed = m_world.files.remove(file.key.path(), Trash::Skip);
    if (!removed && removed.error().kind != FileError::Kind::NotFound) {
        auto remembered = transact(m_world.local, [&] { m_shelf.remember(file); });
        return remembered ? removed : remembered;
    }
    ++m_filesDeleted;
    return {};
}

template <class Row> void Compaction<Row>::giveUpJoined()
{
    for (const SeenFile& file : std::exchange(m_joined, {}))
        m_undeletable.insert(file.key.path());
}

template class Compaction<Record>;
template class Compaction<KeyValue>;

} // namespace mirror
