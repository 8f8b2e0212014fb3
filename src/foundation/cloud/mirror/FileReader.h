#pragma once

#include "FileHeader.h"
#include "LineReader.h"

namespace mirror {

/// How far a file was understood. Only what was understood whole may ever be deleted.
enum class FileStatus : quint8 {
    NotUnderstood, ///< another format or version, or no header
    Partial, ///< lines were skipped, are missing or too many, or were not all read yet
    Understood,
};

/// Reads the header and then the lines of a file, whatever its bytes are. A line that is not
/// understood is skipped and counted.
class FileReader {
public:
    /// Reads the header. The device must be open for reading and outlive this.
    FileReader(QIODevice& device, const QByteArray& format);

    /// The next line that is whole and within the limit, until the next call; nothing at the end,
    /// and at once in a file that is not understood.
    [[nodiscard]] std::optional<QByteArrayView> next();
    /// The line that next() gave last was not understood.
    void reject();

    /// Of what was read so far; final once next() returned nothing.
    [[nodiscard]] FileStatus status() const;
    /// Nothing in a file that is not understood.
    [[nodiscard]] const std::optional<FileHeader>& header() const { return m_header; }
    [[nodiscard]] qint64 badLines() const { return m_badLines; }

private:
    LineReader m_lines;
    std::optional<FileHeader> m_header;
    qint64 m_linesRead = 0; // after the header
    qint64 m_badLines = 0;
};

} // namespace mirror
