#pragma once

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

/// CLOCK_MONOTONIC, the one clock of every time measured here.
using Clock = std::chrono::steady_clock;

/// What the server sends, owned: the protocol library allocates with malloc().
struct FreeDeleter {
    void operator()(void* allocated) const { std::free(allocated); }
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

/// The connection to the X server of the benchmark, with the two extensions that it needs: Damage,
/// which says when a window's pixels change, and XTEST, which presses keys. Used by one thread.
class XServer {
public:
    /// Connects to $DISPLAY. Throws MeasureError where there is no server or an extension is
    /// missing.
    XServer();

    [[nodiscard]] xcb_connection_t* connection() const { return m_connection.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }

    /// The next event, waited for no longer than the deadline; nothing where none came, or where
    /// the optional other descriptor became readable first. Throws MeasureError when the server is
    /// gone. Errors of the protocol are passed over: a window may go away at any moment.
    [[nodiscard]] Owned<xcb_generic_event_t> nextEvent(Clock::time_point deadline, int other = -1);

    /// The event as a damage report, or nullptr where it is another one.
    [[nodiscard]] const xcb_damage_notify_event_t* asDamage(const xcb_generic_event_t& event) const;

    /// A property that holds one 32-bit number, or nothing where the window does not have it.
    [[nodiscard]] std::optional<std::uint32_t> number(
        xcb_window_t window, const std::string& property, xcb_atom_t type) const;

    /// Waits until a window manager has said that it manages the screen. Throws MeasureError after
    /// ten seconds without one.
    void waitForWindowManager();

    /// Puts the pointer into the lower right corner, where it hovers over no window's controls.
    void parkPointer();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] Owned<xcb_generic_event_t> readyEvent();
    void requireExtensions();

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    const xcb_screen_t* m_screen = nullptr;
    std::uint8_t m_damageNotify = 0;
};
