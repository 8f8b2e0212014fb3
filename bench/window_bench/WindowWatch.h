#pragma once

#include "Process.h"
#include "WindowPixels.h"
#include "XServer.h"

#include <optional>

/// Follows the window of one program from before it exists.
///
/// Every window is watched for damage from its creation on, so that the first stroke of paint is
/// not missed; the program's own is told from the others by its process id when it is mapped.
/// Damage is asked for as raw rectangles: each operation that draws is one report, and none has to
/// be acknowledged, so the watching costs the program nothing but the server's time to send it.
class WindowWatch {
public:
    /// Make it before the program is started. The server must outlive this object.
    explicit WindowWatch(XServer& server);

    /// Waits for the first painted window: the instant at which the server reports damage on the
    /// program's mapped top-level window after which that window shows real content, that is, more
    /// than sixteen colours on a coarse grid. A window that is only filled with its background
    /// does not count. The report's own time is given, not the time of having looked.
    /// Throws MeasureError where the program ends first or nothing is seen for thirty seconds.
    [[nodiscard]] Clock::time_point waitForFirstPaint(const Process& program);

    /// The time of the window's next damage report, or nothing where the deadline passes first.
    /// Reports that are already waiting count: to look at the future only, drain() first.
    [[nodiscard]] std::optional<Clock::time_point> nextDamage(Clock::time_point deadline);

    /// How many damage reports come until the deadline, which is waited for in full.
    [[nodiscard]] std::size_t countDamage(Clock::time_point deadline);

    /// Drops all that was reported up to now.
    void drain();

    /// Gives the window the keyboard and waits until it has it. Throws MeasureError after two
    /// seconds without success.
    void takeFocus();
    [[nodiscard]] bool hasFocus() const;

    /// The window, once its first paint was seen.
    [[nodiscard]] const WindowArea& area() const { return m_area; }

private:
    void watch(xcb_window_t window);
    /// Whether the event is a damage report of the program's window, whose size it then tells.
    [[nodiscard]] bool takeDamage(const xcb_generic_event_t& event);
    void follow(const xcb_generic_event_t& event, const Process& program);

    XServer& m_server;
    WindowArea m_area;
};
