#pragma once

#include <QByteArray>
#include <QString>

#include <compare>
#include <optional>

namespace mirror {

/// A text as it is mirrored: valid UTF-8 of at most four KiB. Ordered by its bytes, which is the
/// same on every device.
class Text {
public:
    static constexpr qsizetype MaxBytes = 4096;

    Text() = default;

    /// What is longer is cut before the first character that does not fit; a lone surrogate becomes
    /// a replacement character.
    [[nodiscard]] static Text of(QStringView text);
    /// Nothing where the bytes are no valid UTF-8, or too many.
    [[nodiscard]] static std::optional<Text> fromUtf8(QByteArrayView utf8);

    [[nodiscard]] const QByteArray& utf8() const { return m_utf8; }
    [[nodiscard]] QString toString() const { return QString::fromUtf8(m_utf8); }

    // Not defaulted: a byte array converts to a pointer, and pointers would be compared.
    std::strong_ordering operator<=>(const Text& other) const
    {
        return m_utf8.compare(other.m_utf8) <=> 0;
    }
    bool operator==(const Text& other) const = default;

private:
    explicit Text(QByteArray utf8)
        : m_utf8(std::move(utf8))
    {
    }

    QByteArray m_utf8;
};

} // namespace mirror
