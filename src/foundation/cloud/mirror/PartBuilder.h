#pragma once

#include "FileHeader.h"

namespace mirror {

/// A whole file with the first records, or entries, of a range.
struct FilePart {
    QByteArray bytes;
    std::size_t taken = 0; ///< how many; at least one of a range that is not empty
};

/// Fills one file with lines, as many as fit.
class PartBuilder {
public:
    PartBuilder(const QByteArray& format, const FileOrigin& origin, qint64 maxBytes);

    /// False where the line, without its line end, no longer fits; the first one always does.
    [[nodiscard]] bool add(const QByteArray& line);

    [[nodiscard]] FilePart build() const;

private:
    FileHeader m_header;
    qint64 m_roomLeft = 0;
    QByteArray m_lines;
};

} // namespace mirror
