"""A session of one user on the private display: a session bus and a keyring of its own."""

import contextlib
import os
import subprocess

from gi.repository import Gio, GLib

import desktop
import waiting

UNLOCKING = b"throwaway"
BUS, BUS_PATH = "org.freedesktop.DBus", "/org/freedesktop/DBus"
SECRETS = "org.freedesktop.secrets"
TOOL_DEADLINE = 10.0  # a keyring that is locked would have it wait for a person

ACCESSIBILITY = "org.a11y.Bus"
ACCESSIBILITY_PATH = "/org/a11y/bus"
ACCESSIBILITY_INTERFACE = """
<node>
  <interface name="org.a11y.Bus">
    <method name="GetAddress">
      <arg type="s" direction="out"/>
    </method>
  </interface>
</node>
"""


class Session:
    """Lives in a home until `end()`. Nothing on its bus is started by being asked for.

    A home may have several, each under a name: then each has a keyring file of its own.
    """

    def __init__(self, home, name="session"):
        self._cleanup = contextlib.ExitStack()
        self._keyring = None
        folder = home.file(name)
        (folder / "data").mkdir(parents=True)
        (folder / "runtime").mkdir(mode=0o700)
        self._log = self._cleanup.enter_context(open(folder / "log", "ab"))
        self._environment = desktop.bare_environment() | home.environment(os.environ["PATH"]) | {
            "XDG_DATA_HOME": str(folder / "data"), "XDG_RUNTIME_DIR": str(folder / "runtime")}
        with contextlib.ExitStack() as failing:
            failing.callback(self.end)
            self.bus = self._start_bus(folder)
            self._offer_accessibility()
            failing.pop_all()

    def _start_bus(self, folder):
        process, address = desktop.start_and_read_line(
            desktop.bus_command(folder), "--print-address={}", env=self._environment,
            stdout=self._log, stderr=self._log)
        self._cleanup.callback(desktop.stop, process)
        if not address:
            raise RuntimeError("The session bus did not start")
        self._environment["DBUS_SESSION_BUS_ADDRESS"] = address
        bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        bus.set_exit_on_close(False)
        self._cleanup.callback(bus.close_sync, None)
        return bus

    def end(self):
        self._cleanup.close()

    def program_environment(self):
        """What a program needs to live in this session."""
        return {"DBUS_SESSION_BUS_ADDRESS": self._environment["DBUS_SESSION_BUS_ADDRESS"]}

    def _offer_accessibility(self):
        """Sends programs to the one accessibility bus on which the tests look for them."""
        interface = Gio.DBusNodeInfo.new_for_xml(ACCESSIBILITY_INTERFACE).interfaces[0]
        address = _call(Gio.bus_get_sync(Gio.BusType.SESSION), ACCESSIBILITY, ACCESSIBILITY_PATH,
                        "GetAddress", None, "(s)")
        self.bus.register_object(
            ACCESSIBILITY_PATH, interface,
            lambda *call: call[-1].return_value(GLib.Variant("(s)", (address,))), None, None)
        _call(self.bus, BUS, BUS_PATH, "RequestName", GLib.Variant("(su)", (ACCESSIBILITY, 0)),
              "(u)")

    # The keyring

    def start_keyring(self):
        """A keyring that is unlocked; what it keeps, it finds again when it is started again."""
        self._keyring = desktop.start(
            ["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"],
            stdin=subprocess.PIPE, env=self._environment, stdout=self._log, stderr=self._log)
        self._cleanup.callback(desktop.stop, self._keyring)
        with self._keyring.stdin as stdin:
            stdin.write(UNLOCKING)
        waiting.until(self._offers_secrets, "the keyring is there")

    def _offers_secrets(self):
        return _call(self.bus, BUS, BUS_PATH, "NameHasOwner", GLib.Variant("(s)", (SECRETS,)),
                     "(b)")

    def stop_keyring(self):
        desktop.stop(self._keyring)
        waiting.until(lambda: not self._offers_secrets(), "the keyring is gone")

    def store_secret(self, secret, label, attributes):
        """Keeps a secret as a person does with the tool for that."""
        pairs = [word for pair in attributes.items() for word in pair]
        subprocess.run(["secret-tool", "store", f"--label={label}", *pairs], check=True,
                       input=secret, text=True, env=self._environment, timeout=TOOL_DEADLINE)


def _call(bus, name, path, method, arguments, answer):
    """Calls a method of an object's interface of the same name as its owner's; one value comes."""
    return bus.call_sync(name, path, name, method, arguments, GLib.VariantType(answer),
                         Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
