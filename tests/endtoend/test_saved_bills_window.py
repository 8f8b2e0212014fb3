"""The saved bills in windows of several sizes, and of a right-to-left language."""

import screen
import tree
from saved_bills import RENAME, USE, SavedBillsTest
from tree import Role

WIDE, NARROW = (960, 880), (500, 880)
HEBREW = {"LC_ALL": "he_IL.UTF-8"}
CHOOSE = "Select an item"


class WideWindow(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Lunch")
        self.resize(WIDE)
        self.vexilo.expect(Role.LABEL, CHOOSE)

    def test_the_page_stands_beside_the_list(self):
        self.bills.choose("Lunch")

        self.vexilo.expect_none(Role.LABEL, CHOOSE)
        self.vexilo.expect_none(Role.PUSH_BUTTON, "Back")
        self.bills.expect_bills("Lunch", "Breakfast")
        list_ends = right_of(self.vexilo.expect(Role.LIST, "Saved Bills"))
        self.assertLessEqual(list_ends, left_of(self.vexilo.expect(Role.HEADING, "Lunch")))

    def test_another_row_changes_the_page(self):
        self.bills.choose("Lunch")

        self.bills.choose("Breakfast")

        self.vexilo.expect_none(Role.HEADING, "Lunch")

    def test_deleting_the_chosen_bill_empties_the_page(self):
        self.bills.choose("Lunch")
        self.vexilo.press_button("Edit")
        tree.press(self.bills.row("Lunch"))
        self.vexilo.press_button("Delete 1")

        self.vexilo.expect(Role.LABEL, CHOOSE)
        self.bills.expect_no_page()

    def test_renaming_changes_the_row_beside_the_page(self):
        self.bills.choose("Lunch")

        self.bills.rename("Supper")

        self.bills.expect_bills("Supper", "Breakfast")
        self.bills.expect_page("Supper")

    def test_the_tab_key_reaches_the_page_and_comes_round(self):
        self.bills.choose("Lunch")
        tree.focus(self.vexilo.expect(Role.LIST, "Saved Bills"))
        self.bills.expect_current("Lunch")

        for name in ("$ Total", "Delete old", "Delete all", RENAME, "Use", "Edit", "Done"):
            screen.press_keys("Tab")
            self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
        screen.press_keys("Tab")
        self.bills.expect_current("Lunch")

    def test_a_window_made_narrow_pushes_the_page_over_the_list(self):
        self.bills.choose("Lunch")

        self.resize(NARROW)
        self.vexilo.expect(Role.PUSH_BUTTON, "Back")
        self.vexilo.expect_none(Role.LIST, "Saved Bills")
        self.bills.back()

        self.bills.expect_bills("Lunch", "Breakfast")

    def resize(self, size):
        screen.resize(self.vexilo.window, *size)
        self.vexilo.until(lambda: screen.size_of(self.vexilo.window) == size, f"the size is {size}")


class NarrowWindow(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Lunch")
        screen.resize(self.vexilo.window, *NARROW)
        self.vexilo.until(lambda: screen.size_of(self.vexilo.window) == NARROW,
                          "the window is narrow")

    def test_the_page_covers_the_list_until_back_is_pressed(self):
        self.assertIsNone(self.vexilo.find(Role.LABEL, CHOOSE))
        self.bills.choose("Lunch")
        self.vexilo.expect_none(Role.LIST, "Saved Bills")

        self.bills.back()

        self.bills.expect_bills("Lunch", "Breakfast")

    def test_all_of_the_bar_is_inside_the_window(self):
        right = screen.origin_of(self.vexilo.window)[0] + NARROW[0]

        for name in ("$ Total", "Delete old", "Delete all", "Edit", "Done"):
            button = self.vexilo.expect(Role.PUSH_BUTTON, name)
            self.assertLessEqual(right_of(button), right, name)


class RightToLeft(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.start(locale=HEBREW)
        self.bills.save("Lunch")
        self.bills.open()

    def test_the_list_is_named_and_mirrored(self):
        row = self.vexilo.until(self.first_row, "the row shows")

        self.assertTrue(tree.name_of(row).startswith("Lunch "), tree.name_of(row))
        buttons = {name: left_of(self.vexilo.expect(Role.PUSH_BUTTON, name))
                   for name in ("Done", "Edit")}
        self.assertLess(buttons["Done"], buttons["Edit"])
        self.assertLess(left_of(self.vexilo.expect(Role.PUSH_BUTTON, "Delete all")),
                        left_of(self.vexilo.expect(Role.PUSH_BUTTON, "Delete old")))

    def test_the_page_is_named_and_left_by_its_back_button(self):
        self.bills.choose_first()
        self.bills.expect_page("Lunch")

        labels = [line.split(" ")[0] for line in self.bills.lines()]
        self.assertEqual(labels, ["Bill", "People", "Service", "Total", "Share", "Tip",
                                  "Everyone", "Tip", "Share", "Saved"])
        back = left_of(self.vexilo.expect(Role.PUSH_BUTTON, "Back"))
        self.assertGreater(back, left_of(self.vexilo.expect(Role.PUSH_BUTTON, RENAME)))
        self.bills.back()
        self.vexilo.until(self.first_row, "the row shows")

    def test_a_bill_is_used(self):
        self.bills.choose_first()
        self.bills.expect_page("Lunch")

        self.bills.confirm("Use", USE, "Use this bill")

        self.bills.expect_closed()
        self.vexilo.expect_people(4)

    def first_row(self):
        return self.vexilo.find(Role.LIST_ITEM)


def left_of(node):
    return tree.extents_of(node).x


def right_of(node):
    box = tree.extents_of(node)
    return box.x + box.width
