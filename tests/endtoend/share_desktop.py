"""Desktops with much to share a text with."""

import os
from typing import NamedTuple

from gi.repository import Gio, GLib

import waiting
from portal import (ANIMATIONS, DONE, EMAIL, SETTINGS, VERSION, Portal, request_path,
                    told_wishes)

FILE_CHOOSER = f"""
<node>
  <interface name="org.freedesktop.portal.FileChooser">
    <method name="SaveFile">
      <arg type="s" direction="in"/>
      <arg type="s" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    {VERSION}
  </interface>
</node>
"""
PRINT = f"""
<node>
  <interface name="org.freedesktop.portal.Print">
    <method name="PreparePrint">
      <arg type="s" direction="in"/>
      <arg type="s" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    <method name="Print">
      <arg type="s" direction="in"/>
      <arg type="s" direction="in"/>
      <arg type="h" direction="in"/>
      <arg type="a{{sv}}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    {VERSION}
  </interface>
</node>
"""
OPEN = None


class Call(NamedTuple):
    """What a portal was asked."""

    method: str
    parent: str
    options: dict
    document: bytes  # what was read from the file descriptor that came with it


class SharePortal(Portal):
    """A desktop that writes e-mails, asks for files and prints, and wishes no motion.

    `responses` says by the method how a request ends, DONE by itself, and `results` with what. One
    that is OPEN does not end. `wishes` are pairs of what else the desktop wishes, with the value.
    """

    def __init__(self, *nodes, responses=None, results=None, wishes=()):
        super().__init__(SETTINGS, *nodes)
        self.calls = []
        self._wishes = {ANIMATIONS: False} | dict(wishes)
        self._responses = responses or {}
        self._results = results or {}

    def _answer(self, _bus, sender, _path, interface, method, arguments, invocation):
        if interface.endswith("Settings"):
            (spaces,) = arguments.unpack()
            invocation.return_value(told_wishes(self._wishes, spaces))
            return
        parent, *_, options = arguments.unpack()
        token = options.pop("handle_token")
        self.calls.append(Call(method, parent, options, _read_document(invocation)))
        invocation.return_value(GLib.Variant("(o)", (request_path(sender, token),)))
        response = self._responses.get(method, DONE)
        if response != OPEN:
            self.respond(sender, token, response, self._results.get(method))

    def methods(self):
        return [call.method for call in self.calls]


class WholePortal(SharePortal):
    """One that has all of it; files are saved as `saved_as`."""

    def __init__(self, saved_as=None, responses=None, wishes=()):
        results = {"PreparePrint": {"token": GLib.Variant("u", 5)}}
        if saved_as:
            results["SaveFile"] = {"uris": GLib.Variant("as", [saved_as.as_uri()])}
        super().__init__(EMAIL, FILE_CHOOSER, PRINT, responses=responses, results=results,
                         wishes=wishes)


def _read_document(invocation):
    descriptors = invocation.get_message().get_unix_fd_list()
    if not descriptors:
        return b""
    with os.fdopen(descriptors.get(0), "rb") as document:
        return document.read()


KDE_CONNECT = "org.kde.kdeconnect"
ROOT = "/modules/kdeconnect"
DAEMON = """
<node>
  <interface name="org.kde.kdeconnect.daemon">
    <method name="deviceNames">
      <arg type="b" direction="in"/>
      <arg type="b" direction="in"/>
      <arg type="a{ss}" direction="out"/>
    </method>
  </interface>
</node>
"""
DEVICE = """
<node>
  <interface name="org.kde.kdeconnect.device">
    <method name="hasPlugin">
      <arg type="s" direction="in"/>
      <arg type="b" direction="out"/>
    </method>
  </interface>
</node>
"""
SHARE = """
<node>
  <interface name="org.kde.kdeconnect.device.share">
    <method name="shareText">
      <arg type="s" direction="in"/>
    </method>
  </interface>
</node>
"""


class KdeConnect:
    """A phone within reach. Use as a context manager: on the session bus while inside."""

    def __init__(self, name):
        self._name = name
        self.texts = []  # that the phone got

    def __enter__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        phone = f"{ROOT}/devices/phone"
        objects = ((ROOT, DAEMON), (phone, DEVICE), (f"{phone}/share", SHARE))
        self._objects = [
            self.bus.register_object(path, Gio.DBusNodeInfo.new_for_xml(node).interfaces[0],
                                     self._answer, None, None) for path, node in objects]
        acquired = []
        self._owned = Gio.bus_own_name_on_connection(
            self.bus, KDE_CONNECT, Gio.BusNameOwnerFlags.NONE, lambda *_: acquired.append(True),
            None)
        waiting.until(lambda: acquired, "KDE Connect has its name")
        return self

    def __exit__(self, *_):
        Gio.bus_unown_name(self._owned)
        for registered in self._objects:
            self.bus.unregister_object(registered)
        self.bus.flush_sync()

    def _answer(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if method == "deviceNames":
            invocation.return_value(GLib.Variant("(a{ss})", ({"phone": self._name},)))
        elif method == "hasPlugin":
            takes = arguments.unpack() == ("kdeconnect_share",)
            invocation.return_value(GLib.Variant("(b)", (takes,)))
        else:
            self.texts += arguments.unpack()
            invocation.return_value(None)
