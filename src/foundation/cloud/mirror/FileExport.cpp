#include "FileExport.h"

#include "RowFormat.h"

namespace mirror {

namespace {

constexpr std::size_t RowsPerBatch = 3'500; // of short rows about one part
constexpr qint64 LeastPartBytes = qint64(16) * 1024;
constexpr auto SmallPartsFor = std::chrono::hours(1);

} // namespace

template <class Row> Outcome<> FileExport<Row>::publish(const QString& folder)
{
    growParts();
    std::optional<typename LocalShelf<Row>::Key> last;
    while (true) {
        std::vector<Row> rows;
        qint64 revision = 0;
        auto looked = transact(m_world.local, [&] {
            rows = m_shelf.unpublished(last, RowsPerBatch);
            revision = m_world.local.revision();
        });
        if (!looked || rows.empty())
            return looked;
        const auto taken = publishPart(folder, rows, revision);
        if (!taken)
            return taken.error();
        last = keyOf(rows.at(*taken - 1));
    }
}

template <class Row> bool FileExport<Row>::hasUnpublished()
{
    bool isAny = false;
    const auto looked
        = transact(m_world.local, [&] { isAny = !m_shelf.unpublished({}, 1).empty(); });
    return looked && isAny;
}

/// There may be room by now for what was too large an hour ago.
template <class Row> void FileExport<Row>::growParts()
{
    const WallTime now = m_world.now();
    if (now < m_partBytesSince || now >= m_partBytesSince + SmallPartsFor)
        m_partBytes = FileLimits::WrittenBytes;
}

/// How many of the rows are in the part.
template <class Row>
Outcome<std::size_t> FileExport<Row>::publishPart(
    const QString& folder, std::span<const Row> rows, qint64 revision)
{
    while (true) {
        const auto part = build(folder, rows, m_writer);
        if (!part)
            return part.error();
        const std::size_t taken = part->content.taken;
        const auto stored = m_world.files.put(part->file.path(), part->content.bytes);
        if (stored) {
            m_rowsPublished += qint64(taken);
            const auto carried = carry(*part, rows, revision);
            return carried ? Outcome<std::size_t>(taken) : carried.error();
        }
        if (stored.error().kind != FileError::Kind::TooLarge || taken == 1
            || m_partBytes <= LeastPartBytes)
            return stored.error();
        m_partBytes /= 2;
        m_partBytesSince = m_world.now();
    }
}

template <class Row>
auto FileExport<Row>::build(const QString& folder, std::span<const Row> rows, WriterId writer)
    -> Outcome<NamedPart>
{
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    FilePart part
        = RowFormat<Row>::write(rows, m_world.schema, { known->device, writer }, m_partBytes);
    const QString name = FileName::of(RowFormat<Row>::Content, part.bytes).toText();
    return NamedPart { { folder, name }, std::move(part) };
}

template <class Row>
Outcome<> FileExport<Row>::carry(
    const NamedPart& part, std::span<const Row> rows, std::optional<qint64> revision)
{
    return transact(m_world.local, [&] {
        const bool isUnchanged = m_world.local.revision() == revision;
        m_shelf.remember({ part.file, part.content.bytes.size(), SeenFile::State::Understood,
            qint64(part.content.taken) });
        const std::span<const Row> written = rows.first(part.content.taken);
        if (isUnchanged) {
            m_shelf.setCarriers(written, part.file);
            return;
        }
        for (const Row& row : written) {
            if (m_shelf.find(keyOf(row)) == row)
                m_shelf.setCarrier(keyOf(row), part.file);
        }
    });
}

template class FileExport<Record>;
template class FileExport<KeyValue>;

} // namespace mirror
