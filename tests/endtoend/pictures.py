"""The whole picture of the window, for comparisons."""

import screen


def picture_at_rest(vexilo, but=None):
    """What the window shows as soon as it shows it twice, and something else than `but`."""
    def still():
        picture = screen.picture_of(vexilo.window)
        again = screen.picture_of(vexilo.window)
        return picture if picture == again != but else None
    return vexilo.until(still, "the window is at rest")


def expect_picture(vexilo, picture):
    vexilo.until(lambda: screen.picture_of(vexilo.window) == picture, "the window looks as before")
