"""Devices of one user who mirrors the saved bills through a WebDAV server."""

import dav_server
import waiting
from bill_store import BillStore
from home import Home
from saved_bills import BILL, SavedBills
from session import Session
from settings_sheet import CLOUD, SettingsSheet

ON, OFF = "true", "false"


class Device:
    """One computer: a home, a session bus, a keyring, and the program as it was started last.

    An account is set up in it where a server is given.
    """

    def __init__(self, server=None, choice=None):
        self.home = Home()
        self.home.write_preferences(**BILL)
        self.store = BillStore(self.home)
        self.session = Session(self.home)
        self.session.start_keyring()
        self.vexilo = None
        self._keyring_name = None
        if server:
            self.set_account(server)
        if choice:
            self.home.write_cloud_values(icloud_sync=choice)

    def remove(self):
        self.session.end()
        self.home.remove()

    def set_account(self, server, **more):
        """Sets the account up as a person does: the password first, then who, where and how."""
        self._keyring_name = f"{dav_server.USER}@{server.authority}"
        self.set_password(dav_server.PASSWORD)
        self.home.write_cloud_account(url=server.url, user=dav_server.USER, **more)

    def set_password(self, password, session=None):
        """Puts the password into the keyring, over the one that was there."""
        (session or self.session).store_secret(password, "Vexilo", {
            "xdg:schema": "org.qt.keychain", "server": "Vexilo", "type": "plaintext",
            "user": self._keyring_name})

    # The program

    def adopt(self, start):
        """The program that `start()` starts and returns runs here from now on."""
        log = self.home.file("vexilo.log")
        self._began = len(log.read_text(encoding="utf-8")) if log.exists() else 0
        self.vexilo = start()
        self.bills = SavedBills(self.vexilo)
        self.sheet = SettingsSheet(self.vexilo)

    def switch(self, on):
        self.sheet.open()
        self.sheet.switch(CLOUD, on)
        self.sheet.close()

    def terminate(self):
        code = self.vexilo.terminate()
        if code != 0:
            raise AssertionError(f"The program ended with {code}\n{self.vexilo.output()}")

    # What it keeps

    def expect_stored(self, *descriptions):
        """Waits until the store holds these bills, newest first, and nothing else."""
        waiting.until(lambda: self.store.descriptions() == list(descriptions),
                      f"the store holds {descriptions}",
                      details=lambda: f"{self.store.descriptions()}\n{self.vexilo.output()}")

    def expect_said(self, text):
        """Waits until the program has printed this since its start."""
        self.vexilo.until(lambda: text in self.vexilo.output()[self._began:],
                          f"the program says {text!r}")

    def expect_choice(self, word):
        waiting.until(lambda: self.home.cloud_values().get("icloud_sync") == word,
                      f"the choice is {word}",
                      details=lambda: f"{self.home.cloud_values()}\n{self.vexilo.output()}")
