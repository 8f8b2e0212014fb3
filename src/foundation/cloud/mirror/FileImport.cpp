#include "FileImport.h"

#include "RowFormat.h"

#include <QTemporaryFile>

#include <map>

namespace mirror {

namespace {

constexpr std::size_t RowsPerTransaction = 500;
constexpr std::size_t MaxFiles = 256;
constexpr qint64 MaxFolderBytes = qint64(64) * 1024 * 1024;

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

bool isSame(const SeenFile& seen, const FileEntry& listed)
{
    return seen.state != SeenFile::State::Unread && (!listed.size || seen.size == listed.size);
}

bool isFileOf(FileContent content, const FileEntry& entry)
{
    const auto name = FileName::fromText(entry.name);
    return entry.type == FileEntry::Type::File && name && name->content == content;
}

} // namespace

template <class Row>
Outcome<> FileImport<Row>::pull(
    const QString& folder, const QList<FileEntry>& listing, Carriers carriers)
{
    std::map<QString, SeenFile> seen;
    auto looked = transact(m_world.local, [&] {
        for (SeenFile& file : m_shelf.files(folder))
            seen.insert_or_assign(file.key.name, std::move(file));
    });
    if (!looked)
        return looked;
    m_doubtful.keepListed(folder, listing);
    std::size_t count = 0;
    qint64 bytes = 0;
    for (const FileEntry& entry : listing) {
        if (!isFileOf(RowFormat<Row>::Content, entry))
            continue;
        bytes += entry.size.value_or(0);
        if (++count > MaxFiles || bytes > MaxFolderBytes) {
            ++m_counts.ignoredFiles;
            continue;
        }
        const auto known = seen.find(entry.name);
        if ((known != seen.end() && isSame(known->second, entry))
            || m_doubtful.isPutOff(folder + entry.name, entry.size))
            continue;
        if (auto read = readFile({ { folder, entry.name }, entry.size }, carriers); !read)
            return read;
    }
    return {};
}

template <class Row> Outcome<> FileImport<Row>::readFile(SeenFile file, Carriers carriers)
{
    // What it carried, it carried when it was another file.
    if (auto forgotten = transact(m_world.local, [&] { m_shelf.forget(file.key); }); !forgotten)
        return forgotten;
    QTemporaryFile bytes;
    if (!bytes.open())
        return localFailure();
    const auto download = m_world.files.get(file.key.path(), bytes, FileLimits::ReadBytes);
    return readFrom(std::move(file), download, bytes, carriers);
}

template <class Row>
Outcome<> FileImport<Row>::readFrom(
    SeenFile file, const Outcome<Download>& download, QIODevice& bytes, Carriers carriers)
{
    if (!download && download.error().kind == FileError::Kind::NotFound)
        return {}; // deleted since it was listed
    if (!download && !isAboutOneFile(download.error()))
        return download.error();
    // A file that is not as long as it was listed was broken off, or is being written.
    if (!download || (file.size && download->size != *file.size)) {
        m_doubtful.add(file.key.path(), file.size);
        return {};
    }
    m_doubtful.remove(file.key.path());
    if (isAsNamed(*download, file.key))
        return mergeFile(std::move(file), bytes, carriers);
    file.state = SeenFile::State::Damaged;
    return transact(m_world.local, [&] { m_shelf.remember(file); });
}

/// The file is remembered from the first row that it carries, so that it is looked for, and as
/// unread until its last.
template <class Row>
Outcome<> FileImport<Row>::mergeFile(SeenFile file, QIODevice& bytes, Carriers carriers)
{
    bytes.seek(0);
    auto reader = RowFormat<Row>::reader(bytes, m_world.schema);
    for (bool isAtEnd = false; !isAtEnd;) {
        LocalTransaction writing(m_world.local);
        m_shelf.remember(file);
        HybridTime latest;
        for (std::size_t i = 0; i < RowsPerTransaction && !isAtEnd; ++i) {
            const auto row = reader.next();
            isAtEnd = !row;
            if (row) {
                merge(*row, file.key, carriers);
                latest = std::max(latest, RowFormat<Row>::latest(*row));
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
void FileImport<Row>::merge(const Row& row, const FileKey& file, Carriers carriers)
{
    const auto known = m_shelf.find(keyOf(row));
    const Row merged = known ? RowFormat<Row>::join(*known, row) : row;
    if (merged != known) {
        m_shelf.store(merged);
        ++m_counts.rowsChanged;
    }
    if (merged == row && carriers == Carriers::Set)
        m_shelf.setCarrier(keyOf(row), file);
}

/// The clock is never behind what was read.
template <class Row> void FileImport<Row>::observe(HybridTime latest)
{
    MirrorMemory memory = m_world.local.memory();
    if (latest <= memory.lastTime)
        return;
    memory.lastTime = latest;
    m_world.local.setMemory(memory);
}

template <class Row> ImportCounts FileImport<Row>::takeCounts()
{
    ImportCounts counts = std::exchange(m_counts, {});
    counts.doubtfulFiles = m_doubtful.count();
    return counts;
}

template class FileImport<Record>;
template class FileImport<KeyValue>;

} // namespace mirror
