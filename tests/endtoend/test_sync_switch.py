"""The switch that mirrors the saved bills in the cloud, for a person without an account there."""

import re

from portal import StillDesktop
from saved_bills import SavedBillsTest
from settings_sheet import CLOUD, SettingsSheet

LINE = "-" * 42
NOT_DELETED = "deleting zone error "


class SyncSwitch(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.enterContext(StillDesktop())
        self.start()

    def start(self, **options):
        super().start(**options)
        self.sheet = SettingsSheet(self.vexilo)

    def restart(self):
        self.mark()
        super().restart()

    def test_the_choice_is_kept_offline_and_over_restarts(self):
        self.assertIn(banner("false"), self.vexilo.output())
        self.sheet.open()
        self.sheet.expect_switch(CLOUD, False)
        self.assertEqual(self.home.cloud_values(), {})

        for on in (True, False):
            self.turn(on)
            self.restart()
            self.assertIn(banner(word(on)), self.said())
            self.sheet.open()
            self.sheet.expect_switch(CLOUD, on)
            self.assertNotIn(banner(word(not on)), self.said())

    def test_switching_on_and_off_rebuilds_the_store_and_tells_what_could_not_be_deleted(self):
        self.sheet.open()

        for _ in range(2):
            self.turn(True)
            self.assertNotIn(NOT_DELETED, self.said())
            self.turn(False)
            self.sheet.expect_switch(CLOUD, False)  # what failed has not turned it back

    def test_saved_bills_outlive_switching_on_and_off_and_a_restart(self):
        self.bills.save("Breakfast")
        for name, on in (("Lunch", True), ("Dinner", False), ("Supper", True)):
            self.sheet.open()
            self.turn(on)
            self.sheet.close()
            self.bills.save(name)
        everything = ["Supper", "Dinner", "Lunch", "Breakfast"]
        self.bills.open()
        self.bills.expect_bills(*everything)

        self.restart()

        self.bills.open()
        self.bills.expect_bills(*everything)
        self.quit()
        self.assertEqual(self.store.descriptions(), everything)
        self.assertEqual(self.store.integrity(), "ok")

    def turn(self, on):
        """Turns the switch and waits for all that this says and stores."""
        self.mark()
        self.sheet.switch(CLOUD, on)
        pattern = re.escape(banner(word(on))) + ("" if on else f"{NOT_DELETED}.+\n")
        self.vexilo.until(lambda: re.search(pattern, self.said()), f"the program says {pattern!r}")
        # The store is rebuilt after the choice was stored, so that it is on the disk by now.
        self.assertEqual(self.home.cloud_values(), {"icloud_sync": word(on)})

    def mark(self):
        self._mark = len(self.vexilo.output())

    def said(self):
        """What the program has printed since the mark."""
        return self.vexilo.output()[self._mark:]


def word(on):
    return "true" if on else "false"


def banner(value):
    """What is printed whenever the store is opened."""
    return f"{LINE}\n--> Cloud? {value}\n{LINE}\n"
