#include "Keyboard.h"

#include "MeasureError.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <string>

Keyboard::Keyboard(const XServer& server)
    : m_server(server)
{
    auto* const connection = server.connection();
    const auto* const setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto asked = xcb_get_keyboard_mapping(connection, setup->min_keycode, count);
    m_mapping.reset(xcb_get_keyboard_mapping_reply(connection, asked, nullptr));
    if (!m_mapping)
        throw MeasureError("The keyboard's layout cannot be read.");
}

xcb_keycode_t Keyboard::codeOf(xcb_keysym_t symbol) const
{
    const auto* const symbols = xcb_get_keyboard_mapping_keysyms(m_mapping.get());
    const int count = xcb_get_keyboard_mapping_keysyms_length(m_mapping.get());
    int code = xcb_get_setup(m_server.connection())->min_keycode;
    // The first symbol of each code is the one without a modifier.
    for (int first = 0; first < count; first += m_mapping->keysyms_per_keycode, ++code) {
        if (symbols[first] == symbol)
            return static_cast<xcb_keycode_t>(code);
    }
    throw MeasureError("The keyboard has no key with the symbol " + std::to_string(symbol));
}

void Keyboard::press(const std::vector<xcb_keysym_t>& chord) const
{
    auto* const connection = m_server.connection();
    const auto send = [&](std::uint8_t what, xcb_keysym_t symbol) {
        xcb_test_fake_input(
            connection, what, codeOf(symbol), XCB_CURRENT_TIME, m_server.root(), 0, 0, 0);
    };
    for (const xcb_keysym_t symbol : chord)
        send(XCB_KEY_PRESS, symbol);
    std::for_each(
        chord.rbegin(), chord.rend(), [&](xcb_keysym_t symbol) { send(XCB_KEY_RELEASE, symbol); });
    xcb_flush(connection);
}
