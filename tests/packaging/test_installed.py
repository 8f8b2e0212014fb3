"""The program as its package installs it, unpacked into a folder of its own."""

import json
import os
import pathlib
import re
from unittest import mock

from gi.repository import Gio

import packages
import screen
from case import EndToEndTest
from settings_sheet import SettingsSheet
from tree import Role

PROGRAM = pathlib.Path(os.environ["VEXILO_PROGRAM"])
ROOT = PROGRAM.parents[2]
ID = "com.morrowick.vexilo"
SHEETS = {"History": "Saved Bills", "Share": "Share", "Settings": "Settings"}


def control_field(name):
    control = (ROOT / "DEBIAN" / "control").read_text("utf-8")
    return re.search(f"^{name}: (.*)$", control, re.MULTILINE)[1]


def mapped_libraries(process_id):
    maps = pathlib.Path(f"/proc/{process_id}/maps").read_text("utf-8")
    return set(re.findall(r"(/\S+\.so[\w.]*)$", maps, re.MULTILINE))


class Installed(EndToEndTest):
    def test_the_menu_entry_names_this_program_and_its_window(self):
        path = f"{PROGRAM.parent}:{os.environ['PATH']}"
        with mock.patch.dict(os.environ, PATH=path):
            entry = Gio.DesktopAppInfo.new_from_filename(
                str(ROOT / f"usr/share/applications/{ID}.desktop"))
        vexilo = self.launch()

        self.assertEqual(entry.get_commandline(), PROGRAM.name)
        self.assertEqual(entry.get_startup_wm_class(), screen.class_of(vexilo.window))

    def test_the_window_has_the_icon_that_is_installed(self):
        vexilo = self.launch()
        window = vexilo.window

        vexilo.until(lambda: screen.icon_sizes_of(window), "the window has its icon")

    def test_it_finds_its_bundle(self):
        bundle = json.loads((ROOT / "usr/share/vexilo/Info.json").read_text("utf-8"))
        settings = SettingsSheet(self.launch())

        settings.open()

        settings.expect(Role.LABEL, f"Version {bundle['CFBundleShortVersionString']}"
                                    f".{bundle['CFBundleVersion']}")

    def test_every_library_it_loads_is_in_a_package_that_is_asked_for(self):
        vexilo = self.launch()
        for button, title in SHEETS.items():
            vexilo.press_button(button)
            vexilo.expect(Role.DIALOG, title)
            screen.press_keys("Escape")
            vexilo.expect_none(Role.DIALOG, title)

        libraries = mapped_libraries(vexilo.process_id)

        needed, wished = (packages.alternatives(control_field(name))
                          for name in ("Depends", "Recommends"))
        asked = packages.closure([*needed, *packages.satisfied(wished)])
        for loaded in ("libqxcb.so", "libqtquicktemplates2plugin.so"):
            self.assertIn(loaded, {os.path.basename(library) for library in libraries})
        for library, owner in packages.owners_of(libraries).items():
            self.assertIn(owner, asked, library)
