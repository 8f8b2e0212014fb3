#pragma once

#include "RecordState.h"

namespace mirror {

/// 64 bits drawn at each start of the program, and for each file that others are joined into: they
/// part the names of files that say the same.
enum class WriterId : quint64 {};

/// Who wrote a file.
struct FileOrigin {
    DeviceId device {};
    WriterId writer {};

    bool operator==(const FileOrigin& other) const = default;
};

/// The first line of a file.
struct FileHeader {
    QByteArray format; ///< what the other lines are
    qint64 lines = 0; ///< how many follow
    FileOrigin origin;

    bool operator==(const FileHeader& other) const = default;
};

/// What a file may hold at most.
struct FileLimits {
    static constexpr qint64 WrittenBytes = qint64(1024) * 1024; ///< as we write it
    static constexpr qint64 ReadBytes = 8 * WrittenBytes; ///< whoever wrote it
    static constexpr qint64 Lines = 50'000; ///< after the header
};

/// Without its line end.
[[nodiscard]] QByteArray headerLine(const FileHeader& header);

/// Nothing where the line is no header of that format in this version. Members that a newer program
/// added are skipped.
[[nodiscard]] std::optional<FileHeader> readHeaderLine(
    QByteArrayView line, const QByteArray& format);

} // namespace mirror
