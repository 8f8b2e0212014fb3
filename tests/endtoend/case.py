"""The base of all tests: a home of its own for each, and the program started fresh in it."""

import unittest

from home import Home
from vexilo import Vexilo


class EndToEndTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.remove)

    def launch(self, **options):
        """Starts the program in this test's home. It is stopped when the test ends."""
        program = Vexilo(self.home, **options)
        self.addCleanup(self._finish, program)
        return program

    def _finish(self, program):
        program.stop()
        self.assertEqual(program.complaints(), [])
