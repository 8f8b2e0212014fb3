"""Marking saved bills in the edit mode, and deleting them together."""

import screen
import tree
from saved_bills import SHEET, SavedBillsTest
from tree import Role


class EditMode(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Brunch", "Lunch", "Tea", "Dinner")

    def test_the_button_changes_its_name_and_done_goes_while_editing(self):
        self.edit()
        self.vexilo.expect_none(Role.PUSH_BUTTON, "Done")
        self.vexilo.expect_none(Role.PUSH_BUTTON, "Edit")

        self.vexilo.press_button("Cancel")

        self.vexilo.expect(Role.PUSH_BUTTON, "Done")
        self.vexilo.expect(Role.PUSH_BUTTON, "Edit")
        self.vexilo.expect_none(Role.PUSH_BUTTON, "Cancel")

    def test_exactly_the_marked_rows_are_deleted_at_once(self):
        self.edit()
        self.mark("Brunch", "Dinner", "Tea")
        self.bills.expect_marked("Brunch", "Dinner", "Tea")

        self.vexilo.press_button("Delete 3")

        self.bills.expect_bills("Lunch", "Breakfast")
        self.expect_stored("Lunch", "Breakfast")
        self.assertEqual(self.store.count_deletions(), 1)

    def test_a_second_press_takes_the_mark_off(self):
        self.edit()
        self.mark("Brunch", "Dinner")
        tree.press(self.bills.row("Dinner"))
        self.bills.expect_marked("Brunch")

        self.vexilo.press_button("Delete 1")

        self.bills.expect_bills("Dinner", "Tea", "Lunch", "Breakfast")

    def test_a_press_marks_and_opens_nothing(self):
        self.edit()

        self.mark("Lunch")

        self.bills.expect_no_page()

    def test_cancel_deletes_nothing_and_forgets_the_marks(self):
        self.edit()
        self.mark("Lunch", "Tea")

        self.vexilo.press_button("Cancel")
        self.edit()

        self.bills.expect_marked()
        self.vexilo.expect(Role.PUSH_BUTTON, "Delete 0")
        self.assertEqual(len(self.store.bills()), 5)

    def test_without_marks_the_button_deletes_nothing(self):
        self.edit()

        self.vexilo.press_button("Delete 0")
        self.vexilo.press_button("Cancel")  # heeded after it, so that its effect would be seen
        self.vexilo.expect(Role.PUSH_BUTTON, "Done")

        self.assertEqual(len(self.store.bills()), 5)

    def test_the_edit_mode_ends_with_the_sheet(self):
        self.edit()
        screen.press_keys("Escape")
        self.bills.expect_closed()

        self.bills.open()

        self.vexilo.expect(Role.PUSH_BUTTON, "Edit")

    def test_rows_are_marked_by_keyboard(self):
        self.edit()
        tree.focus(self.vexilo.expect(Role.LIST, SHEET))
        self.bills.expect_current("Dinner")

        screen.press_keys("Return", "Down", "Down", "space")

        self.bills.expect_marked("Dinner", "Lunch")

    def edit(self):
        self.vexilo.press_button("Edit")
        self.vexilo.expect(Role.PUSH_BUTTON, "Cancel")

    def mark(self, *descriptions):
        for count, description in enumerate(descriptions, start=1):
            tree.press(self.bills.row(description))
            self.vexilo.expect(Role.PUSH_BUTTON, f"Delete {count}")
