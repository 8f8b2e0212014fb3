"""The Flatpak's manifest is one, and gives the program the names on the bus that it speaks to.

Whether it builds, nothing here can tell.
"""

import pathlib
import re
import sys
import unittest

import yaml

ROOT = pathlib.Path(sys.argv[1])
ID = "com.morrowick.vexilo"
MANIFEST = yaml.safe_load((ROOT / f"packaging/flatpak/{ID}.yaml").read_text("utf-8"))

KEYS = {"id", "runtime", "runtime-version", "sdk", "command", "finish-args", "cleanup", "modules"}
MODULE_KEYS = {"name", "buildsystem", "builddir", "config-opts", "cleanup", "sources"}
SANDBOX = {"--share=ipc", "--share=network", "--socket=wayland", "--socket=fallback-x11"}

# The bus and the portals, to which every sandbox may speak, and the portal's groups of settings; and
# interfaces that are not named after the service that has them, this program's own among them.
NOT_ASKED_FOR = re.compile(
    r"org\.(freedesktop\.(Application|DBus|portal|appearance|Secret)|gnome\.desktop)\b")


def names_in_sources():
    """The names on the bus that the sources know, and that a sandbox must be told of."""
    names = {name for file in (ROOT / "src").rglob("*.cpp")
             for name in re.findall(r'"(org\.(?:freedesktop|gnome|kde)\.[\w.]+)"',
                                    file.read_text("utf-8"))}
    return {name for name in names if not NOT_ASKED_FOR.match(name)}


def belong(service, name):
    """Whether a name is a service's, its interface's, or the beginning of its versions' names."""
    return f"{name}.".startswith(f"{service}.") or service.rstrip("0123456789") == name


class Manifest(unittest.TestCase):
    def test_it_is_of_this_program(self):
        self.assertEqual(MANIFEST["id"], ID)
        self.assertEqual(MANIFEST["command"], "vexilo")
        self.assertEqual(MANIFEST["modules"][-1]["name"], "vexilo")

    def test_it_has_no_key_that_means_nothing(self):
        self.assertEqual(set(MANIFEST) - KEYS, set())
        for module in MANIFEST["modules"]:
            self.assertEqual(set(module) - MODULE_KEYS, set(), module["name"])

    def test_it_opens_the_sandbox_no_wider_than_the_program_needs(self):
        others = set(MANIFEST["finish-args"]) - SANDBOX

        self.assertEqual(set(MANIFEST["finish-args"]) & SANDBOX, SANDBOX)
        for argument in others:
            option, _, service = argument.partition("=")
            self.assertEqual(option, "--talk-name", argument)
            self.assertTrue(any(belong(service, name) for name in names_in_sources()), argument)

    def test_the_program_may_speak_to_every_service_that_it_knows(self):
        services = [argument.partition("=")[2] for argument in MANIFEST["finish-args"]]

        self.assertGreater(len(names_in_sources()), 4)
        for name in names_in_sources():
            self.assertTrue(any(belong(service, name) for service in services), name)

    def test_every_archive_has_its_sum(self):
        sources = [source for module in MANIFEST["modules"] for source in module["sources"]]

        archives = [source for source in sources if source["type"] == "archive"]
        self.assertEqual(len(archives), len(MANIFEST["modules"]) - 1)
        for source in archives:
            self.assertRegex(source["sha256"], "^[0-9a-f]{64}$")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
