"""Waiting on a condition with a deadline: the only way in which these tests ever wait."""

import time

from gi.repository import GLib

DEADLINE = 5.0
PAUSE = 0.01


def until(condition, what, *, details=lambda: "", deadline=DEADLINE):
    """Returns the condition's first true value; fails with `what` and `details()` after seconds.

    Events of this process's own main loop are served meanwhile, so that services that a test
    offers on the bus can answer.
    """
    end = time.monotonic() + deadline
    while True:
        serve_events()
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"Waited {deadline:g} s in vain: {what}\n{details()}")
        time.sleep(PAUSE)


def serve_events():
    """Handles what has arrived for this process's main loop, without blocking."""
    context = GLib.MainContext.default()
    while context.iteration(False):
        pass
