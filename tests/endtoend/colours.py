"""The colours in which the window is seen."""

import screen
import tree
from tree import Role

DARK_PAGE, LIGHT_PAGE = "#151413", "#F6F4F2"
# In the margin beside the cards, where the bare page shows.
PAGE_POINT = (6, 500)


def page_colour(vexilo):
    left, top = screen.origin_of(vexilo.window)
    return screen.colour_at(left + PAGE_POINT[0], top + PAGE_POINT[1])


def panel_colour(vexilo, share="Share per person $0.00"):
    """The colour in the middle of the results, where no text stands."""
    return screen.colour_at(*tree.centre_of(vexilo.expect(Role.LABEL, share)))


def is_red(colour):
    red, green, blue = bytes.fromhex(colour[1:])
    return red > 180 and green < 60 and blue < 110
