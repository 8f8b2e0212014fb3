"""More devices than two, and more programs than devices."""

from mirroring import MirroringTest
from saved_bills import SavedBills


class Three(MirroringTest):
    def test_three_devices_come_to_the_same(self):
        first, second = self.start_pair("Breakfast")
        third = self.start_mirrored()
        third.expect_stored("Breakfast")

        for device, name in ((first, "Lunch"), (second, "Dinner"), (third, "Supper")):
            self.save(device, name)
        self.look_at(first, second, third)
        self.expect_in_cloud("Supper", "Dinner", "Lunch", "Breakfast")
        self.look_at(first, second, third)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")


class CopiedProfile(MirroringTest):
    def test_original_and_copy_are_two_devices(self):
        original = self.start_mirrored("Breakfast")
        original.terminate()
        copy = self.add_device()
        copy.home.copy_program_files(original.home)

        self.start(original, copy)
        self.save(original, "Lunch")
        self.save(copy, "Dinner")
        self.look_at(original, copy)
        self.expect_in_cloud("Dinner", "Lunch", "Breakfast")
        self.look_at(original)

        self.expect_everywhere("Dinner", "Lunch", "Breakfast")


class TwoProgramsInOneHome(MirroringTest):
    def test_they_mirror_each_bill_once(self):
        first, second = self.start_pair("Breakfast")
        copy = self.launch_beside(first)
        bills = SavedBills(copy)
        bills.open()
        bills.expect_bills("Breakfast")

        self.save(first, "Lunch")
        self.save(second, "Dinner")
        self.look_at(first, second)
        self.expect_in_cloud("Dinner", "Lunch", "Breakfast")
        self.look_at(first)
        bills.expect_bills("Dinner", "Lunch", "Breakfast")
        bills.close()
        bills.save("Supper")
        self.expect_in_cloud("Supper", "Dinner", "Lunch", "Breakfast")
        self.look_at(second)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")
        self.assertEqual(copy.terminate(), 0)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")

    def test_one_goes_on_with_it_when_the_other_ends(self):
        first, second = self.start_pair("Breakfast")
        copy = self.launch_beside(first)
        bills = SavedBills(copy)
        first.vexilo.kill()

        bills.save("Lunch")
        self.look(copy)
        self.expect_in_cloud("Lunch", "Breakfast")
        self.look_at(second)

        self.expect_everywhere("Lunch", "Breakfast")
        self.assertEqual(copy.terminate(), 0)
