#include "XServer.h"

#include "MeasureError.h"

#include <poll.h>
#include <xcb/xtest.h>

#include <array>

namespace {

using namespace std::chrono_literals;

// The highest bit of an event's type says that another client sent it.
constexpr std::uint8_t typeMask = 0x7f;

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    return left > 0ms ? static_cast<int>(left.count()) : 0;
}

} // namespace

XServer::XServer()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection()))
        throw MeasureError("There is no X server to connect to.");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(connection())).data;
    requireExtensions();

    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
}

void XServer::requireExtensions()
{
    const auto* const damage = xcb_get_extension_data(connection(), &xcb_damage_id);
    const auto* const test = xcb_get_extension_data(connection(), &xcb_test_id);
    if (!damage || !damage->present || !test || !test->present)
        throw MeasureError("The X server lacks the Damage or the XTEST extension.");
    m_damageNotify = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    // The server answers no other request of the extension before this one.
    const auto asked = xcb_damage_query_version(
        connection(), XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION);
    if (!Owned<xcb_damage_query_version_reply_t>(
            xcb_damage_query_version_reply(connection(), asked, nullptr)))
        throw MeasureError("The X server's Damage extension does not answer.");
}

Owned<xcb_generic_event_t> XServer::readyEvent()
{
    Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection()));
    while (event && event->response_type == 0)
        event.reset(xcb_poll_for_event(connection()));
    if (!event && xcb_connection_has_error(connection()))
        throw MeasureError("The connection to the X server broke.");
    return event;
}

Owned<xcb_generic_event_t> XServer::nextEvent(Clock::time_point deadline, int other)
{
    xcb_flush(connection());
    for (;;) {
        if (auto event = readyEvent())
            return event;
        std::array<pollfd, 2> waited { {
            { .fd = xcb_get_file_descriptor(connection()), .events = POLLIN, .revents = 0 },
            { .fd = other, .events = POLLIN, .revents = 0 }, // below 0: ignored
        } };
        if (::poll(waited.data(), waited.size(), millisecondsUntil(deadline)) <= 0
            || waited[1].revents != 0)
            return readyEvent();
    }
}

const xcb_damage_notify_event_t* XServer::asDamage(const xcb_generic_event_t& event) const
{
    const bool damage = (event.response_type & typeMask) == m_damageNotify;
    return damage ? reinterpret_cast<const xcb_damage_notify_event_t*>(&event) : nullptr;
}

std::optional<std::uint32_t> XServer::number(
    xcb_window_t window, const std::string& property, xcb_atom_t type) const
{
    const auto named = xcb_intern_atom(
        connection(), 0, static_cast<std::uint16_t>(property.size()), property.c_str());
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection(), named, nullptr));
    if (!atom)
        return std::nullopt;
    const auto asked = xcb_get_property(connection(), 0, window, atom->atom, type, 0, 1);
    const Owned<xcb_get_property_reply_t> value(
        xcb_get_property_reply(connection(), asked, nullptr));
    if (!value || value->format != 32 || value->value_len != 1)
        return std::nullopt;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(value.get()));
}

void XServer::waitForWindowManager()
{
    const auto deadline = Clock::now() + 10s;
    while (!number(root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW)) {
        if (!nextEvent(deadline))
            throw MeasureError("No window manager took charge of the screen.");
    }
}

void XServer::parkPointer()
{
    const auto right = static_cast<std::int16_t>(m_screen->width_in_pixels - 1);
    const auto bottom = static_cast<std::int16_t>(m_screen->height_in_pixels - 1);
    xcb_warp_pointer(connection(), XCB_NONE, root(), 0, 0, 0, 0, right, bottom);
    xcb_flush(connection());
}
