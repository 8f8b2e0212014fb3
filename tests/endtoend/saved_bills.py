"""Saving a bill and the sheet of the saved bills, as a person uses them."""

import screen
import tree
import waiting
from bill_store import BillStore
from case import EndToEndTest
from tree import Role, State

SHEET = "Saved Bills"
SAVE, SAVE_FAILED = "Save bill", "The bill could not be saved."
RENAME = "Rename"
USE = "Populate main screen with this bill's details?"
DELETE_OLD, DELETE_ALL = "Delete bills older than 6 months?", "Are you sure?"
NONE_YET = "No saved bills yet"
TOO_LONG = "Description too long"
# What the tests save where the figures do not matter, and what it comes to.
BILL = {"bill": "100", "people": "4", "service": "2"}
TOTAL, SHARE = "$110.00", "$27.50"


def day(when):
    """A day as the rows and the detail show it."""
    return when.strftime("%a %d %b %Y")


class SavedBills:
    """The dialogs and the sheet of one running program."""

    def __init__(self, vexilo):
        self._vexilo = vexilo

    # Saving

    def ask_to_save(self):
        self._vexilo.press_button("Save")
        return self._vexilo.expect(Role.DIALOG, SAVE)

    def save(self, *descriptions):
        """Saves the bill on the calculator once for each description."""
        for description in descriptions:
            dialog = self.ask_to_save()
            self.describe_bill(description)
            self.answer("Save", dialog)

    def describe_bill(self, text):
        """Puts a text into the description field of the open dialog."""
        tree.set_text(self.description_field, text)
        self.expect_description(text)

    @property
    def description_field(self):
        return self._vexilo.expect(Role.TEXT, "Description")

    def expect_description(self, text):
        self._vexilo.until(lambda: tree.text_of(self.description_field) == text,
                           f"the description field shows {text[:80]!r}")

    def answer(self, button, dialog):
        """Presses a button of a dialog, which that closes."""
        title = tree.name_of(dialog)
        self._vexilo.press_button(button, within=dialog)
        self._vexilo.expect_none(Role.DIALOG, title)

    # The list

    def open(self):
        self._vexilo.press_button("History")
        self.expect_open()

    def expect_open(self):
        self._vexilo.expect(Role.DIALOG, SHEET)

    def close(self):
        self._vexilo.press_button("Done")
        self.expect_closed()

    def expect_closed(self):
        self._vexilo.expect_none(Role.DIALOG, SHEET)

    def rows(self):
        """The texts of the rows that show, from top to bottom."""
        shown = list(tree.find_all(self._sheet(), Role.LIST_ITEM))
        # The rows stand in the tree as they were made.
        shown.sort(key=lambda node: tree.centre_of(node)[1])
        return [tree.name_of(node) for node in shown]

    def descriptions(self):
        """The descriptions in these rows. Only for bills of the usual figures."""
        return [name.partition(" $")[0] for name in self.rows()]

    def expect_rows(self, *names):
        self._vexilo.until(lambda: self.rows() == list(names), f"the rows are {names}")

    def expect_bills(self, *descriptions):
        self._vexilo.until(lambda: self.descriptions() == list(descriptions),
                           f"the rows are of {descriptions}")

    def row(self, description):
        """The row of a bill of the usual figures."""
        return self._vexilo.until(lambda: self._find_row(description),
                                  f"the row of {description!r} shows")

    def _find_row(self, description):
        rows = tree.find_all(self._sheet(), Role.LIST_ITEM)
        return next((row for row in rows if tree.name_of(row).startswith(f"{description} $")), None)

    def _sheet(self):
        return self._vexilo.expect(Role.DIALOG, SHEET)

    def expect_current(self, description):
        """Waits until the row of a bill has the keyboard."""
        def holds():
            role, name = self._vexilo.focused() or (None, "")
            return role == Role.LIST_ITEM and name.startswith(f"{description} $")
        self._vexilo.until(holds, f"the row of {description!r} has the keyboard")

    def expect_marked(self, *descriptions):
        def marked():
            rows = tree.find_all(self._sheet(), Role.LIST_ITEM)
            return sorted(tree.name_of(row).partition(" $")[0] for row in rows
                          if tree.has(row, State.CHECKED))
        self._vexilo.until(lambda: marked() == sorted(descriptions), f"{descriptions} are marked")

    # The page of one bill

    def choose(self, description):
        tree.press(self.row(description))
        self.expect_page(description)

    def choose_first(self):
        tree.press(self._vexilo.until(
            lambda: tree.find(self._sheet(), Role.LIST_ITEM), "a row shows"))

    def back(self):
        """Leaves the page, where it was pushed over the list."""
        self._vexilo.press_button("Back")
        self.expect_no_page()

    def expect_page(self, title):
        self._vexilo.expect(Role.HEADING, title)
        self._vexilo.expect(Role.PUSH_BUTTON, "Use")

    def expect_no_page(self):
        self._vexilo.expect_none(Role.PUSH_BUTTON, "Use")

    def lines(self):
        """The lines of the page, from top to bottom."""
        return [tree.name_of(node) for node in tree.find_all(self._sheet(), Role.LABEL)]

    def ask_to_rename(self):
        self._vexilo.press_button(RENAME)
        return self._vexilo.expect(Role.DIALOG, RENAME)

    def rename(self, text):
        dialog = self.ask_to_rename()
        self.describe_bill(text)
        self.answer(RENAME, dialog)

    # Questions

    def ask(self, button, title):
        """Presses a button that asks first; returns the question."""
        self._vexilo.press_button(button)
        return self._vexilo.expect(Role.DIALOG, title)

    def confirm(self, button, title, answer):
        self.answer(answer, self.ask(button, title))

    def delete_old(self):
        self.confirm("Delete old", DELETE_OLD, "Delete old bills")

    def delete(self, description):
        """In the edit mode, which needs no keyboard: only one of two windows can have that."""
        self._vexilo.press_button("Edit")
        self._vexilo.expect(Role.PUSH_BUTTON, "Cancel")
        tree.press(self.row(description))
        self._vexilo.press_button("Delete 1")
        self._vexilo.press_button("Cancel")
        self._vexilo.expect(Role.PUSH_BUTTON, "Done")

    def delete_all(self):
        self.confirm("Delete all", DELETE_ALL, "Delete ALL bills")


class SavedBillsTest(EndToEndTest):
    """The base of the tests of the saved bills: a program with the usual figures."""

    def setUp(self):
        super().setUp()
        self.home.write_preferences(**BILL)
        self.store = BillStore(self.home)

    def start(self, **options):
        self.vexilo = self.launch(**options)
        self.bills = SavedBills(self.vexilo)

    def start_with(self, *descriptions):
        """Starts the program and saves a bill for each description, the last one last."""
        self.start()
        self.bills.save(*descriptions)

    def open_with(self, *descriptions):
        """The same, and opens the sheet."""
        self.start_with(*descriptions)
        self.bills.open()
        self.bills.expect_bills(*reversed(descriptions))

    def quit(self):
        self.assertEqual(self.vexilo.quit(), 0)

    def restart(self):
        self.quit()
        self.start()

    def expect_stored(self, *descriptions):
        """Waits until the store holds these bills, newest first, and nothing else."""
        waiting.until(lambda: self.store.descriptions() == list(descriptions),
                      f"the store holds {descriptions}",
                      details=lambda: str(self.store.descriptions()))

    def press_escape_in(self, title):
        screen.press_keys("Escape")
        self.vexilo.expect_none(Role.DIALOG, title)
