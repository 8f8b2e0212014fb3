#pragma once

#include <QString>

/// What a portal calls the window that has the keyboard, to show its dialogs above it. Empty where
/// it cannot be told, as on Wayland: the dialogs then stand alone.
[[nodiscard]] QString parentWindowForPortal();
