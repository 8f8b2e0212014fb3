"""Two copies of the program that share one home, each on a session bus of its own."""

import tree
from saved_bills import NONE_YET, SavedBills, SavedBillsTest
from tree import Role


class TwoCopies(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.start_with("Breakfast")
        self.first, self.first_bills = self.vexilo, self.bills
        session = self.open_session(self.home, "second-session")
        self.second = self.launch(environment=session.program_environment())
        self.second_bills = SavedBills(self.second)

    def test_what_either_saves_both_show(self):
        self.second_bills.save("Lunch")
        self.first_bills.save("Dinner")
        self.second_bills.save("Supper")

        for bills in (self.first_bills, self.second_bills):
            bills.open()
            bills.expect_bills("Supper", "Dinner", "Lunch", "Breakfast")
        self.end_both("Supper", "Dinner", "Lunch", "Breakfast")

    def test_a_list_that_is_open_shows_the_others_bills_when_it_is_opened_again(self):
        self.first_bills.open()
        self.second_bills.save("Lunch")
        self.first_bills.close()

        self.first_bills.open()

        self.first_bills.expect_bills("Lunch", "Breakfast")
        self.end_both("Lunch", "Breakfast")

    def test_renaming_a_bill_that_the_other_has_deleted_is_ignored(self):
        self.first_bills.save("Lunch")
        self.first_bills.open()
        self.first_bills.choose("Lunch")
        dialog = self.first_bills.ask_to_rename()
        self.first_bills.describe_bill("Supper")
        self.delete_in_second("Lunch")

        self.first_bills.answer("Rename", dialog)

        self.assertTrue(self.first.is_running())
        self.expect_stored("Breakfast")
        self.go_home_in_first()
        self.first_bills.save("Dinner")
        self.first_bills.open()
        self.first_bills.expect_bills("Dinner", "Breakfast")
        self.end_both("Dinner", "Breakfast")

    def test_after_a_lost_renaming_other_bills_can_be_deleted(self):
        self.first_bills.save("Lunch")
        self.first_bills.open()
        self.first_bills.choose("Lunch")
        self.delete_in_second("Lunch")
        self.first_bills.rename("Supper")
        self.go_home_in_first()
        self.first_bills.open()

        self.delete_in("Breakfast", self.first_bills)

        self.end_both()

    def test_a_bill_that_the_other_has_deleted_can_be_deleted(self):
        self.first_bills.open()
        self.first_bills.expect_bills("Breakfast")
        self.delete_in_second("Breakfast")

        self.delete_in("Breakfast", self.first_bills)

        self.first.expect(Role.LABEL, NONE_YET)
        self.end_both()

    def test_a_bill_that_the_other_has_deleted_can_be_looked_at(self):
        self.first_bills.open()
        self.first_bills.expect_bills("Breakfast")
        self.delete_in_second("Breakfast")

        tree.press(self.first_bills.row("Breakfast"))
        self.go_home_in_first()

        self.first_bills.save("Lunch")
        self.end_both("Lunch")

    def test_what_one_deletes_at_once_goes_from_the_other_too(self):
        self.first_bills.open()
        self.first_bills.expect_bills("Breakfast")
        self.second_bills.open()
        self.second_bills.delete_all()

        self.first_bills.delete_all()

        self.first.expect(Role.LABEL, NONE_YET)
        self.end_both()

    def delete_in_second(self, description):
        self.second_bills.open()
        self.delete_in(description, self.second_bills)

    def delete_in(self, description, bills):
        bills.delete(description)
        self.assertNotIn(description, self.store.descriptions())

    def go_home_in_first(self):
        """Back to the calculator from the page, or from the list where the page closed itself."""
        back = self.first.find(Role.PUSH_BUTTON, "Back")
        if back:
            self.first_bills.back()
        self.first_bills.close()

    def end_both(self, *descriptions):
        """Ends both copies and looks at what they leave."""
        self.assertEqual((self.first.terminate(), self.second.terminate()), (0, 0))
        self.assertEqual(self.store.descriptions(), list(descriptions))
        self.assertEqual(self.store.integrity(), "ok")
