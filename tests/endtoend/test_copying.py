"""The summary of the bill on the clipboard."""

import clipboard
import screen
import tree
from case import EndToEndTest
from tree import Role

COPIED = "The information has been copied to the clipboard for pasting into other apps."
BILL = {"bill": "100", "people": "4", "tipFromEveryone": "true", "roundShare": "true"}
SUMMARY = """Based on 4 people dining.
The bill came to $100.00
Service was Good, tip given $20.00

Grand total to pay $120.00
Everyone pays $30.00
(Everyone is paying a tip)

The share has been rounded up.

The tip is calculated as 5% of $100.00"""
SUMMARY_FOR_ONE = """Based on 1 people dining.
The bill came to 1,234.5
Service was Poor, no tip given

Grand total to pay 1,234.5
"""


class Copying(EndToEndTest):
    def test_copy_puts_the_summary_on_the_clipboard(self):
        vexilo = self.launch_with_bill()

        self.copy_and_dismiss(vexilo)

        self.assertEqual(clipboard.text(), SUMMARY)

    def test_amounts_are_copied_as_they_are_shown(self):
        self.home.write_preferences(bill="1234.5", people="1", service="0", showCurrency="false",
                                    roundTip="true", roundShare="false")
        vexilo = self.launch()

        self.copy_and_dismiss(vexilo)

        self.assertEqual(clipboard.text(), SUMMARY_FOR_ONE)

    def test_copy_takes_the_figures_of_the_moment(self):
        vexilo = self.launch_with_bill()
        self.copy_and_dismiss(vexilo)

        vexilo.set_bill("200")
        self.copy_and_dismiss(vexilo)

        self.assertIn("\nThe bill came to $200.00\n", clipboard.text())

    def test_copying_again_shows_the_notice_again(self):
        vexilo = self.launch_with_bill()

        for _ in range(3):
            self.copy_and_dismiss(vexilo)

        self.assertEqual(clipboard.text(), SUMMARY)

    def test_the_notice_has_one_button_that_has_the_keyboard(self):
        vexilo = self.launch_with_bill()
        vexilo.press_button("Copy")
        dialog = vexilo.expect(Role.DIALOG, COPIED)

        names = [tree.name_of(node) for node in tree.find_all(dialog, Role.PUSH_BUTTON)]
        self.assertEqual(names, ["OK"])
        vexilo.expect_focus(Role.PUSH_BUTTON, "OK")
        screen.press_keys("Return")

        vexilo.expect_none(Role.DIALOG)

    def test_escape_closes_the_notice(self):
        vexilo = self.launch_with_bill()
        vexilo.press_button("Copy")
        vexilo.expect(Role.DIALOG, COPIED)

        screen.press_keys("Escape")

        vexilo.expect_none(Role.DIALOG)

    def test_the_copy_key_copies_the_summary_while_nothing_is_selected(self):
        vexilo = self.launch_with_bill()
        vexilo.type_bill("100")
        vexilo.expect_bill_text("100")

        screen.press_keys("ctrl+c")

        self.dismiss_notice(vexilo)
        self.assertEqual(clipboard.text(), SUMMARY)

    def test_the_copy_key_works_from_any_control(self):
        vexilo = self.launch_with_bill()
        tree.focus(vexilo.expect(Role.PUSH_BUTTON, "More people"))
        vexilo.expect_focus(Role.PUSH_BUTTON, "More people")

        screen.press_keys("ctrl+c")

        self.dismiss_notice(vexilo)
        self.assertEqual(clipboard.text(), SUMMARY)

    def test_the_copy_key_copies_the_summary_again_and_again_while_typing(self):
        vexilo = self.launch_with_bill()
        vexilo.type_bill("200")

        for _ in range(2):
            screen.press_keys("ctrl+c")
            vexilo.expect(Role.DIALOG, COPIED)
            screen.press_keys("Return")
            vexilo.expect_none(Role.DIALOG)

        self.assertIn("\nThe bill came to $200.00\n", clipboard.text())

    def test_the_copy_key_copies_what_is_selected_in_the_field(self):
        vexilo = self.launch_with_bill()
        vexilo.focus_bill()
        screen.press_keys("ctrl+a")

        screen.press_keys("ctrl+c")

        vexilo.until(lambda: clipboard.text() == "100", "the selected text is on the clipboard")
        self.assertIsNone(vexilo.find(Role.DIALOG))

    def launch_with_bill(self):
        self.home.write_preferences(**BILL)
        return self.launch()

    def copy_and_dismiss(self, vexilo):
        vexilo.press_button("Copy")
        self.dismiss_notice(vexilo)

    def dismiss_notice(self, vexilo):
        dialog = vexilo.expect(Role.DIALOG, COPIED)
        vexilo.press_button("OK", within=dialog)
        vexilo.expect_none(Role.DIALOG)
