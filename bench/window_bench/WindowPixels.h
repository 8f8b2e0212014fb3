#pragma once

#include "XServer.h"

#include <cstddef>
#include <filesystem>

/// A window's place for reading: sizes in pixels.
struct WindowArea {
    xcb_window_t window = XCB_NONE;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
};

/// How many colours the window shows on a coarse grid: evenly spaced rows, each read whole. About
/// a thirtieth of the window crosses the connection, which takes well under a millisecond, so that
/// reading hardly holds up the program that is being timed. 0 where the window cannot be read,
/// as before it is mapped.
[[nodiscard]] std::size_t distinctColours(const XServer& server, const WindowArea& area);

/// Writes all the window's pixels to a file in the PPM format. Throws MeasureError where the
/// window cannot be read or the file cannot be written.
void savePicture(const XServer& server, const WindowArea& area, const std::filesystem::path& file);
