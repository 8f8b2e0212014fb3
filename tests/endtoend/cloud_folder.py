"""What the devices keep on the server, read by rules of the tests' own."""

import hashlib
import json
import re
import shutil

EPOCH = re.compile(r"e-[0-9]{13}-[0-9a-f]{16}")
CLOSED = re.compile(rf"closed-({EPOCH.pattern})\.json")
FILE = re.compile(r"[bk]1-([0-9a-f]{64})\.jsonl")


class CloudFolder:
    """The program's folder in the user's storage, which need not be there yet."""

    def __init__(self, root):
        self._folder = root / "com.morrowick.vexilo"
        self._zone = self._folder / "com.apple.coredata.cloudkit.zone"

    def epochs(self):
        """The names of all epochs that have a folder, the oldest first."""
        return sorted(path.name for path in _children(self._zone)
                      if EPOCH.fullmatch(path.name) and path.is_dir())

    def closed(self):
        """The names of all epochs that were deleted on purpose."""
        matches = [CLOSED.fullmatch(path.name) for path in _children(self._zone)]
        return sorted(match[1] for match in matches if match)

    def descriptions(self):
        """Those of all bills that live, newest first, as a device would show them."""
        live = [record for record in self._records().values() if "x" not in record]
        live.sort(key=lambda record: record["c"][1]["timestamp"], reverse=True)
        return [record["r"][2] for record in live]

    def count_deleted(self):
        return sum("x" in record for record in self._records().values())

    def values(self):
        """The small values, by key."""
        return {key: entry["v"] for key, entry in self._entries().items()}

    def wipe(self):
        """Takes the zone away as a hand on the storage would: no device said so."""
        shutil.rmtree(self._zone)

    def _records(self):
        """The state of each record by its identity, from all files of the open epochs."""
        records = {}
        for name in set(self.epochs()) - set(self.closed()):
            for line in _lines(self._zone / name, "vexilo-bills"):
                known = records.get(line["id"])
                records[line["id"]] = _joined(known, line) if known else line
        return records

    def _entries(self):
        entries = {}
        for line in _lines(self._folder / "kv", "vexilo-kv"):
            known = entries.get(line["id"])
            if not known or _rank(known) < _rank(line):
                entries[line["id"]] = line
        return entries


def _lines(folder, kind):
    """The lines of all files in a folder, each of which must be what its name says."""
    for path in _children(folder):
        match = FILE.fullmatch(path.name)
        if not match:
            continue
        try:
            text = path.read_bytes()
        except FileNotFoundError:  # joined into another one meanwhile
            continue
        if hashlib.sha256(text).hexdigest() != match[1]:
            raise AssertionError(f"{path.name} is not what its name says:\n{text!r}")
        header, *lines = [json.loads(line) for line in text.decode("utf-8").splitlines()]
        if (header["fmt"], header["v"], header["n"]) != (kind, 1, len(lines)):
            raise AssertionError(f"{path.name} has the header {header}")
        yield from lines


def _joined(left, right):
    """What two devices make of one bill: the dead win, the first content, the last renaming."""
    if "x" in left or "x" in right:
        return left if "x" in left else right
    content = min(left["c"], right["c"], key=lambda value: value[0])
    return {"id": left["id"], "c": content, "r": max(left["r"], right["r"])}


def _rank(entry):
    return entry["h"], entry["v"], entry["d"]


def _children(folder):
    try:
        return list(folder.iterdir())
    except FileNotFoundError:
        return []
