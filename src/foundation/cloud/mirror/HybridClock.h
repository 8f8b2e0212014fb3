#pragma once

#include "HybridTime.h"

#include <chrono>

namespace mirror {

/// A point in time in whole milliseconds, UTC.
using WallTime = std::chrono::sys_time<std::chrono::milliseconds>;

/// Stamps changes so that a change made after another was seen also sorts after it, whatever the
/// wall clocks of the devices show. Its whole state is the last reading, which belongs into the
/// transaction of the change that was stamped with it.
class HybridClock {
public:
    /// Goes on after that reading.
    explicit HybridClock(HybridTime last = {})
        : m_last(last)
    {
    }

    /// The stamp for a change made now: later than every stamp given and every reading observed.
    /// The offset is added to the wall clock, which may show anything. At HybridTime::latest(),
    /// which only a forged reading leads to, the stamps repeat: changes then still merge the same
    /// way everywhere, but no longer by their order.
    [[nodiscard]] HybridTime next(WallTime wall, std::chrono::milliseconds offset = {});

    /// Takes in a reading of another device.
    void observe(HybridTime seen);

    /// The latest reading given or observed.
    [[nodiscard]] HybridTime last() const { return m_last; }

private:
    HybridTime m_last;
};

} // namespace mirror
