#include "KeyLatency.h"

#include "MeasureError.h"

namespace {

using namespace std::chrono_literals;

constexpr auto missedAfter = 200ms;
constexpr auto quietFor = 30ms;
constexpr auto restlessAfter = 3s;
constexpr std::size_t digitsInAnAmount = 6;

using Milliseconds = std::chrono::duration<double, std::milli>;

// How long after the press the window was damaged.
struct Answer {
    Clock::duration first;
    Clock::duration last;
};

// The user has the whole answer when its last part is painted, and a frame may be several reports:
// one for each rectangle that the program sends. So the answer ends with the last report before
// the window is quiet. A frame at 60 Hz takes 17 ms, so that 30 ms without a report is a pause
// between frames and not within one.
std::optional<Answer> pressAndSee(
    WindowWatch& window, const Keyboard& keyboard, const std::vector<xcb_keysym_t>& chord)
{
    window.drain();
    const auto pressed = Clock::now();
    keyboard.press(chord);
    const auto first = window.nextDamage(pressed + missedAfter);
    if (!first)
        return std::nullopt;
    auto last = *first;
    while (const auto next = window.nextDamage(last + quietFor)) {
        last = *next;
        if (last > pressed + restlessAfter)
            throw MeasureError("The window does not come to rest after a key.");
    }
    return Answer { .first = *first - pressed, .last = last - pressed };
}

} // namespace

KeyTimes typeDigits(WindowWatch& window, const Keyboard& keyboard, std::size_t count)
{
    KeyTimes times;
    for (std::size_t typed = 0; typed < count; ++typed) {
        if (typed % digitsInAnAmount == 0)
            (void)pressAndSee(window, keyboard, { keyControl, 'a' });
        // 1 to 9 in turn: every digit changes the amount, and none is a leading zero.
        const auto digit = static_cast<xcb_keysym_t>('1' + typed % 9);
        if (const auto answer = pressAndSee(window, keyboard, { digit })) {
            times.firstDamage.push_back(Milliseconds(answer->first).count());
            times.lastDamage.push_back(Milliseconds(answer->last).count());
        } else {
            ++times.missed;
        }
    }
    if (times.lastDamage.empty())
        throw MeasureError("No key is answered: does the amount field have the focus?");
    return times;
}
