"""Switching mirroring off, and on again, while another device mirrors, too."""

from cloud_device import OFF
from mirroring import MirroringTest
from settings_sheet import CLOUD, SHEET
from tree import Role

STAY = "The saved bills were deleted from the cloud on another device; they stay here"


class Leaving(MirroringTest):
    def setUp(self):
        super().setUp()
        self.first, self.second = self.start_pair("Breakfast", "Lunch")
        (self.epoch,) = self.cloud.epochs()

    def test_switching_off_empties_the_cloud_and_nothing_else(self):
        self.switch(self.first, False)
        self.expect_left()
        self.save(self.first, "Dinner")
        self.look_at(self.first, self.second)
        self.second.expect_said(STAY)
        self.save(self.second, "Supper")
        self.restart(self.second)
        self.second.expect_said(STAY)  # after it had a look at the cloud, and Supper to tell

        self.first.expect_stored("Dinner", "Lunch", "Breakfast")
        self.second.bills.open()
        self.second.bills.expect_bills("Supper", "Lunch", "Breakfast")
        self.first.terminate()
        self.second.terminate()
        self.assertEqual((self.cloud.epochs(), self.cloud.closed()), ([], [self.epoch]))

    def test_switching_on_again_brings_all_together(self):
        self.switch(self.first, False)
        self.expect_left()
        self.save(self.first, "Dinner")
        self.look_at(self.second)
        self.save(self.second, "Supper")

        self.switch(self.first, True)
        self.expect_in_cloud("Dinner", "Lunch", "Breakfast")
        self.restart(self.first)
        self.restart(self.second)
        self.expect_in_cloud("Supper", "Dinner", "Lunch", "Breakfast")
        self.look_at(self.first)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")
        self.assertNotEqual(self.cloud.epochs(), [self.epoch])

    def test_the_choice_to_leave_reaches_the_other_at_its_next_start(self):
        self.switch(self.first, False)
        self.expect_left()
        self.look_at(self.second)
        self.restart(self.second)
        self.second.expect_choice(OFF)

        self.restart(self.second)

        self.look_at(self.second)
        self.second.sheet.open()
        self.second.sheet.expect_switch(CLOUD, False)
        self.second.expect_stored("Lunch", "Breakfast")

    def test_opening_the_settings_does_not_undo_it(self):
        self.switch(self.first, False)
        self.expect_left()

        for _ in range(10):
            self.first.sheet.open()
            self.first.sheet.expect_switch(CLOUD, False)
            self.first.sheet.close()

        self.assertEqual(self.first.home.cloud_values(), {"icloud_sync": OFF})

    def test_opening_the_settings_elsewhere_does_not_undo_it(self):
        self.switch(self.first, False)
        self.expect_left()
        self.glance_at_settings(self.second)  # before it heard of anything
        self.look_at(self.second)
        self.second.expect_said(STAY)

        self.glance_at_settings(self.second)
        self.restart(self.second)
        self.second.expect_choice(OFF)
        self.restart(self.first)

        self.expect_left()
        self.assertEqual(self.first.home.cloud_values(), {"icloud_sync": OFF})

    def glance_at_settings(self, device):
        """Without the keyboard, which would have the device look at the cloud."""
        device.vexilo.press_button("Settings")
        device.vexilo.press_button("Done", within=device.vexilo.expect(Role.DIALOG, SHEET))
        device.sheet.expect_closed()

    def test_what_was_switched_off_offline_is_deleted_later(self):
        self.server.stop()
        self.switch(self.first, False)
        self.first.expect_said("deleting zone error ")
        self.restart(self.first)

        self.server.start()
        self.look_at(self.first)

        self.expect_left()
        self.look_at(self.second)
        self.second.expect_said(STAY)
        for device in (self.first, self.second):
            device.expect_stored("Lunch", "Breakfast")

    def test_off_and_on_again_offline_loses_nothing(self):
        self.server.stop()
        self.switch(self.first, False)
        self.save(self.first, "Dinner")
        self.switch(self.first, True)
        self.save(self.second, "Supper")

        self.server.start()
        self.look_at(self.first)
        self.await_cloud(lambda: "Dinner" in self.cloud.descriptions(), "the first has told all")
        self.restart(self.second)
        self.expect_in_cloud("Supper", "Dinner", "Lunch", "Breakfast")
        self.restart(self.first)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")

    def expect_left(self):
        """Waits until the cloud holds no bill any more, and the note that this was meant."""
        self.await_cloud(lambda: not self.cloud.epochs(), "the bills' folder is gone")
        self.assertEqual(self.cloud.closed(), [self.epoch])
        self.expect_shared_choice(False)
