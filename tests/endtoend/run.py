#!/usr/bin/python3
"""Runs test modules, each inside a private desktop of its own.

    VEXILO_PROGRAM=build/dev/bin/vexilo tests/endtoend/run.py [test module...]

Without a module all are run. The exit code is 0 only if at least one test ran and none failed.
"""

import pathlib
import sys
import unittest

# The sources of the tests may stand in a folder that others only read.
sys.dont_write_bytecode = True

import desktop

INSIDE = "--inside"
FOLDER = pathlib.Path(__file__).resolve().parent


def main(arguments):
    desktop.find_program()
    if arguments[:1] == [INSIDE]:
        return run_tests(arguments[1])
    modules = arguments or sorted(path.stem for path in FOLDER.glob("test_*.py"))
    failed = [module for module in modules if run_module(module) != 0]
    if failed:
        print("Failed:", *failed, file=sys.stderr)
    return 1 if failed or not modules else 0


def run_module(module):
    """Runs a module in a new process, inside a desktop of its own."""
    return desktop.run_inside(__file__, INSIDE, module)


def run_tests(module):
    suite = unittest.defaultTestLoader.loadTestsFromName(module)
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    if result.testsRun == 0:
        print(f"No test ran in {module}", file=sys.stderr)
    complete = result.testsRun > 0 and not result.skipped
    return 0 if complete and result.wasSuccessful() else 1


if __name__ == "__main__":
    desktop.end_by_exception()
    sys.exit(main(sys.argv[1:]))
