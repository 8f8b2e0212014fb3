"""The program is started once more: the window that there is comes before the user."""

import os
import signal

import desktop
import screen
import waiting
from bystander import Bystander
from case import EndToEndTest
from gi.repository import Gio
from vexilo import start_process

NAME, PATH = "com.morrowick.vexilo", "/com/morrowick/vexilo"
INTERFACE = """
<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg type="a{sv}" direction="in"/>
    </method>
  </interface>
</node>
"""
NO_BUS = "unix:path=/nowhere"
MANY = 6
GARBAGE = b"This was never a store.\n" * 500
WINDOW = "Vexilo"


class OneWindowTest(EndToEndTest):
    def start_again(self, **environment):
        process = start_process(self.home, environment=environment)
        self.addCleanup(desktop.stop, process)
        return process

    def expect_end(self, process):
        """Waits until a second start has ended, as one does that has done its work."""
        waiting.until(lambda: process.poll() is not None, "the second start ends")
        self.assertEqual(process.returncode, 0)

    def expect_one_window(self):
        self.assertEqual(len(screen.windows_named(WINDOW)), 1)


class SecondStart(OneWindowTest):
    def setUp(self):
        super().setUp()
        self.bystander = Bystander(self)
        self.vexilo = self.launch()

    def test_the_window_behind_another_one_comes_before_it(self):
        self.bystander.take_keyboard()
        self.vexilo.expect_active(False)

        self.expect_end(self.start_again())

        self.vexilo.expect_active()
        self.assertEqual(screen.active_window(), self.vexilo.window)
        self.expect_one_window()

    def test_a_minimised_window_shows_again(self):
        window = self.vexilo.window
        screen.minimise(window)
        self.assertIsNone(screen.window_of(self.vexilo.process_id))

        self.expect_end(self.start_again())

        self.assertEqual(self.vexilo.window, window)
        self.vexilo.expect_active()
        self.expect_one_window()

    def test_a_maximised_window_that_is_minimised_shows_maximised(self):
        window = self.vexilo.window
        screen.press_keys("alt+F10")
        self.vexilo.until(lambda: screen.is_maximised(window), "the window is maximised")
        screen.minimise(window)

        self.expect_end(self.start_again())

        self.vexilo.expect_active()
        self.assertTrue(screen.is_maximised(window))

    def test_a_window_of_another_workspace_comes_to_the_user(self):
        self.addCleanup(screen.set_workspaces, 1)
        screen.set_workspaces(2)
        screen.go_to_workspace(1)
        self.vexilo.expect_active(False)

        self.expect_end(self.start_again())

        self.vexilo.expect_active()
        self.assertEqual(screen.workspace_of(self.vexilo.window), screen.workspace())

    def test_the_keyboard_is_where_it_was(self):
        self.vexilo.type_bill("12.5")
        screen.press_keys("Tab")
        focused, bill = self.vexilo.focused(), self.vexilo.bill_text()
        self.bystander.take_keyboard()

        self.expect_end(self.start_again())

        self.vexilo.expect_focus(*focused)
        self.vexilo.expect_bill_text(bill)

    def test_the_desktop_is_told_that_no_window_is_to_come(self):
        with screen.RootMessages("_NET_STARTUP_INFO_BEGIN") as messages:
            self.expect_end(self.start_again(DESKTOP_STARTUP_ID="panel/vexilo/1_TIME77"))

            waiting.until(messages.arrived, "the end of the start is told")

    def test_the_texts_of_a_desktop_may_be_anything(self):
        for text in ("_TIME", "_TIME99999999999999999999", "x" * 100000, "a b\nc", "\u00e9"):
            with self.subTest(text=text[:30]):
                self.bystander.take_keyboard()
                self.vexilo.expect_active(False)

                self.expect_end(
                    self.start_again(DESKTOP_STARTUP_ID=text, XDG_ACTIVATION_TOKEN=text))

                self.vexilo.expect_active()


class TwoThatRun(OneWindowTest):
    def test_without_a_session_bus_each_start_has_its_window(self):
        for _ in range(2):
            process = self.start_again(DBUS_SESSION_BUS_ADDRESS=NO_BUS)

            waiting.until(lambda: screen.window_of(process.pid), "the window shows")

        self.assertEqual(len(screen.windows_named(WINDOW)), 2)

    def test_a_program_that_hangs_is_not_waited_for_for_ever(self):
        hanging = self.launch()
        os.kill(hanging.process_id, signal.SIGSTOP)
        self.addCleanup(os.kill, hanging.process_id, signal.SIGCONT)

        vexilo = self.launch()
        vexilo.set_bill("10")
        vexilo.expect_figures("TOTAL $10.50", "Tip $0.50", "Share per person $5.25")

        bystander = Bystander(self)
        bystander.take_keyboard()
        vexilo.expect_active(False)
        self.expect_end(self.start_again())  # finds the one that answers
        vexilo.expect_active()

    def test_a_stranger_that_has_the_name_and_is_silent_is_not_waited_for_for_ever(self):
        with _SilentStranger() as stranger:
            vexilo = self.launch()

            self.assertEqual(stranger.calls, 1)
            vexilo.set_bill("10")
            vexilo.expect_figures("TOTAL $10.50", "Tip $0.50", "Share per person $5.25")


class Races(OneWindowTest):
    def test_of_many_starts_at_once_one_shows_its_window(self):
        self.expect_one_of([self.start_again() for _ in range(MANY)])

    def test_of_two_that_wait_for_one_that_ends_one_shows_its_window(self):
        with _SilentStranger() as stranger:
            started = [self.start_again(), self.start_again()]
            waiting.until(lambda: stranger.calls == 2, "both have asked")

        self.expect_one_of(started)

    def expect_one_of(self, started):
        waiting.until(lambda: len(_running(started)) == 1, "one program is left")
        waiting.until(lambda: screen.window_of(_running(started)[0].pid), "its window shows")
        self.expect_one_window()
        self.assertEqual([process.returncode for process in started if process.returncode], [])

    def test_a_start_while_the_program_quits_shows_a_window_with_what_was_typed(self):
        vexilo = self.launch()
        for bill in ("11", "22", "33", "44"):
            vexilo.set_bill(bill)
            os.kill(vexilo.process_id, signal.SIGTERM)

            following = self.launch()

            following.expect_bill_text(bill)
            self.assertEqual(vexilo.await_exit(), 0)
            vexilo = following
        self.expect_one_window()

    def test_a_start_after_a_crash_shows_a_window(self):
        vexilo = self.launch()
        vexilo.kill()

        self.launch().expect_bill_text("0")


class UnusableStore(OneWindowTest):
    def test_a_second_start_shows_the_first_ones_alert(self):
        store = self.home.file("data") / "Morrowick" / "Vexilo" / "Vexilo.sqlite"
        store.parent.mkdir(parents=True)
        store.write_bytes(GARBAGE)
        vexilo = self.launch()
        bystander = Bystander(self)
        bystander.take_keyboard()
        vexilo.expect_active(False)

        self.expect_end(self.start_again())

        vexilo.expect_active()
        self.expect_one_window()
        screen.press_keys("Return")
        self.assertEqual(vexilo.await_exit(), -signal.SIGABRT)


class _SilentStranger:
    """A program that has the name, takes calls, and never answers. Use as a context manager."""

    def __init__(self):
        self.calls = 0

    def __enter__(self):
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self._object = self._bus.register_object(
            PATH, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], self._count, None, None)
        acquired = []
        self._name = Gio.bus_own_name_on_connection(
            self._bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: acquired.append(True), None)
        waiting.until(lambda: acquired, "the stranger has the name")
        return self

    def __exit__(self, *_):
        Gio.bus_unown_name(self._name)
        self._bus.unregister_object(self._object)
        self._bus.flush_sync()

    def _count(self, *_):
        self.calls += 1


def _running(processes):
    return [process for process in processes if process.poll() is None]
