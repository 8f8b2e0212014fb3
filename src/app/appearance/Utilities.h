#pragma once

#include "Palette.h"

#include <optional>

/// Applies the theme that the user chose in the preferences.
class Utilities {
public:
    /// Held for the screens' interface: the theme comes from the preferences alone.
    std::optional<ColorScheme> userInterfaceStyle = ColorScheme::Dark;

    /// Forces the stored theme on the first window: 2 is dark, 1 is light, all else follows the
    /// desktop. Deliberately touches that one window only; does nothing before there is one.
    void overrideDisplayMode() const;
};
