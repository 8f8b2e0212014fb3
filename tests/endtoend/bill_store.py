"""The file of the saved bills, as another program that shares it meets it."""

import contextlib
import sqlite3
import subprocess

# An inserted record is a copy of the oldest one but for its description and time.
COPY = """
    INSERT INTO Item (_id, _version, bill, people, service, total, share, tip, everyone, roundtip,
                      roundshare, ref, timestamp)
    SELECT (SELECT max(_id) FROM Item) + 1, 1, bill, people, service, total, share, tip, everyone,
           roundtip, roundshare, ?, ? FROM Item ORDER BY _id LIMIT 1"""

DELETION = 2  # among the kinds of recorded changes


class BillStore:
    def __init__(self, home):
        self.path = home.file("data") / "Morrowick" / "Vexilo" / "Vexilo.sqlite"

    def bills(self):
        """All records by attribute, newest first."""
        with self._connect() as store:
            store.row_factory = sqlite3.Row
            records = store.execute("SELECT * FROM Item ORDER BY timestamp DESC, _id DESC")
            return [dict(record) for record in records]

    def descriptions(self):
        return [bill["ref"] for bill in self.bills()]

    def count_deletions(self):
        """How many saves took records away, however many each of them took."""
        with self._connect() as store:
            return store.execute("SELECT count(*) FROM _store_history WHERE kind = ?",
                                 (DELETION,)).fetchone()[0]

    def date(self, description, when):
        """Makes a bill one that was saved at another time."""
        self._change("UPDATE Item SET _version = _version + 1, timestamp = ? WHERE ref = ?",
                     [(_stamp(when), description)])

    def set_sums(self, description, share, total):
        """Makes a bill one of other sums, in currency units."""
        self._change("UPDATE Item SET _version = _version + 1, share = ?, total = ? WHERE ref = ?",
                     [(share, total, description)])

    def forget_description(self, description):
        """Leaves a bill without any description, as a record of another origin may be."""
        self._change("UPDATE Item SET _version = _version + 1, ref = NULL WHERE ref = ?",
                     [(description,)])

    def add_copies(self, times):
        """Adds bills by description and time of saving, in all else like the oldest one."""
        self._change(COPY, [(name, _stamp(when)) for name, when in times.items()])

    def set_format(self, version):
        with self._connect() as store:
            store.execute(f"PRAGMA user_version = {version}")

    @contextlib.contextmanager
    def locked(self):
        """Nobody else can write to the store while inside."""
        with self._connect() as store:
            store.isolation_level = None
            store.execute("BEGIN EXCLUSIVE")
            yield
            store.execute("ROLLBACK")

    def integrity(self):
        """What SQLite's own shell says of the file: "ok" where nothing is wrong."""
        return subprocess.run(["sqlite3", self.path, "PRAGMA integrity_check"], check=True,
                              capture_output=True, text=True).stdout.strip()

    def _change(self, statement, rows):
        with self._connect() as store, store:
            changed = store.executemany(statement, rows).rowcount
        if changed != len(rows):
            raise AssertionError(f"{changed} records instead of {len(rows)} were changed")

    def _connect(self):
        # Never by the path alone: a store that is not there must not be made.
        return contextlib.closing(sqlite3.connect(f"{self.path.as_uri()}?mode=rw", uri=True))


def _stamp(when):
    """The store counts milliseconds of universal time."""
    return int(when.timestamp() * 1000)
