"""The same walk over the saved bills, their dialogs and that of saving."""

import tree
from saved_bills import DELETE_ALL, DELETE_OLD, RENAME, SAVE, SHARE, SHEET, USE, day
from sheet_walk import WHEN, SheetWalk
from tree import Role

# What the contract promises, in the order of the sheet.
LIST_PAGE = [
    (Role.DIALOG, SHEET),
    (Role.HEADING, SHEET),
    (Role.PUSH_BUTTON, "Edit"),
    (Role.PUSH_BUTTON, "Done"),
    (Role.LIST, SHEET),
    (Role.LIST_ITEM, f"Lunch {SHARE} {day(WHEN)}"),
    (Role.PUSH_BUTTON, "$ Total"),
    (Role.PUSH_BUTTON, "Delete old"),
    (Role.PUSH_BUTTON, "Delete all"),
]
BILL_PAGE = [
    (Role.DIALOG, SHEET),
    (Role.PUSH_BUTTON, "Back"),
    (Role.HEADING, "Lunch"),
    (Role.PUSH_BUTTON, RENAME),
    (Role.PUSH_BUTTON, "Use"),
    (Role.LABEL, "Bill $100.00"),
    (Role.LABEL, "People 4"),
    (Role.LABEL, "Service Excellent"),
    (Role.LABEL, "Total $110.00"),
    (Role.LABEL, "Share per person $27.50"),
    (Role.LABEL, "Tip $10.00"),
    (Role.LABEL, "Everyone pays the tip No"),
    (Role.LABEL, "Tip is rounded up No"),
    (Role.LABEL, "Share is rounded up No"),
    (Role.LABEL, "Saved on: Tue 03 Feb 2026 at 17:45"),
]


class AccessibleSheet(SheetWalk):
    def test_the_list_is_what_the_contract_promises(self):
        self.open_list()

        self.assertEqual(self.met(), LIST_PAGE)

    def test_the_page_is_what_the_contract_promises(self):
        self.open_page()

        self.assertEqual(self.met(), BILL_PAGE)

    def test_everything_is_named_and_takes_the_keyboard(self):
        for show in (self.open_list, self.open_edit_mode, self.open_page):
            with self.subTest(show.__name__):
                show()
                self.assert_named(self.nodes())
                self.assert_focusable(self.nodes())
                self.close_all()

    def test_everything_in_the_dialogs_is_named_and_takes_the_keyboard(self):
        for show, button, title in ((self.open_list, "Delete old", DELETE_OLD),
                                    (self.open_list, "Delete all", DELETE_ALL),
                                    (self.open_page, RENAME, RENAME),
                                    (self.open_page, "Use", USE)):
            with self.subTest(title):
                show()
                dialog = self.bills.ask(button, title)
                self.assert_named(self.nodes(dialog))
                self.assert_focusable(self.nodes(dialog))
                self.close_all()

    def test_the_field_of_every_dialog_takes_a_text(self):
        dialog = self.bills.ask_to_save()
        self.assert_fields_take_text(self.vexilo, self.nodes(dialog))
        self.press_escape_in(SAVE)
        self.open_page()
        dialog = self.bills.ask_to_rename()

        self.assert_fields_take_text(self.vexilo, self.nodes(dialog))

    def met(self):
        return [(tree.role_of(node), tree.name_of(node)) for node in self.nodes()]
