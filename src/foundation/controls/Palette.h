#pragma once

#include <QColor>

enum class ColorScheme { Light, Dark };
enum class Contrast { Normal, High };

[[nodiscard]] constexpr Contrast contrastFrom(bool high)
{
    return high ? Contrast::High : Contrast::Normal;
}

/// The colours of the look. Every text colour keeps a contrast of at least 4.5 to 1 on the surfaces
/// that it is drawn on, pointed at and pressed, too; in high contrast of 7 to 1, but for what is
/// switched on while it is pointed at or pressed: 4.5 to 1 there, too. What tells a control or its
/// state without a text keeps 3 to 1; in high contrast every line does.
struct Palette {
    QColor page; ///< behind the cards
    QColor card;
    QColor line; ///< borders and separators
    QColor text;
    QColor softText; ///< secondary texts
    QColor accentText; ///< buttons' texts and icons
    QColor controlFill; ///< fields, buttons, tracks
    QColor controlBorder; ///< around fills; transparent where they stand out by themselves
    QColor controlEdge; ///< around what only its edge tells: fields, tracks, the chosen segment
    QColor knob; ///< what moves on a track, and the chosen segment
    QColor knobIcon; ///< what stands on a knob
    QColor on; ///< switched on
    QColor onBorder; ///< around what is switched on
    QColor onText; ///< texts and icons on what is switched on
    QColor thumb; ///< of a slider, and of a switch that is on
    QColor thumbOff; ///< of a switch that is off
    QColor thumbPressed; ///< laid over a thumb that is pressed
    QColor thumbHovered; ///< laid over a thumb under the pointer
    QColor focus; ///< around what has the keyboard; at least 3 to 1 on page and card
    QColor invalid; ///< around what is refused, and the remark why
    QColor pressed; ///< laid over a control that is pressed
    QColor hovered; ///< laid over a control under the pointer
    QColor dim; ///< laid over the window behind a sheet or dialog
};

/// How much is seen of a control that is disabled. Its texts can still be read, at 3 to 1.
inline constexpr double disabledOpacity = 0.7;

[[nodiscard]] const Palette& paletteFor(ColorScheme scheme, Contrast contrast = Contrast::Normal);

/// The results panel's gradient; white text stands on both.
[[nodiscard]] QColor panelPink(Contrast contrast = Contrast::Normal);
[[nodiscard]] QColor panelRed(Contrast contrast = Contrast::Normal);
