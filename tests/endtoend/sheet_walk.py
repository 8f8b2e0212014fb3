"""A walk over the saved bills as assistive software meets them."""

import datetime

import tree
from accessible_walk import AccessibleWalk
from saved_bills import DELETE_ALL, DELETE_OLD, RENAME, SHEET, USE, SavedBillsTest
from tree import Role, State

WHEN = datetime.datetime(2026, 2, 3, 17, 45)


class SheetWalk(AccessibleWalk, SavedBillsTest):
    """The base of its tests: a program with one saved bill, "Lunch"."""

    def setUp(self):
        super().setUp()
        self.start_with("Lunch")
        self.quit()
        self.store.date("Lunch", WHEN)
        self.start()

    def open_list(self):
        self.bills.open()
        self.vexilo.expect(Role.LIST_ITEM)
        self.vexilo.until(self.is_at_rest, "the sheet has slid in")

    def open_edit_mode(self):
        self.open_list()
        self.vexilo.press_button("Edit")
        self.bills.choose_first()
        self.vexilo.expect(Role.PUSH_BUTTON, "Delete 1")

    def open_page(self):
        self.open_list()
        self.bills.choose_first()
        self.bills.expect_page("Lunch")

    def close_all(self):
        for title in (RENAME, USE, DELETE_OLD, DELETE_ALL, SHEET):
            if self.vexilo.find(Role.DIALOG, title):
                self.press_escape_in(title)

    def is_at_rest(self):
        """Whether nothing of the sheet is still below the window's edge."""
        sheet = self.vexilo.expect(Role.DIALOG, SHEET)
        return all(tree.has(node, State.SHOWING) for node in tree.nodes(sheet)
                   if tree.has(node, State.VISIBLE))

    def nodes(self, root=None):
        root = root or self.vexilo.expect(Role.DIALOG, SHEET)
        return [node for node in tree.nodes(root) if tree.has(node, State.SHOWING)]
