"""Fails where a catalogue lacks a text of the sources, has one too many, or does not translate one.

    complete.py SOURCES CATALOGUE... -- LUPDATE [OPTION...]
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True

import catalogue  # noqa: E402


def updated(file, sources, command):
    """The catalogue as the sources would have it today; the file itself is left alone."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(shutil.copy(file, folder))
        subprocess.run([*command, sources, "-ts", copy], check=True)
        return copy.read_bytes()


def main(sources, *words):
    split = words.index("--")
    files, command = words[:split], words[split + 1:]
    found = []
    for file in files:
        document = pathlib.Path(file).read_bytes()
        print(f"{file}: {len(catalogue.messages(document))} texts")
        found += catalogue.faults(document, updated(file, sources, command))
    if found or not files:
        sys.exit("\n".join([*found, "cmake --build --preset translations takes in what is new."]))


main(*sys.argv[1:])
