"""The page of one saved bill: all its fields, renaming it, and using it again."""

import datetime

import screen
import tree
from saved_bills import RENAME, SHEET, TOO_LONG, USE, SavedBillsTest
from tree import Role

WHEN = datetime.datetime(2026, 2, 3, 17, 45, 30)
# A bill whose every field is unlike that of the first run.
RICH = {"bill": "1000", "people": "4", "service": "2", "tipFromEveryone": "true",
        "roundTip": "true", "roundShare": "true"}
RICH_FIGURES = ("TOTAL $1,400.00", "Tip (100.00 x 4) $400.00", "Share per person $350.00")
SWITCHES = ["Everyone pays the tip", "Round up tip", "Round up share"]


class Page(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.home.write_preferences(**RICH)
        self.start()
        self.vexilo.expect_figures(*RICH_FIGURES)
        self.bills.save("Dinner")
        self.quit()
        self.store.date("Dinner", WHEN)
        self.home.write_preferences(bill="7", service="0", serviceExcellent="20")
        self.start()
        self.bills.open()
        self.bills.choose_first()
        self.bills.expect_page("Dinner")

    def test_every_field_is_shown(self):
        self.assertEqual(self.bills.lines(), [
            "Bill $1,000.00",
            "People 4",
            "Service Excellent",
            "Total $1,400.00",
            "Share per person $350.00",
            "Tip $400.00",
            "Everyone pays the tip Yes",
            "Tip is rounded up Yes",
            "Share is rounded up Yes",
            "Saved on: Tue 03 Feb 2026 at 17:45",
        ])

    def test_use_brings_all_six_inputs_back_at_the_percentages_of_today(self):
        self.bills.confirm("Use", USE, "Use this bill")

        self.bills.expect_closed()
        self.vexilo.expect_bill_text("1,000")
        self.vexilo.expect_people(4)
        self.vexilo.expect_service("Excellent")
        self.assertEqual(self.vexilo.checked(Role.CHECK_BOX), SWITCHES)
        self.vexilo.expect_figures("TOTAL $1,800.00", "Tip (200.00 x 4) $800.00",
                                   "Share per person $450.00")

    def test_the_bill_that_was_used_stays_as_it_was_saved(self):
        self.bills.confirm("Use", USE, "Use this bill")
        self.bills.expect_closed()
        self.quit()

        (record,) = self.store.bills()
        self.assertEqual((record["total"], record["tip"], record["share"]), (1400.0, 400.0, 350.0))
        self.assertEqual(self.home.preferences()["serviceExcellent"], "20")

    def test_use_can_be_declined(self):
        question = self.bills.ask("Use", USE)
        self.bills.answer("Cancel", question)
        self.bills.ask("Use", USE)
        self.press_escape_in(USE)

        self.bills.expect_page("Dinner")
        self.bills.back()
        self.bills.close()
        self.assertEqual(self.vexilo.bill_text(), "7")
        self.vexilo.expect_people(2)


class Renaming(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Lunch")
        self.bills.choose("Lunch")

    def test_the_field_starts_with_the_description_of_the_moment(self):
        for before, after in (("Lunch", "Supper"), ("Supper", "Brunch")):
            dialog = self.bills.ask_to_rename()
            self.bills.expect_description(before)
            self.bills.describe_bill(after)
            self.bills.answer(RENAME, dialog)

    def test_the_new_description_stands_everywhere_and_is_stored(self):
        self.bills.rename("Supper")

        self.bills.expect_page("Supper")
        self.expect_stored("Supper", "Breakfast")
        self.bills.back()
        self.bills.expect_bills("Supper", "Breakfast")
        self.bills.close()
        self.restart()
        self.bills.open()
        self.bills.expect_bills("Supper", "Breakfast")

    def test_an_empty_description_becomes_bill(self):
        self.bills.rename("")

        self.bills.expect_page("Bill")
        self.expect_stored("Bill", "Breakfast")

    def test_blanks_are_a_description(self):
        self.bills.rename("  ")

        self.bills.expect_page("  ")
        self.expect_stored("  ", "Breakfast")

    def test_cancel_and_escape_keep_the_description(self):
        dialog = self.bills.ask_to_rename()
        self.bills.describe_bill("Supper")
        self.bills.answer("Cancel", dialog)
        self.bills.ask_to_rename()
        self.bills.expect_description("Lunch")
        self.bills.describe_bill("Supper")
        self.press_escape_in(RENAME)

        self.bills.expect_page("Lunch")
        self.expect_stored("Lunch", "Breakfast")

    def test_a_description_that_is_too_long_is_refused(self):
        dialog = self.bills.ask_to_rename()

        tree.set_text(self.bills.description_field, "x" * 4097)
        self.vexilo.expect(Role.NOTIFICATION, TOO_LONG)
        self.bills.answer(RENAME, dialog)

        self.expect_stored("Lunch", "Breakfast")

    def test_the_renamed_bill_keeps_its_place_and_its_day(self):
        self.bills.back()
        self.bills.choose("Breakfast")

        self.bills.rename("Zabaglione")
        self.bills.back()

        self.bills.expect_bills("Lunch", "Zabaglione")

    def test_the_return_key_renames(self):
        self.bills.ask_to_rename()
        screen.type_text("Supper")
        self.bills.expect_description("Supper")
        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG, RENAME)

        self.bills.expect_page("Supper")
        self.vexilo.expect(Role.DIALOG, SHEET)
