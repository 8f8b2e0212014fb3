"""Two devices that mirror the saved bills while both are used."""

from mirroring import MirroringTest
from saved_bills import BILL, NONE_YET
from tree import Role


class Mirroring(MirroringTest):
    def setUp(self):
        super().setUp()
        self.first, self.second = self.start_pair("Breakfast")
        self.second.bills.open()
        self.second.bills.expect_bills("Breakfast")

    def test_a_bill_that_one_saves_appears_in_the_open_list_of_the_other(self):
        self.save(self.first, "Lunch")
        self.expect_in_cloud("Lunch", "Breakfast")

        self.look_at(self.second)

        self.second.bills.expect_bills("Lunch", "Breakfast")
        self.second.expect_stored("Lunch", "Breakfast")

    def test_every_field_arrives_as_it_was_saved(self):
        self.first.vexilo.set_bill("1234.56")
        self.first.vexilo.switch("Everyone pays the tip")
        self.first.vexilo.switch("Round up share")
        name = "Zwölf – 十二 \U0001f35d"
        self.save(self.first, name)
        self.look_at(self.first)
        self.expect_in_cloud(name, "Breakfast")

        self.look_at(self.second)

        self.second.bills.choose(name)
        self.assertEqual(bills_of(self.second), bills_of(self.first))
        self.assertNotEqual(self.first.store.bills()[0]["bill"], float(BILL["bill"]))

    def test_a_new_name_appears_in_the_open_list_of_the_other(self):
        self.rename(self.first, "Breakfast", "Brunch")
        self.expect_in_cloud("Brunch")

        self.look_at(self.second)

        self.second.bills.expect_bills("Brunch")
        self.second.expect_stored("Brunch")

    def test_a_bill_that_one_deletes_disappears_from_the_open_list_of_the_other(self):
        self.first.bills.open()
        self.first.bills.delete("Breakfast")
        self.look_at(self.first)
        self.await_cloud(lambda: self.cloud.count_deleted() == 1, "the deletion is in the cloud")
        self.assertEqual(self.cloud.descriptions(), [])

        self.look_at(self.second)

        self.second.vexilo.expect(Role.LABEL, NONE_YET)
        self.second.expect_stored()

    def test_deleting_all_on_one_empties_the_other(self):
        self.save(self.first, "Lunch", "Dinner")
        self.look_at(self.first)
        self.expect_in_cloud("Dinner", "Lunch", "Breakfast")
        self.look_at(self.second)
        self.second.bills.expect_bills("Dinner", "Lunch", "Breakfast")

        self.second.bills.delete_all()
        self.look_at(self.second)
        self.await_cloud(lambda: self.cloud.count_deleted() == 3, "the deletions are in the cloud")
        self.look_at(self.first)

        self.expect_everywhere()

    def test_looking_again_where_nothing_changed_costs_one_request(self):
        for _ in range(3):
            before = len(self.server.requests())
            self.look_at(self.second)
            self.await_cloud(lambda: len(self.server.requests()) > before, "it asked")
        self.second.terminate()

        (epoch,) = self.cloud.epochs()
        requests = self.server.requests()
        fetch = max(at for at, request in enumerate(requests) if request.method == "GET")
        after = requests[fetch + 1:]
        self.assertEqual({request.method for request in after}, {"PROPFIND"})
        self.assertTrue(all(epoch in request.path for request in after), after)
        self.assertLessEqual(len(after), 4)  # the window got the keyboard at the start, too

    def rename(self, device, old, new):
        device.bills.open()
        device.bills.choose(old)
        device.bills.rename(new)


def bills_of(device):
    """What the store holds of each bill, but for what each store counts for itself."""
    return [{key: value for key, value in bill.items() if not key.startswith("_")}
            for bill in device.store.bills()]
