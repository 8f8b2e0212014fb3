#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace mirror {

/// A JSON value that lost nothing in reading: a number that is no 64-bit integer keeps the text it
/// was written with, members keep their order, texts are UTF-8.
struct JsonValue {
    enum class Kind : quint8 { Null, Boolean, Integer, Number, String, Array, Object };

    Kind kind = Kind::Null;
    bool boolean = false;
    qint64 integer = 0;
    QByteArray text; ///< of a String, or of a Number as it was written
    std::vector<QByteArray> names; ///< of an object's members, each beside its value
    std::vector<JsonValue> values; ///< of an object's members or an array's elements

    /// Null where this is no object or has no member of that name.
    [[nodiscard]] const JsonValue* member(QByteArrayView name) const;

    [[nodiscard]] bool is(Kind other) const { return kind == other; }
    /// Without blanks, members in their order.
    [[nodiscard]] QByteArray toText() const;
};

/// What a line may hold at most, whoever wrote it.
struct JsonLimits {
    static constexpr qsizetype LineBytes = qsizetype(64) * 1024;
    static constexpr std::size_t Nesting = 4; ///< the line's object being the first level
    static constexpr qsizetype TextBytes = 4096; ///< of a text and of a member's name
    static constexpr int Values = 256;
};

/// The JSON object that the line is, without its line end. Nothing where the bytes are no such
/// object, pass a limit, name a member twice or hold a control character, which no line has that
/// we write: it would be escaped.
[[nodiscard]] std::optional<JsonValue> readJsonLine(QByteArrayView line);

/// The text in quotes, with only that escaped which must be. The text must be valid UTF-8.
[[nodiscard]] QByteArray quotedJson(QByteArrayView utf8);

} // namespace mirror
