"""The desktop's online accounts, as far as the program asks them, put on a session's bus."""

from gi.repository import Gio, GLib

NAME = "org.gnome.OnlineAccounts"
ROOT = "/org/gnome/OnlineAccounts"
ACCOUNT = f"{ROOT}/Accounts/account_1"
ACCOUNT_FACE, FILES_FACE, PASSWORD_FACE = (
    f"{NAME}.Account", f"{NAME}.Files", f"{NAME}.PasswordBased")
MANAGER_FACE = "org.freedesktop.DBus.ObjectManager"

INTERFACES = """
<node>
  <interface name="org.freedesktop.DBus.ObjectManager">
    <method name="GetManagedObjects">
      <arg type="a{oa{sa{sv}}}" direction="out"/>
    </method>
    <signal name="InterfacesAdded">
      <arg type="o"/>
      <arg type="a{sa{sv}}"/>
    </signal>
  </interface>
  <interface name="org.gnome.OnlineAccounts.Account">
    <method name="EnsureCredentials">
      <arg type="i" direction="out"/>
    </method>
    <property name="Id" type="s" access="read"/>
    <property name="ProviderType" type="s" access="read"/>
    <property name="Identity" type="s" access="read"/>
    <property name="PresentationIdentity" type="s" access="read"/>
    <property name="AttentionNeeded" type="b" access="read"/>
    <property name="FilesDisabled" type="b" access="read"/>
  </interface>
  <interface name="org.gnome.OnlineAccounts.Files">
    <property name="Uri" type="s" access="read"/>
    <property name="AcceptSslErrors" type="b" access="read"/>
  </interface>
  <interface name="org.gnome.OnlineAccounts.PasswordBased">
    <method name="GetPassword">
      <arg type="s" direction="in"/>
      <arg type="s" direction="out"/>
    </method>
  </interface>
</node>
"""


class OnlineAccounts:
    """There from its construction on, without any account at first."""

    def __init__(self, bus):
        self._bus = bus
        self._node = Gio.DBusNodeInfo.new_for_xml(INTERFACES)
        self._account = {}
        self._register(ROOT, MANAGER_FACE, lambda *_: GLib.Variant("(a{oa{sa{sv}}})", (
            {ACCOUNT: self._account} if self._account else {},)))
        Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)

    def add(self, server, user, password):
        """Signs the user in to a server that is reached without TLS."""
        self._account = {
            ACCOUNT_FACE: {
                "Id": GLib.Variant("s", "account_1"),
                "ProviderType": GLib.Variant("s", "owncloud"),
                "Identity": GLib.Variant("s", user),
                "PresentationIdentity": GLib.Variant("s", f"{user}@example.org"),
                "AttentionNeeded": GLib.Variant("b", False),
                "FilesDisabled": GLib.Variant("b", False),
            },
            FILES_FACE: {
                "Uri": GLib.Variant("s", server.url.replace("http://", f"dav://{user}@")),
                "AcceptSslErrors": GLib.Variant("b", False),
            },
            PASSWORD_FACE: {},
        }
        self._register(ACCOUNT, ACCOUNT_FACE, lambda *_: GLib.Variant("(i)", (0,)))
        self._register(ACCOUNT, FILES_FACE, None)
        self._register(ACCOUNT, PASSWORD_FACE, lambda *_: GLib.Variant("(s)", (password,)))
        self._bus.emit_signal(None, ROOT, MANAGER_FACE, "InterfacesAdded",
                              GLib.Variant("(oa{sa{sv}})", (ACCOUNT, self._account)))

    def _register(self, path, face, answer):
        def call(*arguments):
            arguments[-1].return_value(answer())

        def read(_bus, _sender, _path, _face, name):
            return self._account[face][name]

        self._bus.register_object(path, self._node.lookup_interface(face), call, read, None)
