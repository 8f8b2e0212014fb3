#pragma once

#include "WindowWatch.h"

#include <functional>

/// How long after an input the window was damaged, in milliseconds.
struct Answer {
    double first = 0.0; ///< until the first report
    double last = 0.0; ///< until the last report before the window was quiet
};

/// Makes the input and waits until the window is quiet again. Nothing where the window was not
/// damaged within 200 ms; throws MeasureError where it does not come to rest.
[[nodiscard]] std::optional<Answer> answerTo(
    WindowWatch& window, const std::function<void()>& input);
