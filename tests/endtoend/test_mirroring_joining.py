"""Switching mirroring on, where another device mirrors or will."""

from cloud_device import ON
from mirroring import MirroringTest
from settings_sheet import CLOUD


class Joining(MirroringTest):
    def test_the_choice_to_mirror_reaches_the_other_at_its_next_start(self):
        first, second = self.add_device(), self.add_device()
        self.start(first, second)
        self.save(first, "Breakfast")
        self.save(second, "Lunch")

        self.switch(first, True)
        self.expect_in_cloud("Breakfast")
        self.expect_shared_choice(True)
        self.restart(second)
        second.expect_choice(ON)
        self.restart(second)
        self.restart(first)

        self.expect_everywhere("Lunch", "Breakfast")
        for device in (first, second):
            self.look_at(device)
            device.sheet.open()
            device.sheet.expect_switch(CLOUD, True)

    def test_a_device_that_just_joined_shows_the_bills_of_others_after_a_restart(self):
        self.start_mirrored("Breakfast")
        second = self.add_device()
        self.start(second)
        self.save(second, "Lunch")

        self.switch(second, True)
        self.expect_in_cloud("Lunch", "Breakfast")
        self.restart(second)

        second.bills.open()
        second.bills.expect_bills("Lunch", "Breakfast")
