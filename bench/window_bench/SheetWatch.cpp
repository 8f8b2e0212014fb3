#include "SheetWatch.h"

#include "MeasureError.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto limit = 2s;
constexpr auto quietFor = 60ms;
constexpr xcb_keysym_t keyEscape = 0xff1b;

// The light theme's colours. Behind an open sheet the window is dimmed, so that its own cards and
// texts no longer show them.
constexpr std::uint32_t page = 0xf6f4f2;
constexpr std::uint32_t card = 0xffffff;
constexpr std::uint32_t text = 0x1b1a19;

// Where the rows' texts begin, seen from the window's left edge.
constexpr std::int16_t left = 44;
constexpr std::uint16_t width = 60;
constexpr std::size_t cardBorder = 6;

using Milliseconds = std::chrono::duration<double, std::milli>;

double since(Clock::time_point pressed, Clock::time_point seen)
{
    return Milliseconds(seen - pressed).count();
}

// A row is seen where text stands on the sheet's card, which begins below the sheet's header.
bool showsRows(const XServer& server, const WindowArea& area)
{
    const auto corner = strip(server, area, 0, 1);
    if (corner.empty() || corner.front() == page)
        return false; // not dimmed: no sheet yet
    const auto colours = strip(server, area, left, width);
    const auto top = std::find(colours.begin(), colours.end(), card);
    const auto below
        = std::min<std::ptrdiff_t>(colours.end() - top, std::ptrdiff_t { cardBorder } * width);
    return std::find(top + below, colours.end(), text) != colours.end();
}

Clock::time_point rest(WindowWatch& window, Clock::time_point last)
{
    const auto begin = last;
    while (const auto next = window.nextDamage(last + quietFor)) {
        last = *next;
        if (last > begin + limit)
            throw MeasureError("The window does not come to rest.");
    }
    return last;
}

} // namespace

SheetTimes openSheetByKeys(XServer& server, WindowWatch& window, const Keyboard& keyboard,
    const std::vector<xcb_keysym_t>& keys)
{
    const auto beneath = strip(server, window.area(), left, width);
    window.drain();
    const auto pressed = Clock::now();
    keyboard.press(keys);
    while (const auto painted = window.nextDamage(pressed + limit)) {
        if (showsRows(server, window.area()))
            return { .firstRows = since(pressed, *painted),
                .atRest = since(pressed, rest(window, *painted)),
                .beneath = beneath };
    }
    throw MeasureError("No sheet with rows is seen.");
}

SheetTimes openSheet(XServer& server, WindowWatch& window, const Keyboard& keyboard, char shortcut)
{
    return openSheetByKeys(
        server, window, keyboard, { keyControl, static_cast<xcb_keysym_t>(shortcut) });
}

void closeSheet(
    XServer& server, WindowWatch& window, const Keyboard& keyboard, const SheetTimes& opened)
{
    window.drain();
    const auto pressed = Clock::now();
    keyboard.press({ keyEscape });
    while (const auto painted = window.nextDamage(pressed + limit)) {
        if (strip(server, window.area(), left, width) == opened.beneath) {
            (void)rest(window, *painted);
            return;
        }
    }
    throw MeasureError("The sheet does not close.");
}

double keyToFirstDamage(WindowWatch& window, const Keyboard& keyboard, xcb_keysym_t key)
{
    window.drain();
    const auto pressed = Clock::now();
    keyboard.press({ key });
    const auto first = window.nextDamage(pressed + limit);
    if (!first)
        throw MeasureError("A key is not answered.");
    (void)rest(window, *first);
    return since(pressed, *first);
}
