#include "LineReader.h"

#include "FileHeader.h"
#include "JsonLine.h"

namespace mirror {

namespace {

constexpr qsizetype LineEndBytes = 1;
constexpr qsizetype TerminatorBytes = 1; // which the device writes behind what it read

} // namespace

LineReader::LineReader(QIODevice& device)
    : m_device(device)
    , m_buffer(JsonLimits::LineBytes + LineEndBytes + TerminatorBytes, '\0')
{
}

std::optional<LineReader::Line> LineReader::next()
{
    if (m_isAtEnd || m_bytesRead > FileLimits::ReadBytes)
        return std::nullopt;
    const qint64 size = fill();
    if (size <= 0)
        return std::nullopt;
    const QByteArrayView read(m_buffer.constData(), size);
    if (read.endsWith('\n'))
        return Line { read.chopped(LineEndBytes), m_bytesRead <= FileLimits::ReadBytes };
    skipLine();
    return Line {};
}

/// The size of the line, or of the piece of a line, that is now in the buffer.
qint64 LineReader::fill()
{
    const qint64 size = m_device.readLine(m_buffer.data(), m_buffer.size());
    m_isAtEnd = size <= 0;
    m_bytesRead += std::max<qint64>(size, 0);
    return size;
}

void LineReader::skipLine()
{
    while (m_bytesRead <= FileLimits::ReadBytes) {
        const qint64 size = fill();
        if (size <= 0 || m_buffer.at(size - 1) == '\n')
            return;
    }
}

} // namespace mirror
