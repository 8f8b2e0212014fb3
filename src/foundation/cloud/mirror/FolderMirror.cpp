#include "FolderMirror.h"

#include "KeyValueFile.h"
#include "RecordFile.h"

#include <QBuffer>
#include <QTemporaryFile>

#include <algorithm>

namespace mirror {

namespace {

constexpr std::size_t RowsPerTransaction = 500;
constexpr std::size_t RowsPerBatch = 5'000; // of short rows about one part
constexpr std::size_t MaxFiles = 256;
constexpr qint64 MaxFolderBytes = qint64(64) * 1024 * 1024;
constexpr qint64 MaxCompactedBytes = 4 * FileLimits::WrittenBytes; // what is held in memory
constexpr qint64 LeastPartBytes = qint64(16) * 1024;

template <class Row> struct Format;

template <> struct Format<Record> {
    static constexpr FileContent Content = FileContent::Records;
    static FilePart write(
        std::span<const Record> rows, const RecordSchema& schema, FileOrigin origin, qint64 bytes)
    {
        return writeRecords(rows, schema, origin, bytes);
    }
    static RecordReader reader(QIODevice& device, const RecordSchema& schema)
    {
        return { device, schema };
    }
    static Record join(const Record& left, const Record& right)
    {
        return { left.id, mirror::join(left.state, right.state) };
    }
    static HybridTime latest(const Record& record)
    {
        if (const auto* live = std::get_if<LiveRecord>(&record.state))
            return std::max(live->content.time, live->renaming.time);
        return std::get<DeadRecord>(record.state).time;
    }
};

template <> struct Format<KeyValue> {
    static constexpr FileContent Content = FileContent::KeyValues;
    static FilePart write(std::span<const KeyValue> rows, const RecordSchema& /*schema*/,
        FileOrigin origin, qint64 bytes)
    {
        return writeKeyValues(rows, origin, bytes);
    }
    static KeyValueReader reader(QIODevice& device, const RecordSchema& /*schema*/)
    {
        return KeyValueReader(device);
    }
    static KeyValue join(const KeyValue& left, const KeyValue& right)
    {
        return { left.key, mirror::join(left.state, right.state) };
    }
    static HybridTime latest(const KeyValue& entry) { return entry.state.time; }
};

SeenFile::State stateOf(FileStatus status)
{
    switch (status) {
    case FileStatus::Understood:
        return SeenFile::State::Understood;
    case FileStatus::Partial:
        return SeenFile::State::Partial;
    default:
        return SeenFile::State::NotUnderstood;
    }
}

std::map<QString, SeenFile> byName(std::vector<SeenFile> files)
{
    std::map<QString, SeenFile> result;
    for (SeenFile& file : files)
        result.insert_or_assign(file.key.name, std::move(file));
    return result;
}

bool isSame(const SeenFile& seen, const FileEntry& listed)
{
    return seen.state != SeenFile::State::Unread && (!listed.size || seen.size == listed.size);
}

bool isFileOf(FileContent content, const FileEntry& entry)
{
    const auto name = FileName::fromText(entry.name);
    return entry.type == FileEntry::Type::File && name && name->content == content;
}

QByteArray hashIn(const QString& name) { return FileName::fromText(name).value().sha256; }

} // namespace

FileError localFailure()
{
    return { FileError::Kind::LocalFile, 0, std::nullopt,
        QStringLiteral("What is remembered of the mirror could not be read or written.") };
}

template <class Row>
Outcome<> FolderMirror<Row>::pull(
    const QString& folder, const QList<FileEntry>& listing, Carriers carriers)
{
    LocalTransaction reading(m_world.local);
    const auto seen = byName(m_shelf.files(folder));
    if (!reading.commit())
        return localFailure();
    std::size_t count = 0;
    qint64 bytes = 0;
    for (const FileEntry& entry : listing) {
        if (!isFileOf(Format<Row>::Content, entry))
            continue;
        bytes += entry.size.value_or(0);
        if (++count > MaxFiles || bytes > MaxFolderBytes)
            break;
        const auto known = seen.find(entry.name);
        if (known != seen.end() && isSame(known->second, entry))
            continue;
        if (auto read = readFile({ { folder, entry.name }, entry.size }, carriers); !read)
            return read;
    }
    return {};
}

template <class Row> Outcome<> FolderMirror<Row>::readFile(SeenFile file, Carriers carriers)
{
    // What it carried, it carried when it was another file.
    if (auto forgotten = forget(file.key); !forgotten)
        return forgotten;
    QTemporaryFile bytes;
    if (!bytes.open())
        return localFailure();
    const auto download = m_world.files.get(file.key.path(), bytes, FileLimits::ReadBytes);
    if (!download && download.error().kind == FileError::Kind::NotFound)
        return {}; // deleted since it was listed
    if (!download && download.error().kind != FileError::Kind::NotUnderstood)
        return download.error();
    // A file that is not as long as it was listed was broken off, or is being written.
    if (!download || (file.size && download->size != *file.size)) {
        ++m_counts.doubtfulFiles;
        return {};
    }
    if (download->sha256 == hashIn(file.key.name))
        return mergeFile(std::move(file), bytes, carriers);
    file.state = SeenFile::State::Damaged;
    LocalTransaction writing(m_world.local);
    m_shelf.remember(file);
    return writing.commit() ? Outcome<>() : localFailure();
}

/// The file is remembered from the first row that it carries, so that it is looked for, and as
/// unread until its last.
template <class Row>
Outcome<> FolderMirror<Row>::mergeFile(SeenFile file, QIODevice& bytes, Carriers carriers)
{
    bytes.seek(0);
    auto reader = Format<Row>::reader(bytes, m_world.schema);
    for (bool isAtEnd = false; !isAtEnd;) {
        LocalTransaction writing(m_world.local);
        m_shelf.remember(file);
        HybridTime latest;
        for (std::size_t i = 0; i < RowsPerTransaction && !isAtEnd; ++i) {
            const auto row = reader.next();
            isAtEnd = !row;
            if (row) {
                merge(*row, file.key, carriers);
                latest = std::max(latest, Format<Row>::latest(*row));
            }
        }
        observe(latest);
        if (isAtEnd) {
            file.state = stateOf(reader.file().status());
            file.lines = reader.file().header() ? reader.file().header()->lines : 0;
            m_shelf.remember(file);
            m_counts.badLines += reader.file().badLines();
        }
        if (!writing.commit())
            return localFailure();
    }
    return {};
}

template <class Row>
void FolderMirror<Row>::merge(const Row& row, const FileKey& file, Carriers carriers)
{
    const auto known = m_shelf.find(keyOf(row));
    const Row merged = known ? Format<Row>::join(*known, row) : row;
    if (merged != known) {
        m_shelf.store(merged);
        ++m_counts.rowsChanged;
    }
    if (merged == row && carriers == Carriers::Set)
        m_shelf.setCarrier(keyOf(row), file);
}

/// The clock is never behind what was read.
template <class Row> void FolderMirror<Row>::observe(HybridTime latest)
{
    MirrorMemory memory = m_world.local.memory();
    if (latest <= memory.lastTime)
        return;
    memory.lastTime = latest;
    m_world.local.setMemory(memory);
}

template <class Row> Outcome<> FolderMirror<Row>::forget(const FileKey& file)
{
    LocalTransaction writing(m_world.local);
    m_shelf.forget(file);
    return writing.commit() ? Outcome<>() : localFailure();
}

template <class Row>
Outcome<> FolderMirror<Row>::forgetVanished(const QString& folder, const QList<FileEntry>& listing)
{
    LocalTransaction reading(m_world.local);
    auto missing = byName(m_shelf.files(folder));
    if (!reading.commit())
        return localFailure();
    for (const FileEntry& entry : listing)
        missing.erase(entry.name);
    std::erase_if(m_vanished, [&](const auto& each) {
        return !each.first.startsWith(folder) || !missing.contains(each.first.mid(folder.size()));
    });
    for (const auto& [name, file] : missing) {
        const auto delay
            = std::chrono::milliseconds(m_world.random() % (quint64(m_rule.delay.count()) + 1));
        const auto [known, isNew] = m_vanished.try_emplace(file.key.path(), m_world.now() + delay);
        // A clock that was set back must not put it off for long.
        if (isNew
            || (m_world.now() < known->second && known->second <= m_world.now() + m_rule.delay))
            continue;
        if (auto forgotten = forget(file.key); !forgotten)
            return forgotten;
        m_vanished.erase(known);
    }
    return {};
}

template <class Row> bool FolderMirror<Row>::hasUnpublished()
{
    LocalTransaction reading(m_world.local);
    const bool isAny = !m_shelf.unpublished({}, 1).empty();
    return reading.commit() && isAny;
}

template <class Row> FileOrigin FolderMirror<Row>::origin()
{
    return { m_world.local.memory().device, m_writer };
}

template <class Row> Outcome<> FolderMirror<Row>::publish(const QString& folder)
{
    std::optional<Key> last;
    while (true) {
        LocalTransaction reading(m_world.local);
        const std::vector<Row> rows = m_shelf.unpublished(last, RowsPerBatch);
        if (!reading.commit())
            return localFailure();
        if (rows.empty())
            return {};
        std::size_t taken = 0;
        if (auto published = publishPart(folder, rows, taken); !published)
            return published;
        last = keyOf(rows.at(taken - 1));
    }
}

template <class Row>
Outcome<> FolderMirror<Row>::publishPart(
    const QString& folder, std::span<const Row> rows, std::size_t& taken)
{
    LocalTransaction reading(m_world.local);
    const FileOrigin from = origin();
    if (!reading.commit())
        return localFailure();
    while (true) {
        const FilePart part = Format<Row>::write(rows, m_world.schema, from, m_partBytes);
        const FileKey file { folder, FileName::of(Format<Row>::Content, part.bytes).toText() };
        Outcome<> stored = m_world.files.put(file.path(), part.bytes);
        taken = part.taken;
        if (stored)
            m_counts.rowsPublished += qint64(taken);
        if (stored)
            return carry(file, part.bytes.size(), rows.first(taken));
        if (stored.error().kind != FileError::Kind::TooLarge || taken == 1
            || m_partBytes <= LeastPartBytes)
            return stored;
        m_partBytes /= 2;
    }
}

/// The rows are in the file, each in the state that is given here: it may have changed meanwhile.
template <class Row>
Outcome<> FolderMirror<Row>::carry(const FileKey& file, qint64 size, std::span<const Row> rows)
{
    LocalTransaction writing(m_world.local);
    m_shelf.remember({ file, size, SeenFile::State::Understood, qint64(rows.size()) });
    for (const Row& row : rows) {
        if (m_shelf.find(keyOf(row)) == row)
            m_shelf.setCarrier(keyOf(row), file);
    }
    return writing.commit() ? Outcome<>() : localFailure();
}

template <class Row> Outcome<> FolderMirror<Row>::compactWhenDue(const QString& folder)
{
    const std::vector<SeenFile> inputs = filesToCompact(folder);
    if (inputs.empty()) {
        m_compactionDue.reset();
        return {};
    }
    const WallTime now = m_world.now();
    if (!m_compactionDue || *m_compactionDue > now + m_rule.delay) {
        m_compactionDue = now
            + std::chrono::milliseconds(m_world.random() % (quint64(m_rule.delay.count()) + 1));
        return {};
    }
    if (now < *m_compactionDue)
        return {};
    m_compactionDue.reset();
    return compact(folder, inputs);
}

/// The smallest first, as many as are worth it; none where there is no need.
template <class Row> std::vector<SeenFile> FolderMirror<Row>::filesToCompact(const QString& folder)
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
    std::vector<SeenFile> inputs;
    qint64 taken = 0;
    for (const SeenFile& file : files) {
        taken += *file.size;
        if (inputs.size() == m_rule.inputs || taken > MaxCompactedBytes)
            break;
        inputs.push_back(file);
    }
    const auto outputs
        = std::size_t(std::min(taken, MaxCompactedBytes) / FileLimits::WrittenBytes) + 1;
    return isOutdated || inputs.size() > outputs ? inputs : std::vector<SeenFile>();
}

template <class Row>
Outcome<> FolderMirror<Row>::compact(const QString& folder, const std::vector<SeenFile>& inputs)
{
    const auto keys = keysIn(inputs);
    if (!keys)
        return keys.error();
    const auto rows = rowsOf(*keys);
    if (!rows)
        return rows.error();
    const auto written = writeChecked(folder, *rows);
    if (!written)
        return written.error();
    return deleteFiles(inputs, *written);
}

/// Whose rows stand in the files, which are fetched anew: only what is now known to be in them may
/// be deleted with them.
template <class Row>
auto FolderMirror<Row>::keysIn(const std::vector<SeenFile>& inputs) -> Outcome<std::set<Key>>
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
        auto reader = Format<Row>::reader(bytes, m_world.schema);
        while (const auto row = reader.next())
            keys.insert(keyOf(*row));
        if (download->sha256 != hashIn(input.key.name)
            || reader.file().status() != FileStatus::Understood)
            return FileError { FileError::Kind::NotUnderstood, 0, std::nullopt,
                QStringLiteral("A file is no longer what it was.") };
    }
    return keys;
}

template <class Row> Outcome<std::vector<Row>> FolderMirror<Row>::rowsOf(const std::set<Key>& keys)
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
Outcome<std::set<QString>> FolderMirror<Row>::writeChecked(
    const QString& folder, std::span<const Row> rows)
{
    std::set<QString> names;
    LocalTransaction reading(m_world.local);
    const FileOrigin from = origin();
    if (!reading.commit())
        return localFailure();
    while (!rows.empty()) {
        const FilePart part = Format<Row>::write(rows, m_world.schema, from, m_partBytes);
        const FileKey file { folder, FileName::of(Format<Row>::Content, part.bytes).toText() };
        if (auto stored = m_world.files.put(file.path(), part.bytes); !stored)
            return stored.error();
        QBuffer copy;
        copy.open(QIODevice::WriteOnly);
        const auto readBack = m_world.files.get(file.path(), copy, FileLimits::ReadBytes);
        if (!readBack || copy.data() != part.bytes)
            return FileError { FileError::Kind::NotUnderstood, 0, std::nullopt,
                QStringLiteral("A file that was stored is not there as it was stored.") };
        if (auto carried = carry(file, part.bytes.size(), rows.first(part.taken)); !carried)
            return carried.error();
        names.insert(file.name);
        rows = rows.subspan(part.taken);
    }
    return names;
}

/// Forgotten first: nothing may be believed to stand in a file that is about to go. A file that was
/// written may have the name of one that it was made from.
template <class Row>
Outcome<> FolderMirror<Row>::deleteFiles(
    const std::vector<SeenFile>& files, const std::set<QString>& written)
{
    for (const SeenFile& file : files) {
        if (written.contains(file.key.name))
            continue;
        if (auto forgotten = forget(file.key); !forgotten)
            return forgotten;
        auto removed = m_world.files.remove(file.key.path(), Trash::Skip);
        if (!removed && removed.error().kind != FileError::Kind::NotFound)
            return removed;
        ++m_counts.filesDeleted;
    }
    return {};
}

template class FolderMirror<Record>;
template class FolderMirror<KeyValue>;

} // namespace mirror
