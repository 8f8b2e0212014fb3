"""Desktop portals that the tests put on the private session bus."""

from typing import NamedTuple

from gi.repository import Gio, GLib

import waiting

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
REQUEST = "/org/freedesktop/portal/desktop/request/{}/{}"
DONE, CANCELLED, FAILED = 0, 1, 2

VERSION = '<property name="version" type="u" access="read"/>'
EMAIL = f"""
<node>
  <interface name="org.freedesktop.portal.Email">
    <method name="ComposeEmail">
      <arg type="s" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    {VERSION}
  </interface>
</node>
"""
SETTINGS = """
<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll">
      <arg type="as" direction="in"/>
      <arg type="a{sa{sv}}" direction="out"/>
    </method>
    <signal name="SettingChanged">
      <arg type="s"/>
      <arg type="s"/>
      <arg type="v"/>
    </signal>
  </interface>
</node>
"""


class Portal:
    """Use as a context manager: on the session bus while inside."""

    def __init__(self, *nodes):
        self._interfaces = [Gio.DBusNodeInfo.new_for_xml(node).interfaces[0] for node in nodes]

    def __enter__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self._objects = [self.bus.register_object(PATH, interface, self._answer, _tell_version, None)
                         for interface in self._interfaces]
        acquired = []
        self._name = Gio.bus_own_name_on_connection(
            self.bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: acquired.append(True), None)
        waiting.until(lambda: acquired, "the portal has its name")
        return self

    def __exit__(self, *_):
        Gio.bus_unown_name(self._name)
        for registered in self._objects:
            self.bus.unregister_object(registered)
        self.bus.flush_sync()

    def _answer(self, _bus, sender, _path, _interface, _method, arguments, invocation):
        self.answer(sender, arguments.unpack(), invocation)

    def respond(self, sender, token, response, results=None):
        """Tells a caller what came of its request."""
        self.bus.emit_signal(sender, request_path(sender, token), "org.freedesktop.portal.Request",
                             "Response", GLib.Variant("(ua{sv})", (response, results or {})))


def request_path(sender, token):
    return REQUEST.format(sender[1:].replace(".", "_"), token)


def _tell_version(_bus, _sender, _path, _interface, _property):
    return GLib.Variant("u", 3)


class EmailPortal(Portal):
    """Keeps the letters that it is asked to compose, and answers each call with the code."""

    def __init__(self, response=DONE):
        super().__init__(EMAIL)
        self.letters = []  # the options of each call, as plain values
        self._response = response

    def answer(self, sender, arguments, invocation):
        _parent, options = arguments
        token = options.pop("handle_token")
        self.letters.append(options)
        invocation.return_value(GLib.Variant("(o)", (request_path(sender, token),)))
        self.respond(sender, token, self._response)


class Wish(NamedTuple):
    """A key of the desktop's settings, and the D-Bus type of its values."""

    space: str
    key: str
    kind: str


COLOR_SCHEME = Wish("org.freedesktop.appearance", "color-scheme", "u")
CONTRAST = Wish("org.freedesktop.appearance", "contrast", "u")
HIGH_CONTRAST = Wish("org.gnome.desktop.a11y.interface", "high-contrast", "b")
ANIMATIONS = Wish("org.gnome.desktop.interface", "enable-animations", "b")
TEXT_SCALE = Wish("org.gnome.desktop.interface", "text-scaling-factor", "d")


def told_wishes(wishes, spaces):
    """What a desktop answers that is asked for its settings in some spaces of names."""
    values = {}
    for wish, value in wishes.items():
        if wish.space in spaces:
            values.setdefault(wish.space, {})[wish.key] = GLib.Variant(wish.kind, value)
    return GLib.Variant("(a{sa{sv}})", (values,))


class SettingsPortal(Portal):
    """A desktop with a colour scheme: 0 has no preference, 1 prefers dark, 2 prefers light.

    Other wishes are given at first as pairs of the wish and its value, or announced later.
    """

    def __init__(self, color_scheme, *wishes):
        super().__init__(SETTINGS)
        self._wishes = {COLOR_SCHEME: color_scheme} | dict(wishes)

    def answer(self, _sender, arguments, invocation):
        (spaces,) = arguments
        invocation.return_value(told_wishes(self._wishes, spaces))

    def change(self, color_scheme):
        self.announce(COLOR_SCHEME, color_scheme)

    def announce(self, wish, value):
        self._wishes[wish] = value
        change = (wish.space, wish.key, GLib.Variant(wish.kind, value))
        self.bus.emit_signal(None, PATH, "org.freedesktop.portal.Settings", "SettingChanged",
                             GLib.Variant("(ssv)", change))


class StillDesktop(SettingsPortal):
    """A desktop that asks for no motion, so that what shows stands where it stays."""

    def __init__(self):
        super().__init__(0, (ANIMATIONS, False))
