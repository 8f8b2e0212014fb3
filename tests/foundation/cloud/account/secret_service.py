"""A python-dbusmock template that plays a Secret Service with one locked item.

Who wants it unlocked is to show a prompt, which the test answers beforehand.
"""

import dbus
from dbusmock import MOCK_IFACE, get_object

BUS_NAME = "org.freedesktop.secrets"
MAIN_OBJ = "/org/freedesktop/secrets"
MAIN_IFACE = "org.freedesktop.Secret.Service"
SYSTEM_BUS = False

ITEM = MAIN_OBJ + "/collection/login/1"
PROMPT = MAIN_OBJ + "/prompt/1"


def load(mock, _parameters):
    mock.AddMethods(MAIN_IFACE, [
        ("SearchItems", "a{ss}", "aoao", f"ret = ([], [dbus.ObjectPath('{ITEM}')])"),
        ("Unlock", "ao", "aoo", f"ret = ([], dbus.ObjectPath('{PROMPT}'))"),
    ])
    mock.AddObject(PROMPT, "org.freedesktop.Secret.Prompt", {}, [
        ("Prompt", "s", "", "self.answer_prompt(self)"),
    ])


@dbus.service.method(MOCK_IFACE, in_signature="s")
def AnswerPrompt(_self, answer):
    """What the user will do: "unlock", "dismiss" or "break"."""

    def answer_prompt(prompt):
        if answer == "break":
            raise dbus.exceptions.DBusException("no window", name="org.example.Broken")
        prompt.EmitSignal("org.freedesktop.Secret.Prompt", "Completed", "bv",
                          [dbus.Boolean(answer == "dismiss"), dbus.String("")])

    get_object(PROMPT).answer_prompt = answer_prompt


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="as")
def Unlocked(self):
    """The items that were to be unlocked, call by call, joined by commas."""
    return [",".join(arguments[0]) for _time, arguments in self.GetMethodCalls("Unlock")]
