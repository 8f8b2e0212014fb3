#pragma once

#include "Keyboard.h"
#include "WindowWatch.h"

/// How long a sheet took to be seen, in milliseconds from before the key was pressed.
struct SheetTimes {
    double firstRows = 0.0; ///< until the text of a row stood in the window
    double atRest = 0.0; ///< until the sheet had slid to its place
    std::vector<std::uint32_t> beneath; ///< what stood there before, to know it again
};

/// Opens a sheet of rows by these keys, pressed together, and watches it come. Throws MeasureError
/// where no row is seen within two seconds.
[[nodiscard]] SheetTimes openSheetByKeys(XServer& server, WindowWatch& window,
    const Keyboard& keyboard, const std::vector<xcb_keysym_t>& keys);

/// The same by the sheet's shortcut, Control and a character.
[[nodiscard]] SheetTimes openSheet(
    XServer& server, WindowWatch& window, const Keyboard& keyboard, char shortcut);

/// Closes it again and waits until what stood there before is seen and the window is at rest: while
/// a sheet slides away, its shortcut opens nothing. Throws MeasureError after two seconds.
void closeSheet(
    XServer& server, WindowWatch& window, const Keyboard& keyboard, const SheetTimes& opened);

/// Presses a key and waits until the window is at rest again: milliseconds until the first damage.
[[nodiscard]] double keyToFirstDamage(
    WindowWatch& window, const Keyboard& keyboard, xcb_keysym_t key);
