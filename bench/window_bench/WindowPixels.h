#pragma once

#include "XServer.h"

#include <cstddef>
#include <filesystem>
#include <vector>

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

/// The colours, as 0xRRGGBB, of an upright strip of the window: `width` pixels a row, from its top
/// to its bottom. Empty where the window cannot be read.
[[nodiscard]] std::vector<std::uint32_t> strip(
    const XServer& server, const WindowArea& area, std::int16_t left, std::uint16_t width);

/// Writes all the window's pixels to a file in the PPM format. Throws MeasureError where the
/// window cannot be read or the file cannot be written.
void savePicture(const XServer& server, const WindowArea& area, const std::filesystem::path& file);
