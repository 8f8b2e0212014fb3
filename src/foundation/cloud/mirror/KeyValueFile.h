#pragma once

#include "FileReader.h"
#include "KeyValue.h"
#include "PartBuilder.h"

#include <span>

namespace mirror {

/// A file with the first of the entries, as many as fit into so many bytes. Called again with the
/// rest of the range it makes the next part.
[[nodiscard]] FilePart writeKeyValues(std::span<const KeyValue> entries, const FileOrigin& origin,
    qint64 maxBytes = FileLimits::WrittenBytes);

/// Reads the entries of a file one by one, whatever its bytes are, in memory for one line.
class KeyValueReader {
public:
    /// Reads the header. The device must be open for reading and outlive this.
    explicit KeyValueReader(QIODevice& device);

    /// Nothing at the end.
    [[nodiscard]] std::optional<KeyValue> next();

    /// How far the file was understood; final once next() returned nothing.
    [[nodiscard]] const FileReader& file() const { return m_file; }

private:
    FileReader m_file;
};

/// What a whole file says.
struct ReadKeyValues {
    std::vector<KeyValue> entries;
    FileStatus status = FileStatus::NotUnderstood;
    qint64 badLines = 0;
};

/// Reads a file that is in memory, whatever its bytes are.
[[nodiscard]] ReadKeyValues readKeyValues(const QByteArray& bytes);

} // namespace mirror
