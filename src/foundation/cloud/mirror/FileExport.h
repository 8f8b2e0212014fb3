#pragma once

#include "MirrorWorld.h"
#include "PartBuilder.h"

#include <span>

namespace mirror {

/// Writes rows of one kind into files.
template <class Row> class FileExport {
public:
    FileExport(MirrorWorld& world, LocalShelf<Row>& shelf, WriterId writer)
        : m_world(world)
        , m_shelf(shelf)
        , m_writer(writer)
    {
    }

    /// A file that may be stored under its name.
    struct NamedPart {
        FileKey file;
        FilePart content;
    };

    /// Writes every row that no file carries.
    Outcome<> publish(const QString& folder);
    [[nodiscard]] bool hasUnpublished();

    /// A file with the first of the rows, of which there is at least one.
    Outcome<NamedPart> build(const QString& folder, std::span<const Row> rows, WriterId writer);
    /// The file is there, and was built of rows that begin with those that it holds: it carries
    /// each of them that still is what it was then. Where the local mirror still has the revision
    /// that they were read at, none needs to be looked at.
    Outcome<> carry(
        const NamedPart& part, std::span<const Row> rows, std::optional<qint64> revision);

    /// How many rows publish() wrote.
    [[nodiscard]] qint64 takeCount() { return std::exchange(m_rowsPublished, 0); }

private:
    void growParts();
    Outcome<std::size_t> publishPart(
        const QString& folder, std::span<const Row> rows, qint64 revision);

    MirrorWorld& m_world;
    LocalShelf<Row>& m_shelf;
    WriterId m_writer;
    qint64 m_rowsPublished = 0;
    qint64 m_partBytes = FileLimits::WrittenBytes;
    WallTime m_partBytesSince; // when they were made fewer
};

extern template class FileExport<Record>;
extern template class FileExport<KeyValue>;

} // namespace mirror
