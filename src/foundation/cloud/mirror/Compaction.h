#pragma once

#include "FileExport.h"

#include <set>

namespace mirror {

/// When files are joined into fewer.
struct CompactionRule {
    std::size_t files = 32; ///< above so many
    qint64 bytes
        = qint64(512) * 1024; ///< or from so many with more than half of the lines outdated
    std::size_t inputs = 64; ///< at once
    std::chrono::milliseconds delay = std::chrono::minutes(2); ///< at most, at random
};

/// Joins many files of a folder into few, if the server lets it: what is refused keeps nobody from
/// mirroring, and is not tried again for a while that grows to a day. Deletes nothing but files
/// that it understood to the last line, after what they say was written and read back. Any device
/// may do it at any time: two that do it at once write the same twice.
///
/// What it writes gets a name that no file ever had. A file that was there before may be one that
/// another device is about to delete, because it stands in a file that would be deleted here: then
/// both were gone. What is relied upon is always younger than what is deleted.
template <class Row> class Compaction {
public:
    Compaction(
        MirrorWorld& world, LocalShelf<Row>& shelf, FileExport<Row>& files, CompactionRule rule)
        : m_world(world)
        , m_shelf(shelf)
        , m_export(files)
        , m_rule(rule)
    {
    }

    /// To be called where all is published. Waits at random between the first call that finds the
    /// files to be too many, and joining them.
    Outcome<> compactWhenDue(const QString& folder);
    /// Whether a later call will do what this one put off.
    [[nodiscard]] bool isWaiting() const { return m_due.has_value(); }

    /// How many files were deleted.
    [[nodiscard]] int takeCount() { return std::exchange(m_filesDeleted, 0); }

private:
    using Key = typename LocalShelf<Row>::Key;

    std::vector<SeenFile> filesToCompact(const QString& folder);
    [[nodiscard]] std::vector<SeenFile> worthIt(
        const std::vector<SeenFile>& files, bool isOutdated) const;
    Outcome<> compact(const QString& folder, const std::vector<SeenFile>& inputs);
    Outcome<std::set<Key>> keysIn(const std::vector<SeenFile>& inputs);
    Outcome<std::vector<Row>> rowsOf(const std::set<Key>& keys);
    Outcome<> writeChecked(const QString& folder, std::span<const Row> rows);
    void chooseWriter(const std::vector<SeenFile>& inputs);
    [[nodiscard]] bool isPaused() const;
    Outcome<> deleteJoinedBefore();
    Outcome<> deleteJoined();
    Outcome<> deleteFile(const SeenFile& file);
    void giveUpJoined();
    Outcome<> settle(const Outcome<>& attempt);

    MirrorWorld& m_world;
    LocalShelf<Row>& m_shelf;
    FileExport<Row>& m_export;
    CompactionRule m_rule;
    std::optional<WallTime> m_due;
    std::set<QString> m_inputs; // of the last attempt, by path
    WriterId m_writer {}; // of what is written for them
    std::set<QString> m_attempted; // what was stored by attempts since the last that was ended
    std::vector<FileKey> m_written; // what was read back of the last attempt
    std::vector<SeenFile> m_joined; // that stand in those, and are to be deleted
    std::set<QString> m_undeletable; // what the server keeps; left to the next start
    int m_failures = 0; // in a row
    WallTime m_failedAt;
    int m_filesDeleted = 0;
};

extern template class Compaction<Record>;
extern template class Compaction<KeyValue>;

} // namespace mirror
