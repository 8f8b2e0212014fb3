"""What the program answers without a window."""

import json
import os
import pathlib
import subprocess

from case import ProgramTest

PROGRAM = pathlib.Path(os.environ["VEXILO_PROGRAM"])


class CommandLine(ProgramTest):
    def test_the_version_is_that_of_the_bundle(self):
        bundle = json.loads((PROGRAM.parents[1] / "share/vexilo/Info.json").read_text("utf-8"))
        version = f"{bundle['CFBundleShortVersionString']}.{bundle['CFBundleVersion']}"

        for option in ("-v", "--version"):
            self.assertEqual(self.answer(option), f"Vexilo {version}\n")

    def test_the_help_names_every_option(self):
        for option in ("-h", "--help"):
            answer = self.answer(option)

            self.assertTrue(answer.startswith("Usage: vexilo "), answer)
            for named in ("-h, --help", "-v, --version"):
                self.assertIn(named, answer)

    def test_an_answer_that_cannot_be_written_is_a_failure(self):
        for option in ("--version", "--help"):
            with open("/dev/full", "w", encoding="utf-8") as full:
                run = subprocess.run([PROGRAM, option], env={}, stdout=full, timeout=60, check=False)

            self.assertEqual(run.returncode, 1, option)

    def test_an_answer_leaves_options_of_qt_alone(self):
        self.assertEqual(self.answer("-platform", "none", "--version"), self.answer("--version"))

    def answer(self, *arguments):
        """What is printed where there is no display, no bus and no home."""
        run = subprocess.run([PROGRAM, *arguments], env={}, capture_output=True, text=True,
                             timeout=60)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run.stdout
