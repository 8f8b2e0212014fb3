"""Every screen, sheet and dialog as assistive software meets it: named, pressed and reached by keys."""

import os
import pathlib
import subprocess

import accessible_rules as rules
import tree
from bill_store import BillStore
from home import Home
from share_desktop import WholePortal
from saved_bills import SavedBillsTest
from tour import NARROW, OK_BUTTON, SAVE, Tour
from tree import Role
from waiting import DEADLINE

# What shows only to the pointer: the keyboard has its Delete key, and assistive software the edit mode.
BY_POINTER_ALONE = {"Saved bills, one swiped aside"}
# Those whose every button is pressed by other tests, which look for more than that something happens.
PRESSED_ELSEWHERE = {"Calculator", "Calculator, amount refused", "Menu", "Settings", "Saved bills",
                     "Saved bills, being edited", "Delete old bills", "Delete all bills", "Bill",
                     "Rename"}
GARBAGE = b"This was never a store.\n" * 500
# A program that meets the limit of a file's size is told so instead of ended.
WITHOUT_SIGNAL = ("sh", "-c", "trap '' XFSZ; exec \"$0\"")


class TourTest(SavedBillsTest):
    """The base of these tests: a program on a desktop that has everything to share with, and no motion."""

    def setUp(self):
        super().setUp()
        self.enterContext(WholePortal(saved_as=self.home.file("nowhere") / "bill.txt"))

    def start(self, **options):
        super().start(**options)
        self.tour = Tour(self.vexilo)
        self.tour.resize(NARROW)

    def start_where_nothing_can_be_saved(self):
        """Such a program, with the dialog that says so."""
        self.start(through=WITHOUT_SIGNAL)
        subprocess.run(["prlimit", "--pid", str(self.vexilo.process_id), "--fsize=1:"], check=True)
        self.fail_to_save()

    def fail_to_save(self):
        self.tour.open(SAVE)
        self.tour.press(OK_BUTTON)
        self.vexilo.until(lambda: len(self.tour.buttons()) == 1, "the failure is said")

    def start_with_a_store_of_something_else(self):
        self.home = Home()
        self.addCleanup(self.home.remove)
        self.store = BillStore(self.home)
        self.store.path.parent.mkdir(parents=True)
        self.store.path.write_bytes(GARBAGE)
        super().start()
        self.tour = Tour(self.vexilo)
        self.tour.expect_layers(1)


class Walk(TourTest):
    def setUp(self):
        super().setUp()
        self.report = []

    def test_every_screen_keeps_the_rules(self):
        self.start()
        for title, show in self.tour.stops().items():
            with self.subTest(title):
                show()
                try:
                    self.walk(title)
                finally:
                    self.tour.return_to_calculator()
        self.vexilo.stop()
        for title, start in (("Save failed", self.start_where_nothing_can_be_saved),
                             ("Saved bills could not be opened",
                              self.start_with_a_store_of_something_else)):
            with self.subTest(title):
                start()
                self.walk(title)
                self.vexilo.stop()
        self.assertEqual(len(self.report), len(self.tour.stops()) + 2)
        self.write_report()

    def walk(self, title):
        seen = self.tour.things()
        self.report.append(rules.report(title, seen))
        complaints = rules.complaints(seen)
        if title not in BY_POINTER_ALONE:
            sought = [one for one in seen if one.role != Role.MENU_ITEM or title == "Menu"]
            complaints += rules.unreached(sought, self.tour.reached_by_keys())
        self.assertEqual(complaints, [])

    def write_report(self):
        """Leaves what was met in the build's folder, beside the program's."""
        file = pathlib.Path(os.environ["VEXILO_PROGRAM"]).parents[1] / "accessible-screens.txt"
        file.write_text("\n".join(self.report), encoding="utf-8")
        print(f"All screens and their controls: {file}")


class Presses(TourTest):
    def test_pressing_anything_does_something(self):
        self.start()
        for title, show in self.tour.stops().items():
            if title not in PRESSED_ELSEWHERE:
                self.press_everything(title, show)

    def test_pressing_ok_closes_what_says_that_a_bill_was_not_saved(self):
        self.start_where_nothing_can_be_saved()

        self.press_all_of("Save failed")

        self.tour.expect_layers(0)

    def test_pressing_ok_ends_a_program_without_a_store(self):
        self.start_with_a_store_of_something_else()

        self.tour.press(0)

        self.vexilo.await_exit()

    def press_everything(self, title, show):
        show()
        count = len(self.tour.pressable())
        self.assertGreater(count, 0)
        self.tour.return_to_calculator()
        for place in range(count):
            show()
            self.press(title, place)
            self.tour.return_to_calculator()

    def press_all_of(self, title):
        for place in range(len(self.tour.pressable())):
            self.press(title, place)

    def press(self, title, place):
        node = self.tour.pressable()[place]
        name = tree.name_of(node)
        with self.subTest(name, screen=title):
            self.assertTrue(rules.is_heeded(lambda: tree.press(node), self.seen, self.comes_true),
                            f"pressing {name!r} is not seen")

    def seen(self):
        """What is on top. All that is offered there closes it, opens something else or changes it."""
        return len(self.tour.layers()), self.tour.things()

    def comes_true(self, condition):
        try:
            return self.vexilo.until(condition, "it comes true", DEADLINE)
        except AssertionError:
            return False
