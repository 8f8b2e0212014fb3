#include "Pointer.h"

#include <xcb/xtest.h>

Pointer::Pointer(const XServer& server, const WindowArea& area)
    : m_server(server)
    , m_area(area)
{
}

void Pointer::moveTo(int x, int y) const
{
    xcb_warp_pointer(m_server.connection(), XCB_NONE, m_area.window, 0, 0, 0, 0,
        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
    xcb_flush(m_server.connection());
}

void Pointer::wheelDown() const
{
    constexpr std::uint8_t wheel = 5;
    button(XCB_BUTTON_PRESS, wheel);
    button(XCB_BUTTON_RELEASE, wheel);
}

void Pointer::button(std::uint8_t what, std::uint8_t number) const
{
    xcb_test_fake_input(
        m_server.connection(), what, number, XCB_CURRENT_TIME, m_server.root(), 0, 0, 0);
    xcb_flush(m_server.connection());
}
