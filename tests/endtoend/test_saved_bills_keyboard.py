"""The saved bills by keyboard alone."""

import screen
import tree
from saved_bills import DELETE_ALL, DELETE_OLD, RENAME, SHEET, USE, SavedBillsTest
from tree import Role

HISTORY = (Role.PUSH_BUTTON, "History")


class Actions(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.start_with("Breakfast", "Lunch", "Dinner")
        screen.press_keys("ctrl+h")
        self.bills.expect_open()
        self.bills.expect_current("Dinner")

    def test_return_opens_the_current_row_and_the_back_key_leaves_it(self):
        screen.press_keys("Down", "Return")
        self.bills.expect_page("Lunch")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Back")

        screen.press_keys("alt+Left")
        self.bills.expect_no_page()

        self.bills.expect_current("Lunch")

    def test_f2_renames_the_current_row(self):
        screen.press_keys("Down", "F2")
        self.vexilo.expect(Role.DIALOG, RENAME)
        self.vexilo.expect_focus(Role.TEXT, "Description")
        self.bills.expect_description("Lunch")

        screen.type_text("Supper")  # over the description, which is selected
        self.bills.expect_description("Supper")
        screen.press_keys("Return")

        self.vexilo.expect_none(Role.DIALOG, RENAME)
        self.expect_stored("Dinner", "Supper", "Breakfast")
        self.bills.expect_current("Supper")

    def test_f2_renames_on_the_page_too(self):
        screen.press_keys("Return")
        self.bills.expect_page("Dinner")

        screen.press_keys("F2")

        self.vexilo.expect(Role.DIALOG, RENAME)

    def test_escape_closes_one_thing_after_the_other(self):
        screen.press_keys("Return")
        self.bills.expect_page("Dinner")
        screen.press_keys("F2")
        self.vexilo.expect(Role.DIALOG, RENAME)

        self.press_escape_in(RENAME)
        self.bills.expect_page("Dinner")
        self.press_escape_in(SHEET)

        self.assertIsNone(self.vexilo.find(Role.DIALOG))
        self.assertTrue(self.vexilo.is_running())

    def test_every_dialog_gives_the_keyboard_back(self):
        for name, title in (("Delete old", DELETE_OLD), ("Delete all", DELETE_ALL)):
            self.open_and_escape(name, title)
        screen.press_keys("Home")
        tree.press(self.bills.row("Dinner"))
        self.bills.expect_page("Dinner")
        for name, title in ((RENAME, RENAME), ("Use", USE)):
            self.open_and_escape(name, title)

    def test_a_whole_bill_is_used_without_the_pointer(self):
        screen.press_keys("Down", "Return")
        self.bills.expect_page("Lunch")
        for name in (RENAME, "Use"):
            screen.press_keys("Tab")
            self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
        screen.press_keys("Return")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")
        screen.press_keys("Tab", "Return")

        self.bills.expect_closed()

    def test_the_program_is_quit_from_the_sheet(self):
        self.assertEqual(self.vexilo.quit(), 0)

    def open_and_escape(self, name, title):
        tree.focus(self.vexilo.expect(Role.PUSH_BUTTON, name))
        self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
        screen.press_keys("Return")
        self.vexilo.expect(Role.DIALOG, title)
        self.press_escape_in(title)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, name)


class Reaching(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Lunch")
        self.bills.expect_current("Lunch")

    def test_the_tab_key_goes_round_the_list_page(self):
        self.expect_tab_order("$ Total", "Delete old", "Delete all", "Edit", "Done", "row")

    def test_the_tab_key_goes_round_the_edit_mode(self):
        self.vexilo.press_button("Edit")
        self.vexilo.expect(Role.PUSH_BUTTON, "Cancel")
        tree.press(self.bills.row("Lunch"))
        self.vexilo.expect(Role.PUSH_BUTTON, "Delete 1")
        tree.focus(self.vexilo.expect(Role.LIST, SHEET))
        self.bills.expect_current("Lunch")

        self.expect_tab_order("$ Total", "Delete old", "Delete all", "Delete 1", "Cancel", "row")

    def test_the_tab_key_goes_round_the_page(self):
        screen.press_keys("Return")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Back")

        self.expect_tab_order(RENAME, "Use", "Back")

    def test_closing_the_sheet_gives_the_keyboard_back(self):
        self.bills.close()
        tree.focus(self.vexilo.expect(*HISTORY))
        self.vexilo.expect_focus(*HISTORY)
        screen.press_keys("Return")
        self.bills.expect_open()
        self.bills.expect_current("Lunch")

        self.press_escape_in(SHEET)

        self.vexilo.expect_focus(*HISTORY)

    def expect_tab_order(self, *names):
        for name in names:
            screen.press_keys("Tab")
            if name == "row":
                self.bills.expect_current("Lunch")
            else:
                self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
        for name in (*reversed(names[:-1]), names[-1]):
            screen.press_keys("shift+Tab")
            if name == "row":
                self.bills.expect_current("Lunch")
            else:
                self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
