#include "SliderDrag.h"

#include "Answer.h"
#include "MeasureError.h"

namespace {

using namespace std::chrono_literals;

// The light theme's colours of a track before and behind the knob.
constexpr std::uint32_t filled = 0xd4145a;
constexpr std::uint32_t empty = 0xeeeae6;
constexpr int thickness = 6;

// The knob goes between these places, seen from the window's left edge, far from the scale's ends.
// A hundredth of the scale is a little less than four pixels, so that nearly every motion changes
// the percentage.
constexpr int nearest = 100;
constexpr int farthest = 340;
constexpr int stride = 4;

// Left of the middle of a knob that stands at the lower end, and still on the slider.
constexpr int lowerEnd = 46;
// From the window's right edge, beyond the slider: a knob dragged there stands at the upper end.
constexpr int beyondUpperEnd = 24;

constexpr auto pressLimit = 2s;
constexpr auto restFor = 300ms;

int rowOfTrack(const XServer& server, const WindowArea& area)
{
    const auto colours = strip(server, area, static_cast<std::int16_t>(area.width / 2), 1);
    int run = 0;
    for (int row = 0; row < static_cast<int>(colours.size()); ++row) {
        const std::uint32_t colour = colours[static_cast<std::size_t>(row)];
        const bool track = colour == filled || colour == empty;
        if (!track && run == thickness)
            return row - thickness / 2;
        run = track ? run + 1 : 0;
    }
    throw MeasureError("No slider is seen.");
}

// To and fro: 0, 4, 8 and so on up to the whole way, and back.
int placeOf(int step)
{
    constexpr int way = farthest - nearest;
    const int gone = step * stride % (2 * way);
    return nearest + (gone <= way ? gone : 2 * way - gone);
}

} // namespace

SliderDrag::SliderDrag(const XServer& server, WindowWatch& window, const Pointer& pointer)
    : m_window(window)
    , m_pointer(pointer)
    , m_row(rowOfTrack(server, window.area()))
{
}

DragTimes SliderDrag::dragToUpperEnd(int steps) const
{
    DragTimes times;
    m_pointer.moveTo(placeOf(0), m_row);
    m_pointer.press();
    (void)m_window.countDamage(Clock::now() + restFor);
    for (int step = 1; step <= steps; ++step) {
        const int place = step < steps ? placeOf(step) : m_window.area().width - beyondUpperEnd;
        if (const auto frame = answerTo(m_window, [&] { m_pointer.moveTo(place, m_row); }))
            times.frames.push_back(frame->last);
        else
            ++times.missed;
    }
    m_pointer.release();
    return times;
}

void SliderDrag::pressLowerEnd() const
{
    m_pointer.moveTo(lowerEnd, m_row);
    (void)m_window.countDamage(Clock::now() + restFor);
    m_pointer.press();
    if (!m_window.nextDamage(Clock::now() + pressLimit))
        throw MeasureError("The slider is not moved by a press.");
}
