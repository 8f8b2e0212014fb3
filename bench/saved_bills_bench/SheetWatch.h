#pragma once

#include "Keyboard.h"
#include "WindowWatch.h"

/// How long the saved bills took to be seen, in milliseconds from before the key was pressed.
struct SheetTimes {
    double firstRows = 0.0; ///< until the text of a row stood in the window
    double atRest = 0.0; ///< until the sheet had slid to its place
};

/// Opens the saved bills by their shortcut and watches them come. Throws MeasureError where no row
/// is seen within two seconds.
[[nodiscard]] SheetTimes openSheet(XServer& server, WindowWatch& window, const Keyboard& keyboard);

/// Closes them again and waits until the window is at rest.
void closeSheet(WindowWatch& window, const Keyboard& keyboard);

/// Presses a key and waits until the window is at rest again: milliseconds until the first damage.
[[nodiscard]] double keyToFirstDamage(
    WindowWatch& window, const Keyboard& keyboard, xcb_keysym_t key);
