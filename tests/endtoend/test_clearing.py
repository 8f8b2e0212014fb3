"""Clearing the bill, which asks first."""

import screen
import tree
from case import EndToEndTest
from tree import Role

TITLE = "Clear this bill?"
BILL = {"bill": "100", "people": "4", "service": "2", "tipFromEveryone": "true",
        "roundTip": "true", "roundShare": "true"}
FIGURES = ("TOTAL $140.00", "Tip (10.00 x 4) $40.00", "Share per person $35.00")
SWITCHES = ["Everyone pays the tip", "Round up tip", "Round up share"]


class Clearing(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.home.write_preferences(**BILL)
        self.vexilo = self.launch()
        self.vexilo.expect_figures(*FIGURES)

    def test_the_question_has_two_answers(self):
        dialog = self.ask()

        names = [tree.name_of(node) for node in tree.find_all(dialog, Role.PUSH_BUTTON)]

        self.assertEqual(sorted(names), ["Cancel", "Clear"])

    def test_clear_gives_an_empty_bill(self):
        self.answer("Clear")

        self.expect_cleared()

    def test_the_cleared_bill_is_stored(self):
        self.answer("Clear")

        cleared = {"bill": "0", "people": "2", "service": "0", "tipFromEveryone": "false",
                   "roundTip": "false", "roundShare": "false"}
        self.vexilo.until(lambda: cleared.items() <= self.home.preferences().items(),
                          "the cleared bill is stored")

    def test_cancel_keeps_everything(self):
        self.answer("Cancel")

        self.assert_kept()

    def test_escape_keeps_everything(self):
        self.ask()

        screen.press_keys("Escape")
        self.vexilo.expect_none(Role.DIALOG)

        self.assert_kept()

    def test_return_takes_the_safe_answer(self):
        self.ask()
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")

        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG)

        self.assert_kept()

    def test_the_keyboard_alone_can_clear(self):
        self.ask()
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")

        screen.press_keys("Tab")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Clear")
        screen.press_keys("space")
        self.vexilo.expect_none(Role.DIALOG)

        self.expect_cleared()

    def test_the_question_can_be_asked_again(self):
        self.answer("Cancel")

        self.answer("Clear")

        self.expect_cleared()

    def test_a_wrong_text_in_the_field_is_cleared_too(self):
        self.vexilo.type_bill("abc")
        self.vexilo.expect(Role.NOTIFICATION, "Not an amount")

        self.answer("Clear")

        self.expect_cleared()
        self.vexilo.expect_none(Role.NOTIFICATION)

    def ask(self):
        self.vexilo.press_button("Clear")
        return self.vexilo.expect(Role.DIALOG, TITLE)

    def answer(self, button):
        dialog = self.ask()
        self.vexilo.press_button(button, within=dialog)
        self.vexilo.expect_none(Role.DIALOG)

    def expect_cleared(self):
        self.vexilo.expect_bill_text("0")
        self.vexilo.expect_people(2)
        self.vexilo.expect_figures("TOTAL $0.00", "Tip $0.00", "Share per person $0.00")
        self.assertEqual(self.vexilo.checked(Role.RADIO_BUTTON), ["Poor"])
        self.assertEqual(self.vexilo.checked(Role.CHECK_BOX), [])

    def assert_kept(self):
        self.assertEqual(self.vexilo.bill_text(), "100")
        self.assertEqual(self.vexilo.figures(), list(FIGURES))
        self.assertEqual(self.vexilo.checked(Role.RADIO_BUTTON), ["Excellent"])
        self.assertEqual(self.vexilo.checked(Role.CHECK_BOX), SWITCHES)
