"""A walk over all that assistive software meets: everything is named, and pressing works."""

import screen
import tree
from accessible_walk import PRESSED, AccessibleWalk
from case import EndToEndTest
from portal import EmailPortal
from tree import Role, State

# What the contract promises on the calculator, in the order of the window.
CALCULATOR = [
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
