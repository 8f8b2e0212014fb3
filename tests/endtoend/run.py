#!/usr/bin/python3
"""Runs test modules, each inside a private desktop of its own.

    VEXILO_PROGRAM=build/dev/bin/vexilo tests/endtoend/run.py [test module...]

Without a module all are run. The exit code is 0 only if at least one test ran and none failed.
"""

import os
import pathlib
import signal
import sys
import unittest

# The sources of the tests may stand in a folder that others only read.
sys.dont_write_bytecode = True

INSIDE = "--inside"
FOLDER = pathlib.Path(__file__).resolve().parent


def main(arguments):
    program = os.environ.get("VEXILO_PROGRAM", "")
    if not os.access(program, os.X_OK):
        sys.exit(f"VEXILO_PROGRAM names no program: {program!r}")
    os.environ["VEXILO_PROGRAM"] = os.path.abspath(program)
    if arguments[:1] == [INSIDE]:
        return run_tests(arguments[1])
    modules = arguments or sorted(path.stem for path in FOLDER.glob("test_*.py"))
    failed = [module for module in modules if run_module(module) != 0]
    if failed:
        print("Failed:", *failed, file=sys.stderr)
    return 1 if failed or not modules else 0


def run_module(module):
    """Runs a module in a new process, inside a desktop of its own."""
    import desktop

    return desktop.run_inside(__file__, INSIDE, module)


def run_tests(module):
    suite = unittest.defaultTestLoader.loadTestsFromName(module)
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    if result.testsRun == 0:
        print(f"No test ran in {module}", file=sys.stderr)
    complete = result.testsRun > 0 and not result.skipped
    return 0 if complete and result.wasSuccessful() else 1


if __name__ == "__main__":
    # As an exception, so that the desktop is taken down.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    sys.exit(main(sys.argv[1:]))
