#pragma once

#include <QByteArray>

#include <optional>

// Numbers that are written with a fixed count of digits, so that their texts sort as they do.

namespace mirror {

/// Decimal, with leading zeros. The number must not be negative and must fit into the width.
[[nodiscard]] QByteArray fixedDecimal(qint64 number, int width);
/// Nothing but a text of exactly that many ASCII digits is read; at most 18 of them.
[[nodiscard]] std::optional<qint64> readFixedDecimal(QByteArrayView text, int width);

/// Sixteen lower-case hexadecimal digits.
[[nodiscard]] QByteArray fixedHex(quint64 number);
/// Nothing but sixteen lower-case hexadecimal digits is read.
[[nodiscard]] std::optional<quint64> readFixedHex(QByteArrayView text);

[[nodiscard]] bool isLowerHex(QByteArrayView text);

} // namespace mirror
