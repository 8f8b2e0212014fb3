"""A user's home for one test: folders, preferences and programs of its own."""

import configparser
import pathlib
import shutil
import tempfile

FIRST_RUN_PREFERENCES = {
    "firstRun": "true",
    "theme": "0",
    "roundShare": "false",
    "roundTip": "false",
    "tipFromEveryone": "false",
    "bill": "0",
    "people": "2",
    "service": "1",
    "serviceGood": "5",
    "serviceExcellent": "10",
    "showCurrency": "true",
    "showShareInSavedBillsList": "true",
    "highlightSums": "true",
}
MARKER = {"havePrefs": "100"}

# Each call replaces the file at once, so that a reader never sees half a call.
RECORDER = """#!/bin/sh
{wait}
printf '%s\\0' "$@" > "{record}.new" && mv "{record}.new" "{record}"
exit {exit_code}
"""
WAIT = """touch "{gate}.reached"
for _ in $(seq 200); do [ -e "{gate}" ] && break; sleep 0.05; done"""


class Home:
    def __init__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="vexilo-home-"))
        for name in ("config", "data", "cache", "state", "programs", "system"):
            (self._folder / name).mkdir()
        (self._folder / "runtime").mkdir(mode=0o700)

    def remove(self):
        shutil.rmtree(self._folder)

    def environment(self, machine_path):
        return {
            "HOME": str(self._folder),
            "PATH": f"{self._folder / 'programs'}:{machine_path}",
            "XDG_CONFIG_HOME": str(self._folder / "config"),
            "XDG_CONFIG_DIRS": str(self._folder / "system"),
            "XDG_DATA_HOME": str(self._folder / "data"),
            "XDG_DATA_DIRS": str(self._folder / "system"),
            "XDG_CACHE_HOME": str(self._folder / "cache"),
            "XDG_STATE_HOME": str(self._folder / "state"),
            "XDG_RUNTIME_DIR": str(self._folder / "runtime"),
        }

    def file(self, name):
        return self._folder / name

    def add_recorder(self, name, exit_code=0, wait_for=None):
        """Puts a program on the path that records the arguments of its last call.

        With `wait_for` it first makes that file's ".reached" and waits, at most ten seconds, until
        the file is there.
        """
        wait = WAIT.format(gate=wait_for) if wait_for else ""
        program = self._folder / "programs" / name
        record = self._record_of(name)
        program.write_text(RECORDER.format(record=record, exit_code=exit_code, wait=wait), encoding="utf-8")
        program.chmod(0o755)
        return program

    def recorded_arguments(self, name):
        """The arguments of a recorder's last call, or None before the first."""
        record = self._record_of(name)
        if not record.exists():
            return None
        return record.read_bytes().decode("utf-8").split("\0")[:-1]

    def _record_of(self, name):
        return self._folder / f"{name}.record"

    @property
    def _preferences_file(self):
        return self._folder / "config" / "Morrowick" / "Vexilo.ini"

    @property
    def _cloud_account_file(self):
        return self._folder / "config" / "Morrowick" / "cloud.ini"

    @property
    def _cloud_values_file(self):
        return self._folder / "data" / "Morrowick" / "Vexilo" / "cloud-values.ini"

    def preferences(self):
        """All that the preferences file holds, by key; empty before there is one."""
        return _read(self._preferences_file)

    def cloud_values(self):
        """The small values that the program shares with the user's other devices, by key."""
        return _read(self._cloud_values_file)

    def write_cloud_values(self, **values):
        """Stores small values as if another program had, before this one is started."""
        _write(self._cloud_values_file, values)

    def write_cloud_account(self, **account):
        """Tells the program who and where the user is; there, or changed, at once."""
        new = self._cloud_account_file.with_suffix(".new")
        _write(new, account)
        new.replace(self._cloud_account_file)

    def copy_program_files(self, other):
        """Takes over what the program keeps in another home, as a person does who moves."""
        for name in ("config", "data"):
            shutil.copytree(other.file(name) / "Morrowick", self._folder / name / "Morrowick",
                            dirs_exist_ok=True)

    def files(self):
        """All ordinary files of this home."""
        return [path for path in self._folder.rglob("*") if path.is_file()]

    def write_preferences(self, **values):
        """Stores preferences: those of a first run, with these in their place (None: without)."""
        stored = FIRST_RUN_PREFERENCES | MARKER | values
        _write(self._preferences_file,
               {key: value for key, value in stored.items() if value is not None})


def _read(file):
    parser = _make_parser()
    parser.read(file, encoding="utf-8")
    return dict(parser["General"]) if "General" in parser else {}


def _write(file, values):
    parser = _make_parser()
    parser["General"] = values
    file.parent.mkdir(parents=True, exist_ok=True)
    with open(file, "w", encoding="utf-8") as stream:
        parser.write(stream, space_around_delimiters=False)


def _make_parser():
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    return parser
