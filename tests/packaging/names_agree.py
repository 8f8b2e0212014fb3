"""The identifier, the version and the pictures are the same wherever they stand."""

import pathlib
import re
import sys
import unittest
import xml.etree.ElementTree
from datetime import date
from email.utils import parsedate_to_datetime

ROOT, VERSION, WEBSITE = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
PACKAGING = ROOT / "packaging"
ID = "com.morrowick.vexilo"


def metainfo():
    text = (PACKAGING / f"{ID}.metainfo.xml.in").read_text("utf-8")
    return xml.etree.ElementTree.fromstring(text.replace("@VEXILO_WEBSITE@", WEBSITE).encode())


def picture_size(file):
    """Width and height of a PNG file, as its header tells."""
    header = file.read_bytes()[:24]
    return tuple(int.from_bytes(header[at:at + 4], "big") for at in (16, 20))


class Identifier(unittest.TestCase):
    def test_the_program_calls_itself_by_it(self):
        main = (ROOT / "src/app/main.cpp").read_text("utf-8")

        names = re.findall(r'setDesktopFileName\(QStringLiteral\("([^"]*)"\)\)', main)
        self.assertEqual(names, [ID])

    def test_the_program_owns_it_on_the_bus(self):
        source = (ROOT / "src/app/desktop/DesktopApplication.cpp").read_text("utf-8")

        self.assertIn(f'applicationName = QStringLiteral("{ID}")', source)
        self.assertIn(f'applicationPath = QStringLiteral("/{ID.replace(".", "/")}")', source)

    def test_the_desktop_entry_names_its_icon_by_it(self):
        entry = (PACKAGING / f"{ID}.desktop").read_text("utf-8")

        self.assertIn(f"\nIcon={ID}\n", entry)

    def test_the_metainfo_names_itself_and_the_desktop_entry_by_it(self):
        self.assertEqual(metainfo().findtext("id"), ID)
        self.assertEqual(metainfo().findtext("launchable"), f"{ID}.desktop")

    def test_no_other_spelling_of_it_names_a_file(self):
        files = [file.name for file in PACKAGING.rglob("*") if "morrowick" in file.name.lower()]

        self.assertGreater(len(files), 5)
        for name in files:
            self.assertTrue(name.startswith(ID), name)


class Release(unittest.TestCase):
    def test_the_newest_one_is_this_version_in_every_list(self):
        changelog = (ROOT / "CHANGELOG.md").read_text("utf-8")
        debian = (PACKAGING / "debian/changelog").read_text("utf-8")

        self.assertEqual(re.search(r"^## ([\d.]+)", changelog, re.MULTILINE)[1], VERSION)
        self.assertEqual(re.match(r"vexilo \(([^)]*)\)", debian)[1], VERSION)
        self.assertEqual(metainfo().find("releases/release").get("version"), VERSION)

    def test_both_lists_date_it_alike(self):
        debian = (PACKAGING / "debian/changelog").read_text("utf-8")
        stamp = re.search(r"^ -- .*>  (.*)$", debian, re.MULTILINE)[1]

        self.assertEqual(parsedate_to_datetime(stamp).date(),
                         date.fromisoformat(metainfo().find("releases/release").get("date")))


class Screenshots(unittest.TestCase):
    def test_each_is_an_absolute_address_of_a_picture_of_ours_in_its_size(self):
        images = metainfo().findall("screenshots/screenshot/image")

        self.assertGreater(len(images), 2)
        for image in images:
            folder, _, name = image.text.rpartition("/")
            self.assertEqual(folder, f"{WEBSITE}/vexilo/pictures")
            self.assertEqual((int(image.get("width")), int(image.get("height"))),
                             picture_size(ROOT / "docs" / name), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
