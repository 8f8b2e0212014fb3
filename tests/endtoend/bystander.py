"""A window of another program, which takes the keyboard as a user's other work does."""

import subprocess

import desktop
import screen
import waiting

NAME = "bystander"


class Bystander:
    """Ends with the test that it is made for."""

    def __init__(self, test):
        process = desktop.start(["xev", "-name", NAME, "-event", "button"],
                                stdout=subprocess.DEVNULL)
        test.addCleanup(desktop.stop, process)
        self._window = waiting.until(lambda: screen.window_named(NAME),
                                     "the window of another program shows")

    def take_keyboard(self):
        screen.activate(self._window)
