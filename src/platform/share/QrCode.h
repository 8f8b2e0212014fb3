#pragma once

#include <QString>

#include <optional>
#include <vector>

/// A text as a square of dark and light modules (ISO/IEC 18004), of error correction level M: it
/// can be read with 15 % of it covered.
class QrCode {
public:
    /// How many light modules must surround a code.
    static constexpr int quietZone = 4;

    /// Nothing for an empty text and for one that is longer than any code holds, about 2,330 bytes
    /// in UTF-8.
    [[nodiscard]] static std::optional<QrCode> encode(const QString& text);

    /// Modules a side, without the quiet zone.
    [[nodiscard]] int side() const { return m_side; }
    /// Whether a module is dark. Counted from the upper left corner, from 0 to side() - 1.
    [[nodiscard]] bool isDark(int row, int column) const;

private:
    QrCode(int side, std::vector<bool> modules);

    int m_side;
    std::vector<bool> m_modules; // row by row
};
