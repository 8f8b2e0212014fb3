#pragma once

#include "WindowPixels.h"
#include "XServer.h"

/// Moves and presses the pointer as a user would, through the server. Places are in pixels from the
/// window's upper left corner.
class Pointer {
public:
    /// The server must outlive this object.
    Pointer(const XServer& server, const WindowArea& area);

    void moveTo(int x, int y) const;
    void press() const { button(XCB_BUTTON_PRESS, 1); }
    void release() const { button(XCB_BUTTON_RELEASE, 1); }
    /// One notch of the wheel towards the end of what is scrolled.
    void wheelDown() const;

private:
    void button(std::uint8_t what, std::uint8_t number) const;

    const XServer& m_server;
    const WindowArea& m_area;
};
