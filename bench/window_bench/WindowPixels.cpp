#include "WindowPixels.h"

#include "MeasureError.h"

#include <algorithm>
#include <fstream>
#include <span>

namespace {

constexpr std::uint16_t gridRows = 32;
constexpr std::uint32_t colourMask = 0x00ffffff;

xcb_get_image_cookie_t askForRows(
    const XServer& server, const WindowArea& area, std::int16_t top, std::uint16_t rows)
{
    constexpr std::uint32_t allPlanes = ~0U;
    return xcb_get_image(server.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, area.window, 0, top,
        area.width, rows, allPlanes);
}

Owned<xcb_get_image_reply_t> takeRows(const XServer& server, xcb_get_image_cookie_t asked)
{
    return Owned<xcb_get_image_reply_t>(xcb_get_image_reply(server.connection(), asked, nullptr));
}

// Every depth in use, 24 and 32, has four bytes for each pixel and no padding of rows.
std::span<const std::uint32_t> pixels(const xcb_get_image_reply_t& image)
{
    const auto* const data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(&image));
    const auto bytes = static_cast<std::size_t>(xcb_get_image_data_length(&image));
    return { data, bytes / sizeof(std::uint32_t) };
}

} // namespace

std::size_t distinctColours(const XServer& server, const WindowArea& area)
{
    std::vector<xcb_get_image_cookie_t> asked;
    for (std::uint16_t row = 0; row < gridRows; ++row) {
        const int top = (2 * row + 1) * area.height / (2 * gridRows);
        asked.push_back(askForRows(server, area, static_cast<std::int16_t>(top), 1));
    }
    std::vector<std::uint32_t> colours;
    for (const auto cookie : asked) {
        if (const auto image = takeRows(server, cookie)) {
            for (const std::uint32_t pixel : pixels(*image))
                colours.push_back(pixel & colourMask);
        }
    }
    std::sort(colours.begin(), colours.end());
    const auto end = std::unique(colours.begin(), colours.end());
    return static_cast<std::size_t>(end - colours.begin());
}

std::vector<std::uint32_t> strip(
    const XServer& server, const WindowArea& area, std::int16_t left, std::uint16_t width)
{
    const auto asked = xcb_get_image(server.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, area.window,
        left, 0, width, area.height, ~0U);
    std::vector<std::uint32_t> colours;
    if (const auto image = takeRows(server, asked)) {
        for (const std::uint32_t pixel : pixels(*image))
            colours.push_back(pixel & colourMask);
    }
    return colours;
}

void savePicture(const XServer& server, const WindowArea& area, const std::filesystem::path& file)
{
    const auto image = takeRows(server, askForRows(server, area, 0, area.height));
    if (!image)
        throw MeasureError("The window's picture cannot be read.");
    std::ofstream stream(file, std::ios::binary);
    stream << "P6 " << area.width << ' ' << area.height << " 255\n";
    for (const std::uint32_t pixel : pixels(*image)) {
        for (const unsigned shift : { 16U, 8U, 0U })
            stream.put(static_cast<char>((pixel >> shift) & 0xffU));
    }
    if (!stream.flush())
        throw MeasureError("Cannot write " + file.string());
}
