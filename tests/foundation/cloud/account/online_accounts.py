"""A python-dbusmock template that plays GNOME's online accounts.

A test speaks to the methods in the mock's own interface; the program sees the others.
"""

import dbus
from dbusmock import MOCK_IFACE, OBJECT_MANAGER_IFACE, get_object, get_objects

BUS_NAME = "org.gnome.OnlineAccounts"
MAIN_OBJ = "/org/gnome/OnlineAccounts"
MAIN_IFACE = "org.gnome.OnlineAccounts.Manager"
SYSTEM_BUS = False
IS_OBJECT_MANAGER = True

ACCOUNT = "org.gnome.OnlineAccounts.Account"
FILES = "org.gnome.OnlineAccounts.Files"
PASSWORD = "org.gnome.OnlineAccounts.PasswordBased"


def load(_mock, _parameters):
    pass


def path(identifier):
    return f"{MAIN_OBJ}/Accounts/{identifier}"


@dbus.service.method(MOCK_IFACE, in_signature="sssssb")
def AddAccount(self, identifier, kind, identity, uri, password, accepts_errors):
    properties = {
        "Id": identifier,
        "ProviderType": kind,
        "Identity": identity,
        "PresentationIdentity": identity + "@shown",
        "AttentionNeeded": dbus.Boolean(False),
        "FilesDisabled": dbus.Boolean(False),
    }
    self.AddObject(path(identifier), ACCOUNT, properties,
                   [("EnsureCredentials", "", "i", "ret = 0")])
    account = get_object(path(identifier))
    account.AddProperties(FILES, {"Uri": uri, "AcceptSslErrors": accepts_errors})
    # The mock lists an interface only where it has a property.
    account.AddProperty(PASSWORD, "Dummy", "")
    account.password = str(password)
    account.AddMethod(PASSWORD, "GetPassword", "s", "s", "\n".join([
        "if not self.password:",
        "    raise dbus.exceptions.DBusException('gone', name='org.gnome.OnlineAccounts.Error.Failed')",
        "ret = self.password",
    ]))
    account.object_manager_emit_added(path(identifier))


@dbus.service.method(MOCK_IFACE, in_signature="s")
def RemoveAccount(self, identifier):
    get_object(path(identifier)).object_manager_emit_removed(path(identifier))
    self.RemoveObject(path(identifier))


@dbus.service.method(MOCK_IFACE, in_signature="ss")
def SetPassword(_self, identifier, password):
    """What is answered from now on, empty for an error; nothing is told."""
    get_object(path(identifier)).password = str(password)


@dbus.service.method(MOCK_IFACE, in_signature="s")
def SwitchFilesOff(self, identifier):
    """As the desktop does it: the interface goes, too."""
    account = get_object(path(identifier))
    account.files = account.props.pop(FILES)
    self.EmitSignal(OBJECT_MANAGER_IFACE, "InterfacesRemoved", "oas",
                    [dbus.ObjectPath(path(identifier)), [FILES]])
    account.UpdateProperties(ACCOUNT, {"FilesDisabled": dbus.Boolean(True)})


@dbus.service.method(MOCK_IFACE, in_signature="s")
def SwitchFilesOn(self, identifier):
    account = get_object(path(identifier))
    account.props[FILES] = account.files
    account.UpdateProperties(ACCOUNT, {"FilesDisabled": dbus.Boolean(False)})
    self.EmitSignal(OBJECT_MANAGER_IFACE, "InterfacesAdded", "oa{sa{sv}}",
                    [dbus.ObjectPath(path(identifier)), {FILES: account.files}])


@dbus.service.method(MOCK_IFACE, in_signature="s")
def SetAttentionNeeded(_self, identifier):
    get_object(path(identifier)).UpdateProperties(ACCOUNT, {"AttentionNeeded": dbus.Boolean(True)})


@dbus.service.method(MOCK_IFACE, in_signature="ss")
def SignIn(self, identifier, password):
    """The user gave this password in the desktop's settings."""
    self.SetPassword(identifier, password)
    get_object(path(identifier)).UpdateProperties(ACCOUNT, {"AttentionNeeded": dbus.Boolean(False)})


@dbus.service.method(MOCK_IFACE, in_signature="s")
def Touch(_self, identifier):
    """A change that says nothing."""
    get_object(path(identifier)).UpdateProperties(PASSWORD, {"Dummy": ""})


@dbus.service.method(MOCK_IFACE, in_signature="ss", out_signature="as")
def ArgumentsOf(_self, identifier, method):
    """Of each call of the account's method: the arguments, joined by commas."""
    return [",".join(repr(str(argument)) for argument in arguments)
            for _time, arguments in get_object(path(identifier)).GetMethodCalls(method)]


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="as")
def AccountIds(_self):
    """Those that are set up."""
    return [name.rsplit("/", 1)[1] for name in get_objects() if name.startswith(path(""))]
