#include "Answer.h"

#include "MeasureError.h"

namespace {

using namespace std::chrono_literals;

constexpr auto missedAfter = 200ms;
constexpr auto restlessAfter = 3s;

// The user has the whole answer when its last part is painted, and a frame may be several reports:
// one for each rectangle that the program sends. So the answer ends with the last report before
// the window is quiet. A frame at 60 Hz takes 17 ms, so that 30 ms without a report is a pause
// between frames and not within one.
constexpr auto quietFor = 30ms;

using Milliseconds = std::chrono::duration<double, std::milli>;

} // namespace

std::optional<Answer> answerTo(WindowWatch& window, const std::function<void()>& input)
{
    window.drain();
    const auto begun = Clock::now();
    input();
    const auto first = window.nextDamage(begun + missedAfter);
    if (!first)
        return std::nullopt;
    auto last = *first;
    while (const auto next = window.nextDamage(last + quietFor)) {
        last = *next;
        if (last > begun + restlessAfter)
            throw MeasureError("The window does not come to rest after an input.");
    }
    return Answer {
        .first = Milliseconds(*first - begun).count(),
        .last = Milliseconds(last - begun).count(),
    };
}
