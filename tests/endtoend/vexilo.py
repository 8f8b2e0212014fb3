"""The running program as assistive software and the keyboard meet it."""

import contextlib
import os
import signal

import desktop
import screen
import tree
import waiting
from tree import Role, State

DEFAULT_LOCALE = {"LC_ALL": "C.UTF-8"}
FIGURE_LABELS = ("TOTAL", "Tip", "Share per person")


class Vexilo:
    """Starts the program in a home and waits until its window has the keyboard.

    `through` is a command that becomes the program which its arguments name.
    """

    def __init__(self, home, locale=None, environment=None, through=()):
        self._log = log_of(home)
        self._frame = None
        self._process = start_process(home, locale, environment, through)
        with contextlib.ExitStack() as cleanup:
            cleanup.callback(self.stop)
            self._await_active_frame()
            cleanup.pop_all()

    def _await_active_frame(self):
        self._frame = self.until(self._find_frame, "the window shows")
        self.expect_active()

    def expect_active(self, active=True):
        """Waits until the program knows that its window has the keyboard, or has it no more."""
        self.until(lambda: tree.has(self._frame, State.ACTIVE) == active,
                   f"the window has {'the' if active else 'no'} keyboard")

    def _find_frame(self):
        if not self.is_running():
            raise AssertionError(f"The program ended at its start\n{self.output()}")
        application = tree.application(self._process.pid)
        return application and tree.find(application, Role.FRAME)

    # Waiting

    def until(self, condition, what, deadline=waiting.DEADLINE):
        """Waits for the condition; a failure tells what the program shows and has printed."""
        return waiting.until(condition, what, details=self._details, deadline=deadline)

    def _details(self):
        shown = tree.describe(self._frame) if self._frame else "No window"
        return f"{shown}\n{self.output()}"

    def expect(self, role, name=None, deadline=waiting.DEADLINE):
        """Waits for a showing node of a role and name, and returns it."""
        return self.until(lambda: self.find(role, name), f"{role.value_nick} {name!r} shows",
                          deadline)

    def expect_none(self, role, name=None):
        self.until(lambda: not self.find(role, name), f"{role.value_nick} {name!r} is gone")

    # Finding

    @property
    def frame(self):
        return self._frame

    def find(self, role, name=None):
        return tree.find(self._frame, role, name)

    def nodes(self):
        return [node for node in tree.nodes(self._frame) if tree.has(node, State.SHOWING)]

    def describe(self):
        return tree.describe(self._frame)

    def focused(self):
        """Role and name of what has the keyboard, the innermost first; None where nothing has."""
        holders = [node for node in self.nodes() if tree.has(node, State.FOCUSED)]
        return (tree.role_of(holders[-1]), tree.name_of(holders[-1])) if holders else None

    # The calculator

    @property
    def bill_field(self):
        return self.expect(Role.TEXT, "Bill to Split")

    def bill_text(self):
        return tree.text_of(self.bill_field)

    def focus_bill(self):
        tree.focus(self.bill_field)
        self.expect_focus(Role.TEXT, "Bill to Split")

    def type_bill(self, text):
        """Goes to the bill field and types over what stands there."""
        self.focus_bill()
        screen.press_keys("ctrl+a")
        screen.type_text(text)

    def set_bill(self, text):
        tree.set_text(self.bill_field, text)

    def figures(self):
        """The texts of the three rows of the results."""
        names = [tree.name_of(node) for node in tree.find_all(self._frame, Role.LABEL)]
        return [name for label in FIGURE_LABELS for name in names if name.startswith(f"{label} ")]

    def expect_figures(self, *figures):
        self.until(lambda: self.figures() == list(figures), f"the results are {figures}")

    def expect_people(self, count):
        self.expect(Role.LABEL, f"People {count}")

    def expect_bill_text(self, text):
        self.until(lambda: self.bill_text() == text, f"the bill field shows {text!r}")

    def expect_focus(self, role, name):
        self.until(lambda: self.focused() == (role, name), f"{name!r} has the keyboard")

    def expect_checked(self, role, name, checked=True):
        node = self.expect(role, name)
        self.until(lambda: tree.has(node, State.CHECKED) == checked,
                   f"{name!r} is {'checked' if checked else 'not checked'}")

    def checked(self, role):
        """The names of all checked nodes of a role."""
        return [tree.name_of(node) for node in tree.find_all(self._frame, role)
                if tree.has(node, State.CHECKED)]

    def press_button(self, name, within=None):
        root = within or self._frame
        tree.press(self.until(lambda: tree.find(root, Role.PUSH_BUTTON, name),
                              f"push button {name!r} shows"))

    def choose_service(self, name):
        tree.press(self.expect(Role.RADIO_BUTTON, name))
        self.expect_service(name)

    def expect_service(self, name):
        self.until(lambda: self.checked(Role.RADIO_BUTTON) == [name], f"only {name!r} is checked")

    def switch(self, name, checked=True):
        """Presses a switch once and waits for the state that this gives."""
        tree.press(self.expect(Role.CHECK_BOX, name))
        self.expect_checked(Role.CHECK_BOX, name, checked)

    # The process

    @property
    def process_id(self):
        return self._process.pid

    @property
    def window(self):
        return self.until(lambda: screen.window_of(self._process.pid), "the window is mapped")

    def is_running(self):
        return self._process.poll() is None

    def output(self):
        return self._log.read_text(encoding="utf-8", errors="replace")

    def complaints(self):
        """What the views complained of while they were drawn."""
        return [line for line in self.output().splitlines() if ".qml:" in line]

    def quit(self):
        """Quits as the user does and returns the exit code."""
        screen.press_keys("ctrl+q")
        return self.await_exit()

    def terminate(self):
        """Ends the program as a desktop does that is shut down, and returns the exit code."""
        self._process.send_signal(signal.SIGTERM)
        return self.await_exit()

    def kill(self):
        """Ends the program as a crash does."""
        self._process.kill()
        self._process.wait()

    def await_exit(self):
        """Waits until the program has ended and returns the exit code, a signal's as a negative."""
        self.until(lambda: not self.is_running(), "the program ends")
        return self._process.returncode

    def stop(self):
        if self.is_running():
            desktop.stop(self._process)


def log_of(home):
    """The file with what every program in a home has printed."""
    return home.file("vexilo.log")


def start_process(home, locale=None, environment=None, through=()):
    """Starts the program in a home without waiting for a window, which there may never be."""
    with open(log_of(home), "ab") as log:
        return desktop.start([*through, os.environ["VEXILO_PROGRAM"]], stdout=log, stderr=log,
                             env=_environment(home, locale or DEFAULT_LOCALE, environment or {}))


def _environment(home, locale, additions):
    environment = desktop.bare_environment() | home.environment(os.environ["PATH"]) | locale
    for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS"):
        environment[name] = os.environ[name]
    environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
    return environment | additions
