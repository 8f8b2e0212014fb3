"""Deleting a saved bill by a swipe of its row towards the start."""

import screen
import tree
from portal import StillDesktop
from saved_bills import SavedBillsTest
from tree import Role


class Swiping(SavedBillsTest):
    def setUp(self):
        super().setUp()
        desktop = StillDesktop()
        desktop.__enter__()
        self.addCleanup(desktop.__exit__)
        self.open_with("Breakfast", "Lunch", "Dinner")

    def test_a_swipe_towards_the_start_uncovers_the_delete_button_of_that_row(self):
        self.swipe("Lunch")

        self.click_delete("Lunch")

        self.bills.expect_bills("Dinner", "Breakfast")
        self.expect_stored("Dinner", "Breakfast")

    def test_a_click_elsewhere_covers_the_button_and_does_nothing_else(self):
        self.swipe("Lunch")

        self.click("Breakfast")

        self.vexilo.expect_none(Role.PUSH_BUTTON, "Delete")
        self.bills.expect_no_page()
        self.bills.expect_bills("Dinner", "Lunch", "Breakfast")

    def test_a_swipe_back_covers_the_button(self):
        self.swipe("Lunch")
        x, y = tree.centre_of(self.bills.row("Lunch"))

        self.drag((x - 100, y), (x + 100, y))

        self.vexilo.expect_none(Role.PUSH_BUTTON, "Delete")
        self.expect_stored("Dinner", "Lunch", "Breakfast")

    def test_a_short_swipe_uncovers_nothing(self):
        x, y = tree.centre_of(self.bills.row("Lunch"))

        self.drag((x, y), (x - 30, y))
        self.click("Lunch")

        self.bills.expect_page("Lunch")

    def test_a_swipe_the_other_way_uncovers_nothing(self):
        x, y = tree.centre_of(self.bills.row("Lunch"))

        self.drag((x - 100, y), (x + 100, y))

        self.vexilo.expect_none(Role.PUSH_BUTTON, "Delete")
        self.bills.expect_bills("Dinner", "Lunch", "Breakfast")

    def test_one_row_is_uncovered_at_a_time(self):
        self.swipe("Lunch")

        self.swipe("Dinner")

        self.vexilo.until(lambda: not self.find_delete("Lunch"), "the first row is covered again")
        self.click_delete("Dinner")
        self.bills.expect_bills("Lunch", "Breakfast")

    def swipe(self, description):
        x, y = tree.centre_of(self.bills.row(description))
        self.drag((x + 50, y), (x - 150, y))
        self.vexilo.until(lambda: self.find_delete(description), "the button is uncovered")

    def drag(self, start, end):
        screen.press_pointer(*start)
        # By steps, as a hand does: a drag begins where the pointer has left the place of its press.
        for step in range(1, 11):
            screen.move_pointer(start[0] + (end[0] - start[0]) * step // 10, start[1])
        screen.release_pointer()

    def click(self, description):
        screen.click(*tree.centre_of(self.bills.row(description)))

    def click_delete(self, description):
        screen.click(*tree.centre_of(self.find_delete(description)))

    def find_delete(self, description):
        return tree.find(self.bills.row(description), Role.PUSH_BUTTON, "Delete")
