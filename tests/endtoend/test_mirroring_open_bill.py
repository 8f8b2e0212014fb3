"""What another device does to a bill whose page, or a question about which, is open here."""

import tree
from mirroring import MirroringTest
from saved_bills import RENAME, USE
from tree import Role


class OpenBill(MirroringTest):
    def setUp(self):
        super().setUp()
        self.first, self.second = self.start_pair("Breakfast", "Lunch")
        self.second.bills.open()

    def test_the_page_follows_a_new_name(self):
        self.second.bills.choose("Lunch")

        self.rename_elsewhere("Lunch", "Brunch")

        self.second.bills.expect_page("Brunch")

    def test_the_page_closes_when_its_bill_is_deleted(self):
        self.second.bills.choose("Lunch")

        self.delete_elsewhere("Lunch")

        self.expect_in_list_and_everywhere("Breakfast")

    def test_the_later_name_is_the_one_that_is_given_here(self):
        self.second.bills.choose("Lunch")
        dialog = self.second.bills.ask_to_rename()
        self.second.bills.describe_bill("Dinner")
        self.rename_elsewhere("Lunch", "Brunch")

        self.second.bills.expect_description("Dinner")
        self.second.bills.answer(RENAME, dialog)

        self.look_at(self.second)
        self.expect_in_cloud("Dinner", "Breakfast")
        self.look_at(self.first)
        self.expect_everywhere("Dinner", "Breakfast")

    def test_a_name_for_a_bill_that_was_deleted_elsewhere_is_dropped(self):
        self.second.bills.choose("Lunch")
        dialog = self.second.bills.ask_to_rename()
        self.second.bills.describe_bill("Dinner")
        self.delete_elsewhere("Lunch")

        self.second.bills.answer(RENAME, dialog)

        self.expect_in_list_and_everywhere("Breakfast")

    def test_a_bill_that_was_deleted_elsewhere_cannot_be_used(self):
        self.second.vexilo.type_bill("7")
        self.second.bills.choose("Lunch")
        self.second.vexilo.set_bill("7")
        dialog = self.second.bills.ask("Use", USE)
        self.delete_elsewhere("Lunch")

        self.second.bills.answer("Use this bill", dialog)

        self.expect_in_list_and_everywhere("Breakfast")
        self.second.bills.close()
        self.second.vexilo.expect_bill_text("7")

    def test_a_bill_that_is_marked_and_deleted_elsewhere_is_marked_no_more(self):
        self.second.vexilo.press_button("Edit")
        tree.press(self.second.bills.row("Lunch"))
        self.second.bills.expect_marked("Lunch")
        self.delete_elsewhere("Lunch")

        self.second.vexilo.expect(Role.PUSH_BUTTON, "Delete 0")
        self.second.vexilo.press_button("Cancel")
        self.expect_in_list_and_everywhere("Breakfast")

    def expect_in_list_and_everywhere(self, *descriptions):
        self.second.bills.expect_no_page()
        self.second.bills.expect_bills(*descriptions)
        self.expect_everywhere(*descriptions)

    def rename_elsewhere(self, old, new):
        self.first.bills.open()
        self.first.bills.choose(old)
        self.first.bills.rename(new)
        self.look_at(self.first)
        self.expect_in_cloud(new, "Breakfast")
        self.look_at(self.second)
        self.second.expect_stored(new, "Breakfast")

    def delete_elsewhere(self, description):
        self.first.bills.open()
        self.first.bills.delete(description)
        self.look_at(self.first)
        self.await_cloud(self.cloud.count_deleted, "the deletion is in the cloud")
        self.look_at(self.second)
        self.second.expect_stored("Breakfast")
