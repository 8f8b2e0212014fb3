#pragma once

#include "Pointer.h"
#include "WindowWatch.h"

#include <vector>

/// Turns the wheel over the list, a notch each 16 ms, and returns the milliseconds between each
/// frame that was painted meanwhile and the one before it.
[[nodiscard]] std::vector<double> wheel(WindowWatch& window, const Pointer& pointer, int notches);

/// Drags the scroll bar's handle from one end of the list to the other in about two seconds.
/// Returns the milliseconds between frames, as above.
[[nodiscard]] std::vector<double> dragScrollBar(WindowWatch& window, const Pointer& pointer);
