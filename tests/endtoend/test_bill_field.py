"""What the bill field does with a text that is no bill."""

import screen
import tree
from bystander import Bystander
from case import EndToEndTest
from tree import Role

NOT_AN_AMOUNT = "Not an amount"
TOO_LARGE = "Amount too large"
HUNDRED = ("TOTAL $105.00", "Tip $5.00", "Share per person $52.50")
NOTHING = ("TOTAL $0.00", "Tip $0.00", "Share per person $0.00")
MOST = "9" * 16
BEYOND = "9" * 20


class BillField(EndToEndTest):
    def test_letters_are_marked_and_change_nothing(self):
        vexilo = self.launch_with_hundred()

        vexilo.type_bill("abc")

        self.expect_marked(vexilo, NOT_AN_AMOUNT)
        vexilo.expect_bill_text("abc")
        self.assert_still_hundred(vexilo)

    def test_two_decimal_marks_are_marked_and_change_nothing(self):
        vexilo = self.launch_with_hundred()

        vexilo.set_bill("1.2.3")

        self.expect_marked(vexilo, NOT_AN_AMOUNT)
        self.assert_still_hundred(vexilo)

    def test_the_last_amount_that_could_be_read_stands(self):
        vexilo = self.launch_with_hundred()

        vexilo.type_bill("1.2.3")

        self.expect_marked(vexilo, NOT_AN_AMOUNT)
        vexilo.expect_figures("TOTAL $1.26", "Tip $0.06", "Share per person $0.63")

    def test_another_window_in_between_changes_nothing(self):
        vexilo = self.launch_with_hundred()
        self.type_and_go_to_another_window(vexilo, "12.")

        self.come_back(vexilo)
        screen.type_text("50")

        vexilo.expect_bill_text("12.50")

    def test_a_sheet_that_is_opened_behind_another_window_leaves_the_field(self):
        vexilo = self.launch_with_hundred()
        self.type_and_go_to_another_window(vexilo, "12.")

        vexilo.press_button("History")
        vexilo.expect(Role.DIALOG)
        self.come_back(vexilo)

        vexilo.expect_bill_text("12")
        screen.press_keys("Escape")
        vexilo.expect_none(Role.DIALOG)
        vexilo.expect_focus(Role.TEXT, "Bill to Split")
        screen.type_text("7")
        vexilo.expect_bill_text("7")

    def test_leaving_the_field_shows_the_stored_bill_again(self):
        vexilo = self.launch_with_hundred()
        vexilo.type_bill("abc")
        self.expect_marked(vexilo, NOT_AN_AMOUNT)

        screen.press_keys("Tab")

        vexilo.expect_bill_text("100")
        self.expect_unmarked(vexilo, NOT_AN_AMOUNT)
        self.assertEqual(vexilo.figures(), list(HUNDRED))

    def test_an_amount_typed_over_the_wrong_text_takes_the_mark_away(self):
        vexilo = self.launch_with_hundred()
        vexilo.type_bill("abc")
        self.expect_marked(vexilo, NOT_AN_AMOUNT)

        vexilo.type_bill("20")

        vexilo.expect_figures("TOTAL $21.00", "Tip $1.00", "Share per person $10.50")
        self.expect_unmarked(vexilo, NOT_AN_AMOUNT)

    def test_an_amount_too_large_is_marked_and_the_largest_before_it_stands(self):
        vexilo = self.launch_with_hundred()
        vexilo.set_bill(MOST)
        vexilo.until(lambda: vexilo.figures() != list(HUNDRED), "the large amount is split")
        largest = vexilo.figures()

        vexilo.set_bill(BEYOND)

        self.expect_marked(vexilo, TOO_LARGE)
        self.assertEqual(vexilo.figures(), largest)

    def test_typing_an_amount_too_large_does_not_stop_the_program(self):
        vexilo = self.launch_with_hundred()

        vexilo.type_bill(BEYOND)
        self.expect_marked(vexilo, TOO_LARGE)
        vexilo.type_bill("100")

        vexilo.expect_figures(*HUNDRED)
        self.expect_unmarked(vexilo, TOO_LARGE)

    def test_a_stored_bill_too_large_gives_zeros_and_says_why(self):
        self.home.write_preferences(bill="1e+300")

        vexilo = self.launch()

        vexilo.expect(Role.NOTIFICATION, TOO_LARGE)
        vexilo.expect_figures(*NOTHING)

    def test_a_stored_bill_too_large_can_be_typed_over(self):
        self.home.write_preferences(bill="1e+300")
        vexilo = self.launch()
        vexilo.expect(Role.NOTIFICATION, TOO_LARGE)

        vexilo.type_bill("100")

        vexilo.expect_figures(*HUNDRED)
        vexilo.expect_none(Role.NOTIFICATION)

    def test_entering_the_field_selects_all_so_that_typing_replaces(self):
        vexilo = self.launch_with_hundred()
        vexilo.focus_bill()
        screen.press_keys("Tab")
        vexilo.expect_focus(Role.PUSH_BUTTON, "Fewer people")
        screen.press_keys("shift+Tab")
        vexilo.expect_focus(Role.TEXT, "Bill to Split")

        screen.type_text("20")

        vexilo.expect_bill_text("20")

    def test_looking_at_a_bill_with_more_digits_than_shown_does_not_cut_it(self):
        self.home.write_preferences(bill="12.3456", people="2")
        vexilo = self.launch()
        vexilo.focus_bill()
        vexilo.expect_bill_text("12.35")

        screen.press_keys("Tab")
        vexilo.press_button("More people")

        self.expect_stored(vexilo, people="3")
        self.assertEqual(self.home.preferences()["bill"], "12.3456")

    def type_and_go_to_another_window(self, vexilo, text):
        bystander = Bystander(self)
        self.come_back(vexilo)
        vexilo.type_bill(text)
        bystander.take_keyboard()
        vexilo.expect_active(False)

    def come_back(self, vexilo):
        screen.activate(vexilo.window)
        vexilo.expect_active()

    def launch_with_hundred(self):
        self.home.write_preferences(bill="100")
        vexilo = self.launch()
        vexilo.expect_figures(*HUNDRED)
        return vexilo

    def expect_marked(self, vexilo, notice):
        vexilo.expect(Role.NOTIFICATION, notice)
        vexilo.until(lambda: tree.description_of(vexilo.bill_field) == notice,
                     f"the bill field is described by {notice!r}")

    def expect_unmarked(self, vexilo, notice):
        vexilo.expect_none(Role.NOTIFICATION, notice)
        vexilo.until(lambda: tree.description_of(vexilo.bill_field) == "",
                     "the bill field has no description")

    def assert_still_hundred(self, vexilo):
        self.assertEqual(vexilo.figures(), list(HUNDRED))
        # A later change is stored after the wrong text would have been.
        vexilo.press_button("More people")
        self.expect_stored(vexilo, people="3")
        self.assertEqual(float(self.home.preferences()["bill"]), 100.0)

    def expect_stored(self, vexilo, people):
        vexilo.until(lambda: self.home.preferences()["people"] == people,
                     f"{people} people are stored")
