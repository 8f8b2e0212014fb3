#pragma once

/// Gives the windows their icon on X11, where not every window manager finds it by the desktop
/// entry. The pictures are read from the installation's icon theme, so this is for after the first
/// frame. Elsewhere it does nothing.
void setWindowIcon();
