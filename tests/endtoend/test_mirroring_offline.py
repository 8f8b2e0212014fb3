"""Devices that mirror, while the server cannot be reached for a time."""

from mirroring import MirroringTest


class Offline(MirroringTest):
    def setUp(self):
        super().setUp()
        self.first, self.second = self.start_pair("Breakfast", "Lunch")
        self.server.stop()

    def test_what_both_saved_meanwhile_is_everywhere_afterwards(self):
        self.save(self.first, "Dinner")
        self.save(self.second, "Supper")
        self.first.expect_stored("Dinner", "Lunch", "Breakfast")

        self.come_back(lambda: "Dinner" in self.cloud.descriptions())
        self.expect_in_cloud("Supper", "Dinner", "Lunch", "Breakfast")
        self.look_at(self.first)

        self.expect_everywhere("Supper", "Dinner", "Lunch", "Breakfast")

    def test_the_later_of_two_new_names_wins_on_both(self):
        for device, name in ((self.second, "Tea"), (self.first, "Brunch")):
            self.rename(device, "Lunch", name)

        self.come_back(lambda: "Brunch" in self.cloud.descriptions())

        self.expect_everywhere("Brunch", "Breakfast")
        for device in (self.first, self.second):
            device.bills.expect_page("Brunch")

    def test_a_bill_that_one_deleted_and_the_other_renamed_is_gone(self):
        self.first.bills.open()
        self.first.bills.delete("Lunch")
        self.rename(self.second, "Lunch", "Brunch")

        self.come_back(self.cloud.count_deleted)

        self.expect_everywhere("Breakfast")
        self.second.bills.expect_no_page()

    def test_a_start_without_the_server_works_as_ever(self):
        self.first.terminate()
        self.start(self.first)
        self.save(self.first, "Dinner")
        self.restart(self.first)
        self.first.expect_stored("Dinner", "Lunch", "Breakfast")

        self.come_back(lambda: "Dinner" in self.cloud.descriptions())

        self.expect_everywhere("Dinner", "Lunch", "Breakfast")

    def come_back(self, heard):
        """The server is there again; the first tells its part, which can be heard, then the second.

        Either may try by itself meanwhile, so that no order of these two is certain.
        """
        self.server.start()
        self.look_at(self.first)
        self.await_cloud(heard, "the first has told what it did")
        self.look_at(self.second)

    def rename(self, device, old, new):
        device.bills.open()
        device.bills.choose(old)
        device.bills.rename(new)


class SilentServer(MirroringTest):
    def test_neither_the_window_nor_the_end_waits_for_a_server_that_never_answers(self):
        device = self.start_mirrored("Breakfast")
        device.terminate()
        self.server.stop()

        with self.server.listen() as silent:
            self.start(device)
            with silent.accept()[0]:
                self.save(device, "Lunch")
                device.bills.open()
                device.bills.expect_bills("Lunch", "Breakfast")
                device.terminate()
        self.server.start()
        self.start(device)

        self.expect_everywhere("Lunch", "Breakfast")


class WipedStorage(MirroringTest):
    def test_bills_stay_where_the_storage_lost_them(self):
        first, second = self.start_pair("Breakfast")
        self.cloud.wipe()

        self.look_at(first, second)
        self.restart(first)
        self.restart(second)
        self.look_at(first, second)

        first.expect_stored("Breakfast")
        second.expect_stored("Breakfast")
