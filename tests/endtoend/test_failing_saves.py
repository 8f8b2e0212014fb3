"""What happens where a bill cannot be saved."""

import signal
import subprocess

import screen
import tree
from saved_bills import SAVE, SAVE_FAILED, SavedBillsTest
from tree import Role

# A writer waits five seconds for another one to finish.
PATIENCE = 20.0
# A program that meets the limit of a file's size is told so instead of ended.
WITHOUT_SIGNAL = ("sh", "-c", "trap '' XFSZ; exec \"$0\"")
FIGURES = ("TOTAL $110.00", "Tip $10.00", "Share per person $27.50")


class FailingSave(SavedBillsTest):
    def test_a_store_that_is_locked_for_long_is_said_and_the_next_try_works(self):
        self.start_with("Breakfast")

        with self.store.locked():
            self.enter("Lunch")
            alert = self.vexilo.expect(Role.DIALOG, SAVE_FAILED, PATIENCE)
            self.assert_reason(alert, "locked")
        self.bills.answer("OK", alert)

        self.assert_kept_and_try_again()

    def test_a_file_that_cannot_grow_is_said_and_the_next_try_works(self):
        self.start(through=WITHOUT_SIGNAL)
        self.bills.save("Breakfast")

        self.limit_files("1")
        self.enter("Lunch")
        alert = self.vexilo.expect(Role.DIALOG, SAVE_FAILED)
        self.assert_reason(alert, "The store could not be used")
        self.limit_files("unlimited")
        self.bills.answer("OK", alert)

        self.assert_kept_and_try_again()

    def test_a_store_that_is_locked_for_a_moment_is_waited_for(self):
        self.start_with("Breakfast")

        with self.store.locked():
            self.enter("Lunch")
        self.vexilo.expect_none(Role.DIALOG, SAVE)

        self.expect_stored("Lunch", "Breakfast")
        self.assertIsNone(self.vexilo.find(Role.DIALOG))

    def enter(self, description):
        """Asks to save and answers by key, which does not wait for the program to heed it."""
        self.bills.ask_to_save()
        self.bills.describe_bill(description)
        screen.press_keys("Return")

    def limit_files(self, size):
        subprocess.run(["prlimit", "--pid", str(self.vexilo.process_id), f"--fsize={size}:"],
                       check=True)

    def assert_reason(self, alert, part):
        reasons = [tree.name_of(node) for node in tree.find_all(alert, Role.LABEL)]
        self.assertIn(part, " ".join(reasons))

    def assert_kept_and_try_again(self):
        self.assertEqual(self.vexilo.bill_text(), "100")
        self.vexilo.expect_figures(*FIGURES)
        self.assertEqual(self.store.descriptions(), ["Breakfast"])

        self.bills.save("Lunch")

        self.expect_stored("Lunch", "Breakfast")
        self.bills.open()
        self.bills.expect_bills("Lunch", "Breakfast")
        self.bills.close()
        self.quit()
        self.assertEqual(self.store.integrity(), "ok")


class Impossible(SavedBillsTest):
    def test_more_people_than_a_record_can_hold_stop_the_program_and_store_nothing(self):
        self.home.write_preferences(bill="100", people=str(2**31))
        self.start()
        self.bills.ask_to_save()

        screen.press_keys("Return")

        self.assertEqual(self.vexilo.await_exit(), -signal.SIGABRT)
        self.assertEqual(self.store.bills(), [])
        self.assertEqual(self.store.integrity(), "ok")
