"""A walk over all that assistive software meets: everything is named, and pressing works."""

import re

import screen
import tree
from accessible_walk import PRESSED, AccessibleWalk
from case import EndToEndTest
from portal import EmailPortal
from settings_sheet import (CLOUD, COPYRIGHT, CURRENCY, DARK, EXCELLENT, GOOD, HIGHLIGHT, LIGHT,
                            SHEET, SYSTEM, SettingsTest)
from tree import Role, State

# What the contract promises on the calculator, in the order of the window.
CALCULATOR = [
    (Role.PUSH_BUTTON, "Settings"),
    (Role.PUSH_BUTTON, "Clear"),
    (Role.PUSH_BUTTON, "Copy"),
    (Role.PUSH_BUTTON, "Share"),
    (Role.PUSH_BUTTON, "History"),
    (Role.PUSH_BUTTON, "Save"),
    (Role.TEXT, "Bill to Split"),
    (Role.LABEL, "People 2"),
    (Role.PUSH_BUTTON, "Fewer people"),
    (Role.PUSH_BUTTON, "More people"),
    (Role.PANEL, "Service"),
    (Role.RADIO_BUTTON, "Poor"),
    (Role.RADIO_BUTTON, "Good"),
    (Role.RADIO_BUTTON, "Excellent"),
    (Role.LABEL, "TOTAL $0.00"),
    (Role.LABEL, "Tip $0.00"),
    (Role.LABEL, "Share per person $0.00"),
    (Role.CHECK_BOX, "Everyone pays the tip"),
    (Role.CHECK_BOX, "Round up tip"),
    (Role.CHECK_BOX, "Round up share"),
]
SPECIFY = "Specify what percentage of the bill the tip should be for {} service."
VERSION = "Version 1.2.3"  # of whatever numbers
SETTINGS = [
    (Role.DIALOG, SHEET),
    (Role.HEADING, SHEET),
    (Role.PUSH_BUTTON, "Done"),
    (Role.HEADING, "GENERAL"),
    (Role.CHECK_BOX, CLOUD),
    (Role.CHECK_BOX, CURRENCY),
    (Role.CHECK_BOX, HIGHLIGHT),
    (Role.HEADING, "GOOD SERVICE"),
    (Role.SLIDER, GOOD),
    (Role.LABEL, "5"),
    (Role.LABEL, SPECIFY.format("a good")),
    (Role.HEADING, "EXCELLENT SERVICE"),
    (Role.SLIDER, EXCELLENT),
    (Role.LABEL, "10"),
    (Role.LABEL, SPECIFY.format("an excellent")),
    (Role.HEADING, "THEME"),
    (Role.PANEL, "Theme"),
    (Role.RADIO_BUTTON, SYSTEM),
    (Role.RADIO_BUTTON, DARK),
    (Role.RADIO_BUTTON, LIGHT),
    (Role.HEADING, "ABOUT"),
    (Role.LABEL, COPYRIGHT),
    (Role.LABEL, VERSION),
    (Role.PUSH_BUTTON, "Help"),
]
# So high that nothing of the settings is out of sight.
HIGH_WINDOW = (540, 1040)


class AccessibleTree(AccessibleWalk, EndToEndTest):
    def setUp(self):
        super().setUp()
        self.browser = self.home.add_recorder("browser")

    def launch_recorded(self):
        return self.launch(environment={"BROWSER": str(self.browser)})

    def test_the_calculator_is_what_the_contract_promises(self):
        vexilo = self.launch_recorded()

        met = [(tree.role_of(node), tree.name_of(node)) for node in vexilo.nodes()]

        self.assertEqual([thing for thing in met if thing in CALCULATOR], CALCULATOR)

    def test_everything_has_a_name_with_the_menu_open(self):
        vexilo = self.launch_recorded()
        screen.press_keys("alt+h")
        vexilo.expect(Role.MENU_ITEM, "Help on website")

        self.assert_named(vexilo.nodes())

    def test_everything_in_the_dialogs_has_a_name(self):
        vexilo = self.launch_recorded()

        for button in ("Clear", "Copy", "Save"):
            vexilo.press_button(button)
            vexilo.expect(Role.DIALOG)
            self.assert_named(vexilo.nodes())
            screen.press_keys("Escape")
            vexilo.expect_none(Role.DIALOG)

    def test_no_name_shows_the_mark_of_a_menu_key(self):
        vexilo = self.launch_recorded()
        screen.press_keys("alt+h")
        vexilo.expect(Role.MENU_ITEM, "Help on website")

        self.assertEqual([tree.describe_node(node) for node in vexilo.nodes()
                          if "&" in tree.name_of(node)], [])

    def test_pressing_anything_does_something(self):
        vexilo = self.launch_recorded()
        vexilo.press_button("More people")  # so that taking one away is seen
        vexilo.expect_people(3)
        # Roles and names; a node itself may be gone after another was pressed.
        pressable = [(tree.role_of(node), tree.name_of(node)) for node in vexilo.nodes()
                     if tree.role_of(node) in PRESSED]
        self.assertGreater(len(pressable), 10)

        with EmailPortal() as portal:
            for role, name in pressable:
                with self.subTest(name):
                    self.assert_press_works(vexilo, portal, role, name)

    def test_pressing_inside_the_menu_does_something(self):
        vexilo = self.launch_recorded()
        screen.press_keys("alt+h")
        vexilo.expect(Role.MENU_ITEM, "Help on website")

        with EmailPortal() as portal:
            self.assert_press_works(vexilo, portal, Role.MENU_ITEM, "Help on website")

    def test_all_that_can_be_pressed_can_take_the_keyboard(self):
        vexilo = self.launch_recorded()

        self.assert_focusable(vexilo.nodes())

    def test_every_text_field_takes_a_text(self):
        vexilo = self.launch_recorded()
        self.assert_fields_take_text(vexilo, vexilo.nodes())

    def assert_press_works(self, vexilo, portal, role, name):
        node = vexilo.expect(role, name)
        if role == Role.RADIO_BUTTON and tree.has(node, State.CHECKED):
            self.choose_another(vexilo, name)
        before = self.seen(vexilo, portal)

        tree.press(vexilo.expect(role, name))
        vexilo.until(lambda: self.seen(vexilo, portal) != before, f"pressing {name!r} is seen")

        self.close_what_was_opened(vexilo)

    def choose_another(self, vexilo, name):
        names = [tree.name_of(node) for node in vexilo.nodes()
                 if tree.role_of(node) == Role.RADIO_BUTTON]
        vexilo.choose_service(next(other for other in names if other != name))

    def seen(self, vexilo, portal):
        """All that a press may change: the window, the letters sent, the pages opened."""
        return (vexilo.describe(), len(portal.letters), self.home.recorded_arguments("browser"))

    def close_what_was_opened(self, vexilo):
        for role in (Role.DIALOG, Role.POPUP_MENU):
            if vexilo.find(role):
                screen.press_keys("Escape")
                vexilo.expect_none(role)


class AccessibleSettings(AccessibleWalk, SettingsTest):
    def setUp(self):
        super().setUp()
        self.start(environment={"BROWSER": str(self.home.add_recorder("browser"))})
        screen.resize(self.vexilo.window, *HIGH_WINDOW)
        self.sheet.open()
        self.sheet.expect(Role.PUSH_BUTTON, "Help")

    def test_the_sheet_is_what_the_contract_promises_and_all_of_it_can_be_reached(self):
        met = [(tree.role_of(node), re.sub(r"^Version \d+(\.\d+)+$", VERSION, tree.name_of(node)))
               for node in self.sheet.nodes()]

        self.assertEqual(met, SETTINGS)
        self.assert_named(self.sheet.nodes())
        self.assert_focusable(self.sheet.nodes())
        self.assert_sliders_take_values(self.vexilo, self.sheet.nodes())

    def test_pressing_anything_does_something(self):
        pressable = [(tree.role_of(node), tree.name_of(node)) for node in self.sheet.nodes()
                     if tree.role_of(node) in PRESSED]
        self.assertGreater(len(pressable), 7)
        self.sheet.choose_theme(DARK)  # so that going back to the first one is seen

        for role, name in pressable:
            with self.subTest(name):
                before = self.seen()
                tree.press(self.sheet.expect(role, name))
                self.vexilo.until(lambda old=before: self.seen() != old,
                                  f"pressing {name!r} is seen")
                if name == "Done":
                    self.sheet.expect_closed()
                    self.sheet.open()

    def seen(self):
        """All that a press may change: the sheet, and the page that the browser opened."""
        return (self.sheet.describe(), self.home.recorded_arguments("browser"))
