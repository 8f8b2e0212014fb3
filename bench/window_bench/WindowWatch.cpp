#include "WindowWatch.h"

#include "MeasureError.h"

namespace {

using namespace std::chrono_literals;

constexpr std::size_t flatColours = 16;
constexpr auto paintLimit = 30s;
constexpr auto focusLimit = 2s;
constexpr std::uint8_t typeMask = 0x7f;

} // namespace

WindowWatch::WindowWatch(XServer& server)
    : m_server(server)
{
    drain(); // what the program before this one left
}

void WindowWatch::watch(xcb_window_t window)
{
    auto* const connection = m_server.connection();
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
    // Never freed: the server frees it with the window.
    xcb_damage_create(
        connection, xcb_generate_id(connection), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(connection);
}

void WindowWatch::follow(const xcb_generic_event_t& event, const Process& program)
{
    switch (event.response_type & typeMask) {
    case XCB_CREATE_NOTIFY: {
        const auto& created = reinterpret_cast<const xcb_create_notify_event_t&>(event);
        if (!created.override_redirect)
            watch(created.window);
        break;
    }
    case XCB_MAP_NOTIFY: {
        const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        const auto owner = m_server.number(mapped.window, "_NET_WM_PID", XCB_ATOM_CARDINAL);
        if (owner == static_cast<std::uint32_t>(program.id()))
            m_area.window = mapped.window;
        break;
    }
    default:
        break;
    }
}

bool WindowWatch::takeDamage(const xcb_generic_event_t& event)
{
    const auto* const damage = m_server.asDamage(event);
    if (!damage || damage->drawable != m_area.window)
        return false;
    m_area.width = damage->geometry.width;
    m_area.height = damage->geometry.height;
    return true;
}

Clock::time_point WindowWatch::waitForFirstPaint(const Process& program)
{
    const auto deadline = Clock::now() + paintLimit;
    while (const auto event = m_server.nextEvent(deadline, program.endDescriptor())) {
        const auto reported = Clock::now();
        follow(*event, program);
        if (takeDamage(*event) && distinctColours(m_server, m_area) > flatColours)
            return reported;
    }
    throw MeasureError(program.name() + " ended, or painted no window within thirty seconds.");
}

std::optional<Clock::time_point> WindowWatch::nextDamage(Clock::time_point deadline)
{
    while (const auto event = m_server.nextEvent(deadline)) {
        const auto reported = Clock::now();
        if (takeDamage(*event))
            return reported;
    }
    return std::nullopt;
}

std::size_t WindowWatch::countDamage(Clock::time_point deadline)
{
    std::size_t count = 0;
    while (nextDamage(deadline))
        ++count;
    return count;
}

void WindowWatch::drain()
{
    // The answer to any request comes after all that was reported before it.
    auto* const connection = m_server.connection();
    const auto asked = xcb_get_input_focus(connection);
    const Owned<xcb_get_input_focus_reply_t> answered(
        xcb_get_input_focus_reply(connection, asked, nullptr));
    while (m_server.nextEvent(Clock::now())) { }
}

bool WindowWatch::hasFocus() const
{
    auto* const connection = m_server.connection();
    const auto asked = xcb_get_input_focus(connection);
    const Owned<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, asked, nullptr));
    return focus && focus->focus == m_area.window;
}

void WindowWatch::takeFocus()
{
    const auto deadline = Clock::now() + focusLimit;
    xcb_set_input_focus(
        m_server.connection(), XCB_INPUT_FOCUS_PARENT, m_area.window, XCB_TIME_CURRENT_TIME);
    while (!hasFocus()) {
        if (!m_server.nextEvent(deadline))
            throw MeasureError("The window does not take the keyboard.");
    }
}
