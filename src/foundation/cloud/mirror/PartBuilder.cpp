#include "PartBuilder.h"

#include <QStringBuilder>

namespace mirror {

// Room for the header is reckoned with the longest count of lines.
PartBuilder::PartBuilder(const QByteArray& format, const FileOrigin& origin, qint64 maxBytes)
    : m_header { format, FileLimits::Lines, origin }
    , m_roomLeft(maxBytes - headerLine(m_header).size() - 1)
{
    m_header.lines = 0;
}

bool PartBuilder::add(const QByteArray& line)
{
    const qint64 size = line.size() + 1;
    if (m_header.lines > 0 && (size > m_roomLeft || m_header.lines == FileLimits::Lines))
        return false;
    m_lines += line + "\n";
    m_roomLeft -= size;
    ++m_header.lines;
    return true;
}

FilePart PartBuilder::build() const
{
    return { headerLine(m_header) + "\n" + m_lines, static_cast<std::size_t>(m_header.lines) };
}

} // namespace mirror
