#include "KeyLatency.h"

#include "Answer.h"
#include "MeasureError.h"

namespace {

constexpr std::size_t digitsInAnAmount = 6;

std::optional<Answer> pressAndSee(
    WindowWatch& window, const Keyboard& keyboard, const std::vector<xcb_keysym_t>& chord)
{
    return answerTo(window, [&] { keyboard.press(chord); });
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
            times.firstDamage.push_back(answer->first);
            times.lastDamage.push_back(answer->last);
        } else {
            ++times.missed;
        }
    }
    if (times.lastDamage.empty())
        throw MeasureError("No key is answered: does the amount field have the focus?");
    return times;
}
