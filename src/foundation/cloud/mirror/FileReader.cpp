#include "FileReader.h"

namespace mirror {

FileReader::FileReader(QIODevice& device, const QByteArray& format)
    : m_lines(device)
{
    const auto line = m_lines.next();
    if (line && line->isWhole)
        m_header = readHeaderLine(line->bytes, format);
}

std::optional<QByteArrayView> FileReader::next()
{
    while (m_header && m_linesRead <= FileLimits::Lines) {
        const auto line = m_lines.next();
        if (!line || ++m_linesRead > FileLimits::Lines)
            break;
        if (line->isWhole)
            return line->bytes;
        ++m_badLines;
    }
    return std::nullopt;
}

void FileReader::reject() { ++m_badLines; }

FileStatus FileReader::status() const
{
    if (!m_header)
        return FileStatus::NotUnderstood;
    const bool isWhole = m_lines.isAtEnd() && m_badLines == 0 && m_linesRead == m_header->lines;
    return isWhole ? FileStatus::Understood : FileStatus::Partial;
}

} // namespace mirror
