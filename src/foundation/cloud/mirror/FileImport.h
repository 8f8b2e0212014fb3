#pragma once

#include "DoubtfulFiles.h"

namespace mirror {

/// Whether rows are carried by the file that they are read from.
enum class Carriers { Set, Leave };

/// What happened while files were read.
struct ImportCounts {
    qint64 rowsChanged = 0;
    qint64 badLines = 0;
    int doubtfulFiles = 0; ///< that could not be read so far, and are tried again
    int ignoredFiles = 0; ///< that are more than is read
};

/// Reads files into the rows of one kind. A file is believed to the line, and only if its bytes are
/// those that its name promises.
template <class Row> class FileImport {
public:
    FileImport(MirrorWorld& world, LocalShelf<Row>& shelf)
        : m_world(world)
        , m_shelf(shelf)
        , m_doubtful(world)
    {
    }

    /// Reads the files of a listing that are not known. One that cannot be read keeps nobody from
    /// the others.
    Outcome<> pull(const QString& folder, const QList<FileEntry>& listing, Carriers carriers);

    [[nodiscard]] ImportCounts takeCounts();

private:
    Outcome<> readFile(SeenFile file, Carriers carriers);
    Outcome<> readFrom(
        SeenFile file, const Outcome<Download>& download, QIODevice& bytes, Carriers carriers);
    Outcome<> mergeFile(SeenFile file, QIODevice& bytes, Carriers carriers);
    void merge(const Row& row, const FileKey& file, Carriers carriers);
    void observe(HybridTime latest);

    MirrorWorld& m_world;
    LocalShelf<Row>& m_shelf;
    DoubtfulFiles m_doubtful;
    ImportCounts m_counts;
};

extern template class FileImport<Record>;
extern template class FileImport<KeyValue>;

} // namespace mirror
