#include "Scrolling.h"

#include "MeasureError.h"

#include <functional>

namespace {

using namespace std::chrono_literals;

// Reports so close together belong to one frame: one for each rectangle that is sent.
constexpr auto withinFrame = 4ms;
constexpr std::size_t fewestFrames = 20;

using Milliseconds = std::chrono::duration<double, std::milli>;

/// Takes the steps at their pace and gives the times between the frames painted until the last one.
std::vector<double> framesDuring(
    WindowWatch& window, int steps, Clock::duration pace, const std::function<void(int)>& step)
{
    std::vector<double> gaps;
    std::optional<Clock::time_point> frame;
    auto due = Clock::now();
    for (int i = 0; i < steps; ++i) {
        step(i);
        due += pace;
        while (const auto report = window.nextDamage(due)) {
            if (frame && *report - *frame < withinFrame)
                continue;
            if (frame)
                gaps.push_back(Milliseconds(*report - *frame).count());
            frame = report;
        }
    }
    if (gaps.size() < fewestFrames)
        throw MeasureError("The list does not scroll.");
    return gaps;
}

} // namespace

std::vector<double> wheel(WindowWatch& window, const Pointer& pointer, int notches)
{
    const WindowArea& area = window.area();
    pointer.moveTo(area.width / 3, area.height / 2);
    (void)window.countDamage(Clock::now() + 300ms);
    return framesDuring(window, notches, 16ms, [&](int) { pointer.wheelDown(); });
}

std::vector<double> dragScrollBar(WindowWatch& window, const Pointer& pointer)
{
    // The handle stands at the list's upper end, near the sheet's right edge.
    const WindowArea& area = window.area();
    const int x = area.width - 37;
    constexpr int top = 125;
    const int way = area.height - 255;
    constexpr int steps = 240;
    pointer.moveTo(x, top);
    (void)window.countDamage(Clock::now() + 300ms);
    pointer.press();
    auto gaps = framesDuring(
        window, steps, 8ms, [&](int step) { pointer.moveTo(x, top + way * (step + 1) / steps); });
    pointer.release();
    return gaps;
}
