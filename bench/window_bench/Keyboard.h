#pragma once

#include "XServer.h"

#include <vector>

/// A key's symbol as the X protocol numbers it. A character's is its own number.
inline constexpr xcb_keysym_t keyControl = 0xffe3;

/// Presses keys as a user would, through the server: they go to the window that has the focus.
class Keyboard {
public:
    /// The server must outlive this object.
    explicit Keyboard(const XServer& server);

    /// Presses the keys in the given order and releases them in the opposite one, all at once.
    /// Throws MeasureError where the keyboard has no such key.
    void press(const std::vector<xcb_keysym_t>& chord) const;

private:
    [[nodiscard]] xcb_keycode_t codeOf(xcb_keysym_t symbol) const;

    const XServer& m_server;
    Owned<xcb_get_keyboard_mapping_reply_t> m_mapping;
};
