"""The bases of all tests: the program started fresh, in a home of the test's own."""

import unittest

from home import Home
from session import Session
from vexilo import Vexilo


class ProgramTest(unittest.TestCase):
    """Starts the program where a test says, and looks at what it leaves."""

    maxDiff = None

    def launch_in(self, home, **options):
        """Starts the program in a home. It is stopped when the test ends."""
        program = Vexilo(home, **options)
        self.addCleanup(self._finish, program)
        return program

    def _finish(self, program):
        program.stop()
        self.assertEqual(program.complaints(), [])

    def open_session(self, home, name):
        """One more session bus in a home, which ends with the test."""
        session = Session(home, name)
        self.addCleanup(session.end)
        return session


class EndToEndTest(ProgramTest):
    """A test with one home."""

    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.remove)

    def launch(self, **options):
        """Starts the program in this test's home. It is stopped when the test ends."""
        return self.launch_in(self.home, **options)
