"""The list of the saved bills, from one start of the program to the next."""

import datetime

from saved_bills import NONE_YET, SHARE, TOTAL, SavedBillsTest, day
from tree import Role

WHEN = datetime.datetime(2026, 2, 3, 17, 45, 30)


class List(SavedBillsTest):
    def test_bills_are_found_after_a_restart_newest_first(self):
        self.start_with("Breakfast", "Lunch", "Dinner")
        self.restart()

        self.bills.open()

        today = day(datetime.datetime.fromtimestamp(self.store.bills()[0]["timestamp"] / 1000))
        self.bills.expect_rows(*[f"{name} {SHARE} {today}"
                                 for name in ("Dinner", "Lunch", "Breakfast")])

    def test_the_order_is_that_of_the_times_and_not_of_the_saving(self):
        self.start_with("Breakfast", "Lunch")
        self.quit()
        self.store.date("Breakfast", datetime.datetime(2026, 3, 1))
        self.store.date("Lunch", datetime.datetime(2025, 12, 31, 23, 59, 59))
        self.start()

        self.bills.open()

        self.bills.expect_rows(f"Breakfast {SHARE} Sun 01 Mar 2026",
                               f"Lunch {SHARE} Wed 31 Dec 2025")

    def test_a_bill_saved_before_the_sheet_is_opened_again_is_there(self):
        self.open_with("Breakfast")
        self.bills.close()

        self.bills.save("Lunch")
        self.bills.open()

        self.bills.expect_bills("Lunch", "Breakfast")

    def test_without_bills_all_around_the_list_is_there(self):
        self.start()

        self.bills.open()

        self.vexilo.expect(Role.LABEL, NONE_YET)
        self.assertEqual(self.bills.rows(), [])
        for name in ("Edit", "Done", "$ Total", "Delete old", "Delete all"):
            self.vexilo.expect(Role.PUSH_BUTTON, name)

    def test_a_description_that_is_missing_is_empty_in_the_list_and_bill_on_the_page(self):
        self.start_with("Lunch")
        self.quit()
        self.store.forget_description("Lunch")
        self.start()
        self.bills.open()

        self.bills.expect_bills("")
        self.bills.choose_first()
        self.bills.expect_page("Bill")
        self.bills.ask_to_rename()

        self.bills.expect_description("Bill")


class Column(SavedBillsTest):
    def test_the_button_names_the_other_column_and_the_choice_outlives_a_restart(self):
        self.start_with("Lunch")
        self.quit()
        self.store.date("Lunch", WHEN)
        for button, other, before, after in (("$ Total", "$ Share", SHARE, TOTAL),
                                             ("$ Share", "$ Total", TOTAL, SHARE)):
            self.start()
            self.bills.open()
            self.bills.expect_rows(f"Lunch {before} {day(WHEN)}")

            self.vexilo.press_button(button)

            self.bills.expect_rows(f"Lunch {after} {day(WHEN)}")
            self.vexilo.expect(Role.PUSH_BUTTON, other)
            self.vexilo.expect_none(Role.PUSH_BUTTON, button)
            self.bills.close()
            self.quit()

    def test_every_row_changes(self):
        self.open_with("Breakfast", "Lunch", "Dinner")

        self.vexilo.press_button("$ Total")

        self.vexilo.until(lambda: [name.split()[1] for name in self.bills.rows()] == [TOTAL] * 3,
                          "every row shows its total")

    def test_amounts_without_currency_are_plain_numbers(self):
        self.home.write_preferences(bill="1000", people="4", service="2", showCurrency="false",
                                    showShareInSavedBillsList="false")
        self.start_with("Lunch")

        self.bills.open()

        self.vexilo.until(lambda: self.bills.rows()[0].startswith("Lunch 1,100 "),
                          "the row shows a plain number")
        self.bills.choose_first()
        self.bills.expect_page("Lunch")
        self.assertEqual(self.bills.lines()[:6],
                         ["Bill 1,000", "People 4", "Service Excellent", "Total 1,100",
                          "Share per person 275", "Tip 100"])
