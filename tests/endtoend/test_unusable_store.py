"""A file of saved bills that cannot be opened: the program says so and ends; the file stays."""

import signal

import screen
import tree
from saved_bills import SavedBillsTest
from tree import Role

TITLE = "The saved bills could not be opened."
GARBAGE = b"This was never a store.\n" * 500


class UnusableStore(SavedBillsTest):
    def test_a_file_of_something_else_is_left_alone(self):
        self.store.path.parent.mkdir(parents=True)
        self.store.path.write_bytes(GARBAGE)

        self.assert_said_and_left_alone("corrupt", lambda: self.vexilo.press_button("OK"))

    def test_a_store_of_a_later_version_is_left_alone(self):
        self.start_with("Lunch")
        self.quit()
        self.store.set_format(2)

        self.assert_said_and_left_alone("newer format", lambda: screen.press_keys("Return"))

    def test_escape_ends_the_program_too(self):
        self.store.path.parent.mkdir(parents=True)
        self.store.path.write_bytes(GARBAGE)

        self.assert_said_and_left_alone("corrupt", lambda: screen.press_keys("Escape"))

    def test_a_folder_in_the_place_of_the_file_is_said(self):
        self.store.path.mkdir(parents=True)
        self.start()

        self.assert_said_and_ended("could not be used", lambda: screen.press_keys("Return"))

    def assert_said_and_left_alone(self, reason, close):
        before = self.store.path.read_bytes()
        self.start()

        self.assert_said_and_ended(reason, close)

        self.assertEqual(self.store.path.read_bytes(), before)

    def assert_said_and_ended(self, reason, close):
        """Reads the window, closes it, and awaits the end with the same message."""
        alert = self.vexilo.expect(Role.DIALOG, TITLE)
        message = tree.name_of(tree.find(alert, Role.LABEL))
        self.assertIn(reason, message)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "OK")

        close()

        self.assertEqual(self.vexilo.await_exit(), -signal.SIGABRT)
        self.assertTrue(message.startswith("Unresolved error "), message)
        self.assertIn(message, self.vexilo.output())
