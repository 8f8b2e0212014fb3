#pragma once

#include "Pointer.h"
#include "WindowWatch.h"

#include <vector>

/// How long the frames of a drag took to be seen.
struct DragTimes {
    std::vector<double> frames; ///< milliseconds from before a motion to its last damage
    std::size_t missed = 0; ///< motions that changed nothing within 200 ms
};

/// The first slider of the open settings, worked by the pointer.
class SliderDrag {
public:
    /// Finds the slider by its track, whose colours nothing else has in the window's middle.
    /// Throws MeasureError where there is none. The arguments must outlive this object.
    SliderDrag(const XServer& server, WindowWatch& window, const Pointer& pointer);

    /// Presses the track, moves the knob that many times to and fro by some pixels, each time when
    /// the frame before has been painted, and last to the scale's upper end, where it is released.
    [[nodiscard]] DragTimes dragToUpperEnd(int steps) const;

    /// Presses the scale's lower end and returns with the first damage, the button still down.
    /// Throws MeasureError where the window does not change.
    void pressLowerEnd() const;

private:
    WindowWatch& m_window;
    const Pointer& m_pointer;
    int m_row = 0; ///< of the track, from the window's upper edge
};
