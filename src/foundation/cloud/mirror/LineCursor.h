#pragma once

#include "JsonLine.h"

namespace mirror {

/// Goes through a line that is guessed to be of a known shape, from left to right and without
/// looking closely: what it gives is worth nothing before it was written again and found to be the
/// very line.
class LineCursor {
public:
    /// The line's bytes must outlive this.
    explicit LineCursor(QByteArrayView line)
        : m_rest(line)
    {
    }

    /// What does not stand here makes the guess wrong.
    void skip(QByteArrayView text);
    /// The literal, the integer or the text without escapes that stands behind `opening`; null
    /// where the guess is wrong.
    [[nodiscard]] JsonValue scalarAfter(QByteArrayView opening);

    /// Whether all that was skipped stood there, and nothing behind it.
    [[nodiscard]] bool isAtEnd() const { return m_isRight && m_rest.isEmpty(); }

private:
    JsonValue text();
    JsonValue integer();

    QByteArrayView m_rest;
    bool m_isRight = true;
};

} // namespace mirror
