#pragma once

#include <QColor>

enum class ColorScheme { Light, Dark };

/// The colours of the look. Every text colour keeps a contrast of at least 4.5 to 1 on the surfaces
/// that it is drawn on.
struct Palette {
    QColor page; ///< behind the cards
    QColor card;
    QColor line; ///< borders and separators
    QColor text;
    QColor softText; ///< secondary texts
    QColor accentText; ///< buttons' texts and icons
    QColor controlFill; ///< fields, buttons, tracks
    QColor knob; ///< what moves on a track, and the chosen segment
    QColor on; ///< switched on
    QColor focus; ///< around what has the keyboard; at least 3 to 1 on page and card
    QColor invalid; ///< around what is refused, and the remark why
    QColor pressed; ///< laid over a control that is pressed
    QColor hovered; ///< laid over a control under the pointer
    QColor dim; ///< laid over the window behind a sheet or dialog
};

[[nodiscard]] const Palette& paletteFor(ColorScheme scheme);

/// The results panel's gradient; white text stands on both.
[[nodiscard]] QColor panelPink();
[[nodiscard]] QColor panelRed();
