"""The colours in which the window is seen."""

import screen
import tree
from tree import Role

DARK_PAGE, LIGHT_PAGE = "#151413", "#F6F4F2"
BLACK, WHITE = "#000000", "#FFFFFF"
# In the margin beside the cards, where the bare page shows.
PAGE_POINT = (6, 500)


def page_colour(vexilo):
    left, top = screen.origin_of(vexilo.window)
    return screen.colour_at(left + PAGE_POINT[0], top + PAGE_POINT[1])


def expect_page(vexilo, colour):
    vexilo.until(lambda: page_colour(vexilo) == colour, f"the page is {colour}")


def panel_colour(vexilo):
    """The colour in the middle of the results, where no text stands."""
    return screen.colour_at(*tree.centre_of(vexilo.until(lambda: _share_row(vexilo),
                                                         "the share shows")))


def _share_row(vexilo):
    return next((node for node in vexilo.nodes() if tree.role_of(node) == Role.LABEL
                 and tree.name_of(node).startswith("Share per person ")), None)


def is_red(colour):
    red, green, blue = bytes.fromhex(colour[1:])
    return red > 180 and green < 60 and blue < 110


def contrast(one, other):
    """The ratio of two colours' luminances as WCAG 2.1 defines it: 1 to 21."""
    darker, lighter = sorted((_luminance(one), _luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def _luminance(colour):
    red, green, blue = (channel / 255 for channel in bytes.fromhex(colour[1:]))
    return 0.2126 * _linear(red) + 0.7152 * _linear(green) + 0.0722 * _linear(blue)


def _linear(channel):
    return channel / 12.92 if channel <= 0.04045 else ((channel + 0.055) / 1.055) ** 2.4
