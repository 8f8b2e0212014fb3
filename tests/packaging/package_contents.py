"""What the .deb holds: exactly these files, with the rights that everybody needs and no more."""

import gzip
import pathlib
import subprocess
import sys
import unittest

ID = "com.morrowick.vexilo"
RASTER_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)

FILES = {
    f"applications/{ID}.desktop",
    "doc/vexilo/NEWS.gz",
    "doc/vexilo/changelog.gz",
    "doc/vexilo/copyright",
    *(f"icons/hicolor/{size}x{size}/apps/{ID}.png" for size in RASTER_SIZES),
    f"icons/hicolor/scalable/apps/{ID}.svg",
    f"icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
    "man/man1/vexilo.1.gz",
    f"metainfo/{ID}.metainfo.xml",
    "vexilo/Info.json",
    "vexilo/Vexilo.momd",
    "vexilo/translations/vexilo_de.qm",
}

PACKAGE = pathlib.Path(sys.argv[1])
ROOT = PACKAGE.parent / "root"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def listed():
    """Rights, owner and path of everything in the package."""
    for line in run("dpkg-deb", "--contents", PACKAGE).splitlines():
        rights, owner, _, _, _, path = line.split(maxsplit=5)
        yield rights, owner, path.removeprefix("./")


class Contents(unittest.TestCase):
    def test_it_holds_the_program_and_what_belongs_to_it(self):
        files = {path for rights, _, path in listed() if not rights.startswith("d")}

        self.assertEqual(files, {"usr/bin/vexilo", *(f"usr/share/{file}" for file in FILES)})

    def test_everything_is_roots_and_everybody_may_read_it(self):
        for rights, owner, path in listed():
            is_run = rights.startswith("d") or path == "usr/bin/vexilo"
            self.assertEqual(owner, "root/root", path)
            self.assertEqual(rights[1:], "rwxr-xr-x" if is_run else "rw-r--r--", path)

    def test_it_runs_no_scripts_when_it_is_installed_or_removed(self):
        self.assertEqual({file.name for file in (ROOT / "DEBIAN").iterdir()},
                         {"control", "md5sums"})

    def test_the_program_is_stripped(self):
        sections = run("readelf", "--wide", "--section-headers", ROOT / "usr/bin/vexilo")

        self.assertIn(".text", sections)
        for section in (".symtab", ".debug_info"):
            self.assertNotIn(section, sections)

    def test_each_raster_icon_has_its_size(self):
        for size in RASTER_SIZES:
            file = ROOT / f"usr/share/icons/hicolor/{size}x{size}/apps/{ID}.png"
            header = file.read_bytes()[:24]

            self.assertEqual(header[:8], b"\x89PNG\r\n\x1a\n", file)
            self.assertEqual([int.from_bytes(header[at:at + 4], "big") for at in (16, 20)],
                             [size, size], file)

    def test_the_version_is_that_of_its_changelog(self):
        with gzip.open(ROOT / "usr/share/doc/vexilo/changelog.gz", "rt", encoding="utf-8") as log:
            first = log.readline()

        version = run("dpkg-deb", "--field", PACKAGE, "Version").strip()
        self.assertTrue(first.startswith(f"vexilo ({version}) "), first)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
