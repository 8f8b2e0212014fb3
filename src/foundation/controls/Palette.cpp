#include "Palette.h"

const Palette& paletteFor(ColorScheme scheme)
{
    static const Palette light {
        .page = QColor(0xF6, 0xF4, 0xF2),
        .card = QColor(0xFF, 0xFF, 0xFF),
        .line = QColor(0xE8, 0xE3, 0xDE),
        .text = QColor(0x1B, 0x1A, 0x19),
        .softText = QColor(0x6B, 0x66, 0x61),
        .accentText = QColor(0xB4, 0x12, 0x3F),
        .controlFill = QColor(0xEE, 0xEA, 0xE6),
        .knob = QColor(0xFF, 0xFF, 0xFF),
        .on = QColor(0xD4, 0x14, 0x5A),
        .focus = QColor(0xD4, 0x14, 0x5A),
        .invalid = QColor(0x8F, 0x47, 0x00),
        .pressed = QColor(0, 0, 0, 30),
        .hovered = QColor(0, 0, 0, 13),
        .dim = QColor(0, 0, 0, 115),
    };
    static const Palette dark {
        .page = QColor(0x15, 0x14, 0x13),
        .card = QColor(0x21, 0x1F, 0x1E),
        .line = QColor(0x35, 0x31, 0x2E),
        .text = QColor(0xF5, 0xF2, 0xEF),
        .softText = QColor(0xA3, 0x9C, 0x95),
        .accentText = QColor(0xFF, 0x6B, 0x8B),
        .controlFill = QColor(0x2E, 0x2B, 0x29),
        .knob = QColor(0x15, 0x14, 0x13),
        .on = QColor(0xD4, 0x14, 0x5A),
        .focus = QColor(0xFF, 0x6B, 0x8B),
        .invalid = QColor(0xFF, 0xB4, 0x54),
        .pressed = QColor(255, 255, 255, 36),
        .hovered = QColor(255, 255, 255, 16),
        .dim = QColor(0, 0, 0, 150),
    };
    return scheme == ColorScheme::Dark ? dark : light;
}

QColor panelPink() { return QColor(0xD4, 0x14, 0x5A); }

QColor panelRed() { return QColor(0xC8, 0x10, 0x2E); }
