#include "HybridClock.h"

#include <algorithm>

namespace mirror {

namespace {

/// Clamped before and after the addition, which therefore cannot overflow.
HybridTime correctedReading(WallTime wall, std::chrono::milliseconds offset)
{
    constexpr qint64 max = HybridTime::MaxMilliseconds;
    const qint64 shown = std::clamp<qint64>(wall.time_since_epoch().count(), -max, max);
    const qint64 correction = std::clamp<qint64>(offset.count(), -max, max);
    return *HybridTime::of(std::clamp<qint64>(shown + correction, 0, max), 0);
}

} // namespace

HybridTime HybridClock::next(WallTime wall, std::chrono::milliseconds offset)
{
    m_last = std::max(correctedReading(wall, offset), m_last).next();
    return m_last;
}

void HybridClock::observe(HybridTime seen) { m_last = std::max(m_last, seen); }

} // namespace mirror
