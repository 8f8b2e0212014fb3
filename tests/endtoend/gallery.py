#!/usr/bin/python3
"""Pictures of every screen, sheet and dialog in every look, for the eyes.

    VEXILO_PROGRAM=build/release/bin/vexilo tests/endtoend/gallery.py FOLDER [LOOK...]

Each look gets a folder of its own, with a picture for each stop of the tour. With --documents instead
of looks, only those that docs/ keeps are taken.
"""

import contextlib
import datetime
import os
import pathlib
import subprocess
import sys
from typing import NamedTuple

# The sources of the tests may stand in a folder that others only read.
sys.dont_write_bytecode = True

import desktop
import screen
import tree
from bill_store import BillStore
from home import Home
from pictures import picture_at_rest
from portal import COLOR_SCHEME, HIGH_CONTRAST, TEXT_SCALE
from share_desktop import KdeConnect, WholePortal
from tour import OK_BUTTON, SAVE, Tour
from tree import Role
from vexilo import Vexilo

INSIDE = "--inside"
DOCUMENTS_ALONE = "--documents"
NONE_SAVED = "Saved bills, none"
DISPLAY = (2400, 2000)
DARK, LIGHT = 1, 2  # colour schemes of the desktop

PREFERENCES = {"bill": "133.5", "people": "4", "tipFromEveryone": "true", "roundShare": "true",
               "firstRun": "false"}
# What each saved bill is called, how many days ago and when it was saved, and its share and total.
BILLS = (("Dinner at Lena's", 1, datetime.time(21, 47), 41.00, 164.00),
         ("Lunch", 2, datetime.time(13, 20), 18.90, 56.70),
         ("Bill", 6, datetime.time(12, 40), 12.25, 24.50),
         ("العشاء", 8, datetime.time(21, 15), 27.00, 81.00),
         ("Team breakfast", 11, datetime.time(9, 30), 9.80, 58.80),
         ("Noodles", 12, datetime.time(13, 5), 14.10, 28.20))
# A bare display has no system font; the pictures show one that is made for screens.
FONTS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
    <include>/etc/fonts/fonts.conf</include>
    <match target="pattern">
        <edit name="family" mode="prepend" binding="strong"><string>Inter</string></edit>
    </match>
</fontconfig>
"""

ENGLISH = {"LC_ALL": "en_US.UTF-8"}
GERMAN = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}
ARABIC = {"LC_ALL": "ar_EG.UTF-8", "LANGUAGE": "ar"}


class Look(NamedTuple):
    """How the program is to look, and the sizes of its window in pixels that show it."""

    scheme: int = LIGHT
    high_contrast: bool = False
    text_scale: float = 1.0
    display_scale: float = 1.0
    narrow: tuple = (540, 880)
    wide: tuple = (960, 880)
    beside: bool = False  # whether a bill's page stands beside the list in the narrow window, too
    locale: dict = ENGLISH
    amount: str = "133.5"


LOOKS = {
    "light": Look(),
    "dark": Look(DARK),
    "high-contrast": Look(high_contrast=True),
    "high-contrast-dark": Look(DARK, high_contrast=True),
    "right-to-left": Look(locale=ARABIC, amount="١٣٣٫٥"),
    "german": Look(locale=GERMAN, amount="133,5"),
    "200-per-cent": Look(DARK, display_scale=2, narrow=(1080, 1760), wide=(1920, 1760)),
    "large-text": Look(text_scale=2, narrow=(540, 1240), wide=(1600, 1240)),
    "small": Look(narrow=(500, 800), wide=(800, 800)),
    "small-german-dark": Look(DARK, narrow=(500, 800), wide=(800, 800), locale=GERMAN,
                              amount="133,5"),
    "wide": Look(narrow=(1100, 880), wide=(1300, 880), beside=True),
}

# What docs/ keeps: which stops of which look, and what their pictures are called there.
DOCUMENTS = {
    "light": {"Calculator": "calculator-light", "Save": "save-dialog", "Settings": "settings-light",
              "Saved bills": "saved-bills-narrow", "Bill beside the list": "saved-bills-light",
              "Share": "share-light", "QR code": "share-qr"},
    "dark": {"Calculator": "calculator-dark", "Settings": "settings-dark",
             "Bill": "saved-bill-narrow-dark", "Bill beside the list": "saved-bills-dark",
             "Share": "share-dark"},
    "high-contrast": {"Calculator": "calculator-high-contrast",
                      "Settings": "settings-high-contrast",
                      "Bill beside the list": "saved-bills-high-contrast",
                      "Share": "share-high-contrast"},
    "high-contrast-dark": {"Calculator": "calculator-high-contrast-dark",
                           "Bill beside the list": "saved-bills-high-contrast-dark"},
    "right-to-left": {"Calculator": "calculator-right-to-left",
                      "Settings": "settings-right-to-left",
                      "Saved bills": "saved-bills-right-to-left"},
    "german": {"Calculator": "calculator-german", "Settings": "settings-german",
               "Bill beside the list": "saved-bills-german"},
    "200-per-cent": {"Calculator": "calculator-200-per-cent", "Settings": "settings-200-per-cent",
                     "Saved bills": "saved-bills-200-per-cent"},
    "large-text": {"Calculator": "calculator-large-text"},
    "wide": {"Settings": "settings-wide"},
}


def main(arguments):
    if arguments[:1] == [INSIDE]:
        take(pathlib.Path(arguments[1]), arguments[2:])
        return 0
    folder, *looks = arguments or ["-"]
    if folder.startswith("-") or not (looks == [DOCUMENTS_ALONE] or set(looks) <= LOOKS.keys()):
        sys.exit(__doc__)
    desktop.find_program()
    folder = pathlib.Path(folder).resolve()
    folder.mkdir(parents=True, exist_ok=True)
    return desktop.run_inside(__file__, INSIDE, folder, *looks, size=DISPLAY)


def take(folder, looks):
    if looks == [DOCUMENTS_ALONE]:
        for look, names in DOCUMENTS.items():
            Photographer(LOOKS[look]).visit(names, folder)
        return
    for look in looks or LOOKS:
        Photographer(LOOKS[look]).visit(None, folder / look)


class Photographer:
    """Leads the program through the tour in one look."""

    def __init__(self, look):
        self._look = look
        self._vexilo = None

    def visit(self, names, folder):
        """Takes pictures into a folder: of the stops that are named, or of all under their titles."""
        folder.mkdir(exist_ok=True)
        with contextlib.ExitStack() as cleanup:
            home = Home()
            cleanup.callback(home.remove)
            home.write_preferences(**PREFERENCES)
            home.file("fonts.conf").write_text(FONTS, encoding="utf-8")
            cleanup.enter_context(WholePortal(home.file("nowhere") / "bill.txt",
                                              wishes=self._wishes()))
            cleanup.enter_context(KdeConnect("Lena's phone"))
            screen.move_pointer(*DISPLAY)  # where nothing lies under it
            with self._running(home) as tour:
                self._picture(tour, NONE_SAVED, names, folder)
                save_first_bill(tour)
            fill(BillStore(home))
            with self._running(home) as tour:
                for stop in tour.stops():
                    if stop != NONE_SAVED:
                        self._picture(tour, stop, names, folder)

    def _wishes(self):
        return ((COLOR_SCHEME, self._look.scheme), (HIGH_CONTRAST, self._look.high_contrast),
                (TEXT_SCALE, self._look.text_scale))

    @contextlib.contextmanager
    def _running(self, home):
        environment = {"QT_SCALE_FACTOR": str(self._look.display_scale),
                       "FONTCONFIG_FILE": str(home.file("fonts.conf"))}
        self._vexilo = Vexilo(home, locale=self._look.locale, environment=environment)
        try:
            tour = Tour(self._vexilo, self._look.narrow, self._look.wide, self._look.amount,
                        phones=1, beside=self._look.beside)
            tour.resize(self._look.narrow)
            yield tour
        finally:
            self._vexilo.stop()

    def _picture(self, tour, stop, names, folder):
        name = names.get(stop) if names else file_name(stop)
        if not name:
            return
        tour.stops()[stop]()
        width, height = screen.size_of(self._vexilo.window)
        subprocess.run(["convert", "-size", f"{width}x{height}", "-depth", "8", "rgb:-",
                        folder / f"{name}.png"], input=picture_at_rest(self._vexilo), check=True)
        tour.return_to_calculator()


def file_name(stop):
    return stop.lower().replace(", ", "-").replace(" ", "-")


def save_first_bill(tour):
    tour.open(SAVE)
    tree.set_text(tour.find(Role.TEXT), BILLS[0][0])
    tour.press(OK_BUTTON)
    tour.expect_layers(0)


def fill(store):
    """Leaves all of the bills in a store that has the first one."""
    today = datetime.date.today()
    saved = {name: datetime.datetime.combine(today - datetime.timedelta(days=days), time)
             for name, days, time, _share, _total in BILLS}
    store.add_copies(dict(list(saved.items())[1:]))
    store.date(BILLS[0][0], saved[BILLS[0][0]])
    for name, _days, _time, share, total in BILLS:
        store.set_sums(name, share, total)


if __name__ == "__main__":
    desktop.end_by_exception()
    sys.exit(main(sys.argv[1:]))
