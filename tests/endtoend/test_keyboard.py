"""Everything by keyboard alone."""

import screen
import tree
from case import EndToEndTest
from settings_sheet import CLOUD, CURRENCY, EXCELLENT, GOOD, HIGHLIGHT, SYSTEM, SettingsTest
from tree import Role

BILL = (Role.TEXT, "Bill to Split")
FEWER = (Role.PUSH_BUTTON, "Fewer people")
MORE = (Role.PUSH_BUTTON, "More people")
SERVICE = (Role.RADIO_BUTTON, "Good")
# As the window is read: down the page from the bill, then again from its top.
TAB_ORDER = [
    BILL,
    FEWER,
    MORE,
    SERVICE,
    (Role.CHECK_BOX, "Everyone pays the tip"),
    (Role.CHECK_BOX, "Round up tip"),
    (Role.CHECK_BOX, "Round up share"),
    (Role.PUSH_BUTTON, "Settings"),
    (Role.PUSH_BUTTON, "Clear"),
    (Role.PUSH_BUTTON, "Copy"),
    (Role.PUSH_BUTTON, "Share"),
    (Role.PUSH_BUTTON, "History"),
    (Role.PUSH_BUTTON, "Save"),
]
SETTINGS_TAB_ORDER = [
    (Role.PUSH_BUTTON, "Done"),
    (Role.CHECK_BOX, CLOUD),
    (Role.CHECK_BOX, CURRENCY),
    (Role.CHECK_BOX, HIGHLIGHT),
    (Role.SLIDER, GOOD),
    (Role.SLIDER, EXCELLENT),
    (Role.RADIO_BUTTON, SYSTEM),
    (Role.PUSH_BUTTON, "Help"),
]


class Keyboard(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.vexilo = self.launch()

    def test_the_bill_field_has_the_keyboard_at_the_start(self):
        self.vexilo.expect_focus(*BILL)

    def test_the_tab_key_follows_the_eye(self):
        self.vexilo.focus_bill()

        for expected in [*TAB_ORDER[1:], BILL]:
            screen.press_keys("Tab")
            self.vexilo.expect_focus(*expected)

    def test_the_tab_key_goes_back_with_shift(self):
        self.vexilo.focus_bill()

        for expected in reversed(TAB_ORDER):
            screen.press_keys("shift+Tab")
            self.vexilo.expect_focus(*expected)

    def test_space_and_return_press_buttons(self):
        self.go_to(MORE)

        for shown, key in enumerate(("space", "Return", "KP_Enter"), start=3):
            screen.press_keys(key)
            self.vexilo.expect_people(shown)

    def test_space_and_return_turn_switches(self):
        for name in ("Everyone pays the tip", "Round up tip", "Round up share"):
            self.go_to((Role.CHECK_BOX, name))
            for key, checked in (("space", True), ("Return", False), ("KP_Enter", True)):
                screen.press_keys(key)
                self.vexilo.expect_checked(Role.CHECK_BOX, name, checked)

    def test_arrows_choose_the_service_and_stop_at_the_ends(self):
        self.go_to(SERVICE)

        for key, chosen in (("Left", "Poor"), ("Left", "Poor"), ("Right", "Good"),
                            ("Right", "Excellent"), ("Right", "Excellent"), ("Left", "Good")):
            screen.press_keys(key)
            self.vexilo.expect_service(chosen)

    def test_a_whole_bill_is_split_without_the_pointer(self):
        self.vexilo.focus_bill()
        screen.type_text("100")
        screen.press_keys("Tab", "Tab", "space", "space")  # two people more
        screen.press_keys("Tab", "Left", "Right", "Right")  # excellent
        screen.press_keys("Tab", "space")  # everyone pays

        self.vexilo.expect_figures("TOTAL $140.00", "Tip (10.00 x 4) $40.00",
                                   "Share per person $35.00")

    def test_a_dialog_gives_the_keyboard_back(self):
        self.go_to((Role.PUSH_BUTTON, "Clear"))
        screen.press_keys("Return")
        self.vexilo.expect(Role.DIALOG)

        screen.press_keys("Escape")
        self.vexilo.expect_none(Role.DIALOG)

        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Clear")

    def test_the_menu_gives_the_keyboard_back(self):
        self.go_to(MORE)
        screen.press_keys("alt+h")
        self.vexilo.expect(Role.MENU_ITEM, "Help on website")

        screen.press_keys("Escape")
        self.vexilo.expect_none(Role.MENU_ITEM, "Help on website")

        self.vexilo.expect_focus(*MORE)

    def test_the_tab_key_stays_inside_a_dialog(self):
        self.vexilo.press_button("Clear")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")
        dialog = self.vexilo.expect(Role.DIALOG)

        for _ in range(4):
            before = self.vexilo.focused()
            screen.press_keys("Tab")
            self.vexilo.until(lambda old=before: self.vexilo.focused() not in (old, None),
                              "the keyboard moves on")
            self.assertTrue(any(tree.has(node, tree.State.FOCUSED)
                                for node in tree.find_all(dialog, Role.PUSH_BUTTON)))

    def go_to(self, target):
        tree.focus(self.vexilo.expect(*target))
        self.vexilo.expect_focus(*target)


class SettingsKeyboard(SettingsTest):
    def test_the_tab_key_goes_round_the_settings_both_ways(self):
        self.open()

        for expected in [*SETTINGS_TAB_ORDER[1:], SETTINGS_TAB_ORDER[0]]:
            screen.press_keys("Tab")
            self.sheet.expect_focus(*expected)
        for expected in reversed(SETTINGS_TAB_ORDER):
            screen.press_keys("shift+Tab")
            self.sheet.expect_focus(*expected)
