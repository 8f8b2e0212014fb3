#pragma once

#include "FileStore.h"
#include "LocalMirror.h"
#include "RecordSchema.h"

#include <functional>
#include <map>
#include <set>
#include <span>

namespace mirror {

/// What the mirror needs of the world; each part outlives it.
struct MirrorWorld {
    FileStore& files;
    LocalMirror& local;
    const RecordSchema& schema;
    std::function<WallTime()> now;
    std::function<quint64()> random; ///< 64 bits, unpredictable for other devices
};

/// When files are joined into fewer.
struct CompactionRule {
    std::size_t files = 32; ///< above so many
    qint64 bytes
        = qint64(512) * 1024; ///< or from so many with more than half of the lines outdated
    std::size_t inputs = 64; ///< at once
    std::chrono::milliseconds delay = std::chrono::minutes(2); ///< at most, at random
};

/// What happened in one sync.
struct SyncCounts {
    qint64 rowsChanged = 0; ///< by what was read
    qint64 rowsPublished = 0;
    qint64 badLines = 0;
    int doubtfulFiles = 0; ///< to be tried again
    int filesDeleted = 0;
};

enum class Carriers { Set, Leave };

/// Keeps the rows of one kind equal to the files of a folder: reads files that are new, writes rows
/// that no file carries, and joins many files into few. Deletes nothing but files that it
/// understood to the last line, after what they say was written and read back.
///
/// Every function ends early with the first error that the next request would meet as well. All may
/// be repeated after an error or a crash at any point.
template <class Row> class FolderMirror {
public:
    FolderMirror(MirrorWorld& world, LocalShelf<Row>& shelf, WriterId writer, CompactionRule rule)
        : m_world(world)
        , m_shelf(shelf)
        , m_writer(writer)
        , m_rule(rule)
    {
    }

    /// Reads the files of a listing that are not known. From a folder that is only read, no row is
    /// carried.
    Outcome<> pull(const QString& folder, const QList<FileEntry>& listing, Carriers carriers);
    /// Files that a later listing lacks, too, after a while at random, are forgotten, and what they
    /// carried will be published again.
    Outcome<> forgetVanished(const QString& folder, const QList<FileEntry>& listing);
    /// Writes every row that no file carries.
    Outcome<> publish(const QString& folder);
    /// To be called where all is published. Waits at random between the first call that finds the
    /// files to be too many, and joining them.
    Outcome<> compactWhenDue(const QString& folder);

    [[nodiscard]] bool hasUnpublished();
    /// Whether a later call will do what this one put off.
    [[nodiscard]] bool isWaiting() const { return !m_vanished.empty() || m_compactionDue; }
    [[nodiscard]] SyncCounts takeCounts() { return std::exchange(m_counts, {}); }

private:
    using Key = typename LocalShelf<Row>::Key;

    Outcome<> readFile(SeenFile file, Carriers carriers);
    Outcome<> mergeFile(SeenFile file, QIODevice& bytes, Carriers carriers);
    void merge(const Row& row, const FileKey& file, Carriers carriers);
    void observe(HybridTime latest);
    Outcome<> publishPart(const QString& folder, std::span<const Row> rows, std::size_t& taken);
    Outcome<> carry(const FileKey& file, qint64 size, std::span<const Row> rows);
    [[nodiscard]] FileOrigin origin();
    std::vector<SeenFile> filesToCompact(const QString& folder);
    Outcome<> compact(const QString& folder, const std::vector<SeenFile>& inputs);
    Outcome<std::set<Key>> keysIn(const std::vector<SeenFile>& inputs);
    Outcome<std::vector<Row>> rowsOf(const std::set<Key>& keys);
    Outcome<std::set<QString>> writeChecked(const QString& folder, std::span<const Row> rows);
    Outcome<> deleteFiles(const std::vector<SeenFile>& files, const std::set<QString>& written);
    Outcome<> forget(const FileKey& file);

    MirrorWorld& m_world;
    LocalShelf<Row>& m_shelf;
    WriterId m_writer;
    CompactionRule m_rule;
    SyncCounts m_counts;
    qint64 m_partBytes = FileLimits::WrittenBytes;
    std::map<QString, WallTime> m_vanished; // by path: when it may be forgotten
    std::optional<WallTime> m_compactionDue;
};

extern template class FolderMirror<Record>;
extern template class FolderMirror<KeyValue>;

/// The error of a local store that did not take or give something.
[[nodiscard]] FileError localFailure();

} // namespace mirror
