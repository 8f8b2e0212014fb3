#pragma once

#include <QIODevice>

#include <optional>

namespace mirror {

/// The lines of a device, whatever its bytes are, in memory for one line at a time. Reads at most
/// FileLimits::ReadBytes and one line of them.
class LineReader {
public:
    /// The device must be open for reading and outlive this. Where it has nothing more to give, it
    /// is at its end.
    explicit LineReader(QIODevice& device);

    struct Line {
        QByteArrayView bytes; ///< without the line end, until the next call
        bool isWhole = false; ///< has its line end and is no longer than JsonLimits::LineBytes
    };

    /// Nothing at the end, or where the limit is reached.
    [[nodiscard]] std::optional<Line> next();

    /// False also where next() stopped at the limit.
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }

private:
    qint64 fill();
    void skipLine();

    QIODevice& m_device;
    QByteArray m_buffer;
    qint64 m_bytesRead = 0;
    bool m_isAtEnd = false;
};

} // namespace mirror
