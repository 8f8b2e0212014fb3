"""What the program needs is in packages that its own package asks for."""

import os
import pathlib
import re
import subprocess
import sys
import unittest

import packages

PACKAGE, ROOT, SOURCES = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
QML_FOLDER = pathlib.Path(sys.argv[4])


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def field(name):
    return packages.alternatives(run("dpkg-deb", "--field", PACKAGE, name))


def linked_libraries():
    """The libraries that the program names, as the loader finds them."""
    for line in run("ldd", ROOT / "usr/bin/vexilo").splitlines():
        found = re.search(r"=> (/\S+)", line)
        if found:
            yield found[1]
        elif "not found" in line:
            raise AssertionError(line)


def imported_modules():
    """Qt's modules that our views import, and those that these import."""
    views = SOURCES.glob("**/*.qml")
    imports = {name for view in views
               for name in re.findall(r"^import (Qt[\w.]*)", view.read_text("utf-8"), re.MULTILINE)}
    found, waiting = {}, sorted(imports)
    while waiting:
        module = waiting.pop()
        if module in found:
            continue
        found[module] = QML_FOLDER / module.replace(".", os.sep) / "qmldir"
        described = found[module].read_text("utf-8")
        waiting.extend(re.findall(r"^(?:depends|import) ([\w.]+)", described, re.MULTILINE))
    return found


class Dependencies(unittest.TestCase):
    def test_every_linked_library_is_in_a_package_that_is_asked_for(self):
        libraries = list(linked_libraries())
        asked = packages.closure(field("Depends"))

        self.assertGreater(len(libraries), 20)
        for library, owner in packages.owners_of(libraries).items():
            self.assertIn(owner, asked, library)

    def test_the_packages_of_the_qml_modules_are_asked_for_by_name_and_no_others(self):
        modules = imported_modules()

        self.assertIn("QtQuick.Templates", modules)
        owners = set(packages.owners_of(modules.values()).values())
        asked = {name for names in field("Depends") for name in names if name.startswith("qml6-")}
        self.assertEqual(asked, owners)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
