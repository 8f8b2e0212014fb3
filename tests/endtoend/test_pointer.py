"""The same actions with the pointer, whose way through the window is not that of the keyboard."""

import screen
import tree
from case import EndToEndTest
from tree import Role

SWITCHES = ["Everyone pays the tip", "Round up tip", "Round up share"]


class Pointer(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.vexilo = self.launch()

    def test_a_click_into_the_bill_field_selects_all(self):
        self.vexilo.type_bill("100")
        self.click(Role.PUSH_BUTTON, "More people")
        self.vexilo.expect_people(3)
        self.click(Role.TEXT, "Bill to Split")
        self.vexilo.expect_focus(Role.TEXT, "Bill to Split")

        screen.type_text("20")

        self.vexilo.expect_bill_text("20")

    def test_clicks_add_people_and_take_them_away(self):
        self.click(Role.PUSH_BUTTON, "More people")
        self.vexilo.expect_people(3)

        self.click(Role.PUSH_BUTTON, "Fewer people")

        self.vexilo.expect_people(2)

    def test_a_click_chooses_the_service(self):
        for name in ("Poor", "Excellent", "Good"):
            self.click(Role.RADIO_BUTTON, name)
            self.vexilo.expect_service(name)

    def test_a_click_turns_a_switch_on_and_off(self):
        for name in SWITCHES:
            for checked in (True, False):
                self.click(Role.CHECK_BOX, name)
                self.vexilo.expect_checked(Role.CHECK_BOX, name, checked)

    def test_a_click_beside_a_dialog_leaves_all_as_it_is(self):
        beside = tree.centre_of(self.vexilo.expect(Role.PUSH_BUTTON, "More people"))
        self.click(Role.PUSH_BUTTON, "Clear")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")

        screen.click(*beside)
        screen.press_keys("Tab")  # heeded after the click, so that its effect would be seen
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Clear")

        self.assertIsNotNone(self.vexilo.find(Role.DIALOG, "Clear this bill?"))
        self.assertIsNotNone(self.vexilo.find(Role.LABEL, "People 2"))

    def test_clicks_answer_a_dialog(self):
        self.vexilo.type_bill("100")
        self.click(Role.PUSH_BUTTON, "Clear")
        dialog = self.vexilo.expect(Role.DIALOG, "Clear this bill?")

        screen.click(*tree.centre_of(tree.find(dialog, Role.PUSH_BUTTON, "Clear")))

        self.vexilo.expect_none(Role.DIALOG)
        self.vexilo.expect_bill_text("0")

    def click(self, role, name):
        screen.click(*tree.centre_of(self.vexilo.expect(role, name)))
