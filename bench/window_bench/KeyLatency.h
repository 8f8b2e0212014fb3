#pragma once

#include "Keyboard.h"
#include "WindowWatch.h"

#include <vector>

/// How long typed digits took to be seen.
struct KeyTimes {
    std::vector<double> firstDamage; ///< milliseconds from before the press to the first report
    std::vector<double> lastDamage; ///< milliseconds from before the press to the last report
    std::size_t missed = 0; ///< digits that changed nothing within 200 ms
};

/// Types that many digits into the amount field, which has the focus, each when the answer to the
/// one before it has been painted. Before every sixth all is selected, which is not measured, so
/// that the amount stays small. Throws MeasureError where the window does not come to rest, or
/// where no digit is answered at all.
[[nodiscard]] KeyTimes typeDigits(WindowWatch& window, const Keyboard& keyboard, std::size_t count);
