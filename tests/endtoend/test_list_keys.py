"""Moving through a long list of saved bills by keyboard."""

import datetime

import screen
import tree
from saved_bills import SHEET, SavedBillsTest
from tree import Role

MIDNIGHT = datetime.datetime(2026, 1, 1)


class Moving(SavedBillsTest):
    """In a list that is longer than the window is high."""

    COUNT = 60

    def setUp(self):
        super().setUp()
        self.start_with("Bill 0")
        self.quit()
        self.store.date("Bill 0", MIDNIGHT)
        self.store.add_copies({f"Bill {hour}": MIDNIGHT + datetime.timedelta(hours=hour)
                               for hour in range(1, self.COUNT)})
        self.start()
        screen.press_keys("ctrl+h")
        self.bills.expect_open()
        self.bills.expect_current("Bill 59")

    def test_arrows_move_row_by_row_and_stop_at_the_top(self):
        for key, current in (("Down", 58), ("Down", 57), ("Up", 58), ("Up", 59), ("Up", 59)):
            screen.press_keys(key)
            self.bills.expect_current(f"Bill {current}")

    def test_home_and_end_go_to_the_ends(self):
        for key, current in (("End", 0), ("Down", 0), ("Up", 1), ("Home", 59)):
            screen.press_keys(key)
            self.bills.expect_current(f"Bill {current}")

    def test_a_page_down_and_a_page_up_go_to_where_they_came_from(self):
        screen.press_keys("Page_Down")
        self.vexilo.until(lambda: "Bill 59" not in self.current(), "the current row changes")
        after_one = self.current()
        self.assertNotIn("Bill 58 ", after_one)
        screen.press_keys("Page_Down", "Page_Up")

        self.vexilo.until(lambda: self.current() == after_one, "the row is the same again")
        screen.press_keys("Page_Up")
        self.bills.expect_current("Bill 59")

    def test_pages_end_at_the_last_and_at_the_first_row(self):
        screen.press_keys(*["Page_Down"] * 10)
        self.bills.expect_current("Bill 0")

        screen.press_keys(*["Page_Up"] * 10)
        self.bills.expect_current("Bill 59")

    def test_the_current_row_is_always_in_sight(self):
        for key, current in (("End", "Bill 0"), ("Home", "Bill 59")):
            screen.press_keys(key)
            self.bills.expect_current(current)
            self.vexilo.until(lambda name=current: self.is_in_sight(name), f"{current} is in sight")

    def test_a_bill_far_down_is_opened_and_left_again(self):
        screen.press_keys("End", "Up", "Return")
        self.bills.expect_page("Bill 1")

        screen.press_keys("alt+Left")
        self.bills.expect_no_page()

        self.bills.expect_current("Bill 1")

    def test_pressing_delete_again_and_again_leaves_exactly_the_rest(self):
        screen.press_keys("Down", *["Delete"] * 5)

        self.vexilo.until(lambda: len(self.store.bills()) == self.COUNT - 5, "five are deleted")
        self.bills.expect_current("Bill 53")
        self.assertEqual(self.store.descriptions()[:2], ["Bill 59", "Bill 53"])

    def current(self):
        return (self.vexilo.focused() or (None, ""))[1]

    def is_in_sight(self, description):
        row = tree.extents_of(self.bills.row(description))
        view = tree.extents_of(self.vexilo.expect(Role.LIST, SHEET))
        return view.y <= row.y and row.y + row.height <= view.y + view.height
