#pragma once

#include "FileReader.h"
#include "PartBuilder.h"
#include "RecordSchema.h"

#include <span>

namespace mirror {

/// A file with the first of the records, as many as fit into so many bytes. Called again with the
/// rest of the range it makes the next part.
[[nodiscard]] FilePart writeRecords(std::span<const Record> records, const RecordSchema& schema,
    const FileOrigin& origin, qint64 maxBytes = FileLimits::WrittenBytes);

/// Reads the records of a file one by one, whatever its bytes are, in memory for one line.
class RecordReader {
public:
    /// Reads the header. The device must be open for reading; both must outlive this.
    RecordReader(QIODevice& device, const RecordSchema& schema);

    /// Nothing at the end.
    [[nodiscard]] std::optional<Record> next();

    /// How far the file was understood; final once next() returned nothing.
    [[nodiscard]] const FileReader& file() const { return m_file; }

private:
    FileReader m_file;
    const RecordSchema& m_schema;
};

/// What a whole file says.
struct ReadRecords {
    std::vector<Record> records;
    FileStatus status = FileStatus::NotUnderstood;
    qint64 badLines = 0;
};

/// Reads a file that is in memory, whatever its bytes are.
[[nodiscard]] ReadRecords readRecords(const QByteArray& bytes, const RecordSchema& schema);

} // namespace mirror
