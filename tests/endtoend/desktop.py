"""A private desktop for the tests: display, session bus, window manager and accessibility bus.

Nothing of the machine's own desktop is used or disturbed, and several private desktops can run
beside each other.
"""

import contextlib
import os
import pathlib
import select
import shutil
import signal
import subprocess
import sys
import tempfile

from gi.repository import Gio, GLib

import waiting

SIZE = (1400, 1100)  # of the display, in pixels
START_DEADLINE = 20.0

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

# Two key bindings of its own, to close and to maximise a window: every other key stroke reaches the
# program.
WINDOW_MANAGER_CONFIGURATION = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>1</number></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind>
    <keybind key="A-F10"><action name="ToggleMaximize"/></keybind></keyboard>
</openbox_config>
"""

# The only service that the bus may start: the machine's portals and the like stay out.
ACCESSIBILITY_SERVICE = "/usr/share/dbus-1/services/org.a11y.Bus.service"

PASSED_ON = ("PATH", "PYTHONPATH", "VEXILO_PROGRAM", "ASAN_OPTIONS", "LSAN_OPTIONS",
             "TSAN_OPTIONS", "UBSAN_OPTIONS")


def bare_environment():
    """The few variables of the machine that the tests and the program may see."""
    return {name: os.environ[name] for name in PASSED_ON if name in os.environ}


def start(command, stdin=subprocess.DEVNULL, **options):
    """Starts a process that ends with its parent, even where the parent is killed."""
    return subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *command], stdin=stdin, **options)


def start_and_read_line(command, descriptor_option, **options):
    """Starts a program that writes one line to a descriptor as soon as it can be used.

    Returns the process and the line, which is empty where none came.
    """
    reading, writing = os.pipe()
    with open(reading, encoding="ascii") as lines:
        try:
            process = start([*command, descriptor_option.format(writing)], pass_fds=[writing],
                            **options)
        finally:
            os.close(writing)
        ready = select.select([lines], [], [], START_DEADLINE)[0]
        return process, lines.readline().strip() if ready else ""


def stop(process):
    """Ends a process that this one started, by force where it does not heed the request."""
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def find_program():
    """Makes the path of the program under test good for every folder; ends where there is none."""
    program = os.environ.get("VEXILO_PROGRAM", "")
    if not os.access(program, os.X_OK):
        sys.exit(f"VEXILO_PROGRAM names no program: {program!r}")
    os.environ["VEXILO_PROGRAM"] = os.path.abspath(program)


def end_by_exception():
    """Has this process end by an exception when it is told to, so that the desktop is taken down."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))


def run_inside(script, *arguments, size=SIZE):
    """Runs a Python program inside a private desktop and returns its exit code.

    In a new process: the accessibility client belongs to one desktop for life.
    """
    with Desktop(size) as private:
        process = start([sys.executable, script, *arguments], env=private.environment())
        try:
            return process.wait()
        finally:
            stop(process)


def bus_command(folder):
    """What runs a session bus that starts only the services in the folder's "services"."""
    configuration = folder / "bus.conf"
    configuration.write_text(BUS_CONFIGURATION.format(folder=folder), encoding="utf-8")
    return ["dbus-daemon", f"--config-file={configuration}", "--nofork"]


class Desktop:
    """Use as a context manager; `environment()` is for the processes that shall live inside.

    `size` is that of the display, in pixels.
    """

    def __init__(self, size=SIZE):
        self._screen = "{}x{}x24".format(*size)
        self._cleanup = contextlib.ExitStack()
        self._environment = bare_environment()

    def __enter__(self):
        with contextlib.ExitStack() as cleanup:
            self._cleanup = cleanup
            self._folder = pathlib.Path(tempfile.mkdtemp(prefix="vexilo-desktop-"))
            cleanup.callback(shutil.rmtree, self._folder, ignore_errors=True)
            self._log = cleanup.enter_context(open(self._folder / "log", "wb"))
            self._make_folders()
            self._start_display()
            self._start_bus()
            self._start_window_manager()
            self._await_accessibility()
            self._cleanup = cleanup.pop_all()
        return self

    def __exit__(self, *_):
        self._cleanup.close()

    def environment(self):
        return dict(self._environment)

    def _make_folders(self):
        runtime = self._folder / "runtime"
        runtime.mkdir(mode=0o700)
        services = self._folder / "services"
        services.mkdir()
        shutil.copy(ACCESSIBILITY_SERVICE, services)
        self._environment.update({
            "HOME": str(self._folder),
            "LC_ALL": "C.UTF-8",
            "XDG_RUNTIME_DIR": str(runtime),
            "XDG_CONFIG_HOME": str(self._folder / "config"),
            "XDG_CACHE_HOME": str(self._folder / "cache"),
            "XDG_DATA_HOME": str(self._folder / "data"),
            "GSETTINGS_BACKEND": "memory",
        })

    def _start(self, command, **options):
        process = start(command, env=self._environment, stdout=self._log, stderr=self._log,
                        **options)
        self._cleanup.callback(stop, process)
        return process

    def _start_and_read_line(self, command, descriptor_option):
        process, line = start_and_read_line(command, descriptor_option, env=self._environment,
                                            stdout=self._log, stderr=self._log)
        self._cleanup.callback(stop, process)
        if not line:
            raise RuntimeError(f"{command[0]} did not start:\n{self._read_log()}")
        return line

    def _start_display(self):
        number = self._start_and_read_line(
            ["sh", "-c", f'exec Xvfb -displayfd "$1" -screen 0 {self._screen} -nolisten tcp -noreset',
             "Xvfb"], "{}")
        self._environment["DISPLAY"] = f":{number}"

    def _start_bus(self):
        self._environment["DBUS_SESSION_BUS_ADDRESS"] = self._start_and_read_line(
            bus_command(self._folder), "--print-address={}")

    def _start_window_manager(self):
        configuration = self._folder / "openbox.xml"
        configuration.write_text(WINDOW_MANAGER_CONFIGURATION, encoding="utf-8")
        self._start(["openbox", "--config-file", str(configuration)])
        waiting.until(self._window_manager_answers, "the window manager answers",
                      details=self._read_log, deadline=START_DEADLINE)

    def _window_manager_answers(self):
        answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], check=True,
                                env=self._environment, capture_output=True, text=True)
        return "window id" in answer.stdout

    def _await_accessibility(self):
        bus = Gio.DBusConnection.new_for_address_sync(
            self._environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                      GLib.VariantType("(s)"), Gio.DBusCallFlags.NONE,
                      int(START_DEADLINE * 1000), None)
        bus.close_sync(None)

    def _read_log(self):
        self._log.flush()
        return (self._folder / "log").read_text(encoding="utf-8", errors="replace")
