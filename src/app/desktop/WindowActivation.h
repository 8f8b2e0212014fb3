#pragma once

#include "Activation.h"

/// Brings the program's window before the user and asks for the keyboard, wherever the window is:
/// minimised, behind others, or on another workspace. Does nothing before one is shown. Whether the
/// keyboard is given away is for the window manager to say, by the activation.
void activateWindow(const Activation& activation);

/// Tells an X11 desktop that nothing more is to come of this start, so that it need not show any
/// longer that it waits.
void endStartup(const Activation& activation);
