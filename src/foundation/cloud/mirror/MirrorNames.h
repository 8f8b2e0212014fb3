#pragma once

#include <QByteArray>
#include <QString>

#include <compare>
#include <optional>

// The names on the server that mean something to the mirror. Each function that reads one returns
// nothing for any other name, which is then none of ours: ignored, and never deleted.

namespace mirror {

/// What a file of lines holds.
enum class FileContent : quint8 { Records, KeyValues };

/// The name of a file of lines, which says what its bytes are.
struct FileName {
    FileContent content = FileContent::Records;
    QByteArray sha256; ///< of the whole file: 64 lower-case hexadecimal digits

    [[nodiscard]] static FileName of(FileContent content, QByteArrayView bytes);
    /// "b1-<sha256>.jsonl" for records, "k1-<sha256>.jsonl" for keys and values.
    [[nodiscard]] static std::optional<FileName> fromText(QStringView name);
    [[nodiscard]] QString toText() const;

    bool operator==(const FileName& other) const = default;
};

/// One life of the record zone, from its creation until it is deleted on purpose. Its folder's name
/// is its identity and is never used again. Ordered by the time of creation.
struct Epoch {
    qint64 milliseconds = 0; ///< of its creation, since 1970 UTC: 0 to 9999999999999
    quint64 random = 0;

    /// "e-<13 digits>-<16 hexadecimal digits>".
    [[nodiscard]] static std::optional<Epoch> fromFolderName(QStringView name);
    [[nodiscard]] QString folderName() const;

    /// "closed-e-<13 digits>-<16 hexadecimal digits>.json": the marker that this epoch was deleted.
    [[nodiscard]] static std::optional<Epoch> fromClosedMarkerName(QStringView name);
    [[nodiscard]] QString closedMarkerName() const;

    std::strong_ordering operator<=>(
        const Epoch& other) const = default; // NOLINT(modernize-use-nullptr)
};

} // namespace mirror
