#pragma once

#include "Compaction.h"
#include "FileImport.h"

#include <map>

namespace mirror {

/// What happened in one sync.
struct SyncCounts {
    qint64 rowsChanged = 0; ///< by what was read
    qint64 rowsPublished = 0;
    qint64 badLines = 0;
    int doubtfulFiles = 0; ///< that could not be read so far, and are tried again
    int ignoredFiles = 0; ///< that are more than is read
    int filesDeleted = 0;
};

/// Keeps the rows of one kind equal to the files of a folder: reads files that are new, writes rows
/// that no file carries, and joins many files into few.
///
/// Every function ends early with the first error that the next request would meet as well. All may
/// be repeated after an error or a crash at any point.
template <class Row> class FolderMirror {
public:
    FolderMirror(MirrorWorld& world, LocalShelf<Row>& shelf, WriterId writer, CompactionRule rule)
        : m_world(world)
        , m_shelf(shelf)
        , m_import(world, shelf)
        , m_export(world, shelf, writer)
        , m_compaction(world, shelf, m_export, rule)
        , m_delay(rule.delay)
    {
    }
    FolderMirror(const FolderMirror&) = delete;
    FolderMirror& operator=(const FolderMirror&) = delete;
    ~FolderMirror() = default;

    /// Reads what is new in the listing. Files that a later listing lacks, too, after a while at
    /// random, are forgotten, and what they carried will be published again.
    Outcome<> read(const QString& folder, const QList<FileEntry>& listing);
    /// From a folder that is only read, no row is carried.
    Outcome<> readOther(const QString& folder, const QList<FileEntry>& listing)
    {
        return m_import.pull(folder, listing, Carriers::Leave);
    }
    /// Writes every row that no file carries.
    Outcome<> publish(const QString& folder) { return m_export.publish(folder); }
    /// To be called where all is published.
    Outcome<> compactWhenDue(const QString& folder) { return m_compaction.compactWhenDue(folder); }

    [[nodiscard]] bool hasUnpublished() { return m_export.hasUnpublished(); }
    /// Whether a later call will do what this one put off.
    [[nodiscard]] bool isWaiting() const { return !m_vanished.empty() || m_compaction.isWaiting(); }
    [[nodiscard]] SyncCounts takeCounts();

private:
    Outcome<> forgetVanished(const QString& folder, const QList<FileEntry>& listing);

    MirrorWorld& m_world;
    LocalShelf<Row>& m_shelf;
    FileImport<Row> m_import;
    FileExport<Row> m_export;
    Compaction<Row> m_compaction;
    std::chrono::milliseconds m_delay;
    std::map<QString, WallTime> m_vanished; // by path: when it may be forgotten
};

extern template class FolderMirror<Record>;
extern template class FolderMirror<KeyValue>;

} // namespace mirror
