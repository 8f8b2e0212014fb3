"""Whatever assistive software can press in the saved bills does something."""

import tree
from accessible_walk import PRESSED
from saved_bills import DELETE_ALL, DELETE_OLD, RENAME
from sheet_walk import SheetWalk


class Presses(SheetWalk):
    def test_pressing_anything_does_something(self):
        for show in (self.open_list, self.open_edit_mode, self.open_page):
            show()
            count = len(self.pressable())
            self.close_all()
            self.assertGreater(count, 2)
            for position in range(count):
                self.save_again_if_deleted()
                show()
                # By its place: some presses give other names to what stands here.
                node = self.pressable()[position]
                with self.subTest(tree.name_of(node), page=show.__name__):
                    self.assert_press_works(node)
                self.close_all()

    def test_pressing_anything_in_the_dialogs_closes_them(self):
        for show, button, title, answers in (
                (self.open_page, RENAME, RENAME, ("Cancel", RENAME)),
                (self.open_list, "Delete old", DELETE_OLD, ("Cancel", "Delete old bills")),
                (self.open_list, "Delete all", DELETE_ALL, ("Cancel", "Delete ALL bills"))):
            for answer in answers:
                with self.subTest(answer, dialog=title):
                    self.save_again_if_deleted()
                    show()
                    self.bills.confirm(button, title, answer)
                    self.close_all()

    def save_again_if_deleted(self):
        if not self.store.bills():
            self.bills.save("Lunch")

    def pressable(self):
        return [node for node in self.nodes() if tree.role_of(node) in PRESSED]

    def assert_press_works(self, node):
        before = self.vexilo.describe()
        tree.press(node)
        self.vexilo.until(lambda: self.vexilo.describe() != before, "the press is seen")
