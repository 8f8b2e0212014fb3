"""The settings sheet, as a person uses it."""

import tree
from case import EndToEndTest
from portal import StillDesktop
from tree import Role, State

SHEET = "Settings"
CLOUD, CURRENCY, HIGHLIGHT = "Sync with iCloud", "Currency symbol $", "Highlight sums"
GOOD, EXCELLENT = "Good", "Excellent"
SYSTEM, DARK, LIGHT = "System", "Dark", "Light"
COPYRIGHT = "© 2026 Morrowick"


class SettingsSheet:
    """The sheet of one running program."""

    def __init__(self, vexilo):
        self._vexilo = vexilo
        self._node = None

    def open(self):
        self._vexilo.press_button("Settings")
        self.expect_open()

    def expect_open(self):
        self._node = self._vexilo.expect(Role.DIALOG, SHEET)
        self.expect_focus(Role.PUSH_BUTTON, "Done")

    def close(self):
        tree.press(self.expect(Role.PUSH_BUTTON, "Done"))
        self.expect_closed()

    def expect_closed(self):
        self._vexilo.expect_none(Role.DIALOG, SHEET)

    # What it holds: sought in it alone, since the calculator below has a "Good" of its own, too.

    def nodes(self):
        return [node for node in tree.nodes(self._node) if tree.has(node, State.SHOWING)]

    def describe(self):
        return tree.describe(self._node)

    def find(self, role, name):
        return tree.find(self._node, role, name)

    def expect(self, role, name):
        return self._vexilo.until(lambda: self.find(role, name),
                                  f"{role.value_nick} {name!r} shows")

    def expect_focus(self, role, name):
        node = self.expect(role, name)
        self._vexilo.until(lambda: tree.has(node, State.FOCUSED), f"{name!r} has the keyboard")

    def focus(self, role, name):
        tree.focus(self.expect(role, name))
        self.expect_focus(role, name)

    def expect_switch(self, name, checked):
        node = self.expect(Role.CHECK_BOX, name)
        self._vexilo.until(lambda: tree.has(node, State.CHECKED) == checked,
                           f"{name!r} is {'on' if checked else 'off'}")

    def switch(self, name, checked):
        """Presses a switch once and waits for the state that this gives."""
        tree.press(self.expect(Role.CHECK_BOX, name))
        self.expect_switch(name, checked)

    def slider(self, name):
        return self.expect(Role.SLIDER, name)

    def percentages(self):
        """The numbers beside the sliders, that of the good service first."""
        names = [tree.name_of(node) for node in tree.find_all(self._node, Role.LABEL)]
        return [name for name in names if name.isdecimal()]

    def expect_percentages(self, *texts):
        self._vexilo.until(lambda: self.percentages() == list(texts),
                           f"the percentages are {texts}")

    def choose_theme(self, name):
        tree.press(self.expect(Role.RADIO_BUTTON, name))
        self.expect_theme(name)

    def expect_theme(self, *names):
        """Waits until this theme, and no other, is the chosen one; none without a name."""
        self._vexilo.until(lambda: self._chosen_themes() == list(names),
                           f"the chosen theme is {names}")

    def _chosen_themes(self):
        return [tree.name_of(node) for node in tree.find_all(self._node, Role.RADIO_BUTTON)
                if tree.has(node, State.CHECKED)]


class SettingsTest(EndToEndTest):
    """The base of the tests of the settings: a program with a bill of 100 for two."""

    desktop = StillDesktop()

    def setUp(self):
        super().setUp()
        self.home.write_preferences(bill="100")
        self.enterContext(self.desktop)

    def start(self, **options):
        self.vexilo = self.launch(**options)
        self.sheet = SettingsSheet(self.vexilo)

    def open(self, **options):
        self.start(**options)
        self.sheet.open()

    def quit(self):
        self.assertEqual(self.vexilo.quit(), 0)

    def assert_stored(self, **values):
        stored = self.home.preferences()
        self.assertEqual({key: stored.get(key) for key in values}, values)

    def expect_stored(self, **values):
        """Waits until these preferences are on the disk."""
        self.vexilo.until(lambda: values.items() <= self.home.preferences().items(),
                          f"{values} is stored")
