"""Deleting saved bills: the current one by its key, the old ones, all."""

import calendar
import datetime

import screen
from saved_bills import DELETE_ALL, DELETE_OLD, NONE_YET, SavedBillsTest
from tree import Role

DAYTIME = datetime.timedelta(minutes=10)


def six_months_before(now):
    """The same time of day in the calendar, or of the month's last day where it is shorter."""
    year, month = divmod(now.year * 12 + now.month - 1 - 6, 12)
    last = calendar.monthrange(year, month + 1)[1]
    return now.replace(year=year, month=month + 1, day=min(now.day, last))


class DeletingOne(SavedBillsTest):
    def test_the_delete_key_deletes_the_current_row(self):
        self.open_with("Breakfast", "Lunch", "Dinner")
        self.bills.expect_current("Dinner")
        screen.press_keys("Down")
        self.bills.expect_current("Lunch")

        screen.press_keys("Delete")

        self.bills.expect_bills("Dinner", "Breakfast")
        self.expect_stored("Dinner", "Breakfast")

    def test_the_keyboard_goes_to_the_row_that_moves_up(self):
        self.open_with("Breakfast", "Lunch", "Dinner")
        self.bills.expect_current("Dinner")

        screen.press_keys("Delete")
        self.bills.expect_bills("Lunch", "Breakfast")
        self.bills.expect_current("Lunch")
        screen.press_keys("Delete")

        self.bills.expect_bills("Breakfast")
        self.bills.expect_current("Breakfast")

    def test_the_last_row_can_be_deleted_and_then_nothing_more(self):
        self.open_with("Lunch")

        screen.press_keys("Delete")
        self.vexilo.expect(Role.LABEL, NONE_YET)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Done")  # Return would close the sheet
        screen.press_keys("Delete", "F2", "Down", "End")

        self.bills.close()
        self.assertEqual(self.store.bills(), [])

    def test_a_deleted_bill_does_not_come_back(self):
        self.open_with("Breakfast", "Lunch")
        screen.press_keys("Delete")
        self.bills.expect_bills("Breakfast")
        self.bills.close()
        self.restart()

        self.bills.open()

        self.bills.expect_bills("Breakfast")
        self.quit_bills()
        self.assertEqual(self.store.integrity(), "ok")

    def quit_bills(self):
        self.bills.close()
        self.quit()


class DeletingOld(SavedBillsTest):
    def test_bills_from_before_the_cut_off_go_and_later_ones_stay(self):
        cut_off = six_months_before(datetime.datetime.now())
        self.start_with("Ancient", "Just old", "Just young", "Of today")
        self.quit()
        self.store.date("Ancient", datetime.datetime(2001, 1, 1))
        self.store.date("Just old", cut_off - DAYTIME)
        self.store.date("Just young", cut_off + DAYTIME)
        self.start()
        self.bills.open()
        self.bills.expect_bills("Of today", "Just young", "Just old", "Ancient")

        self.bills.delete_old()

        self.bills.expect_bills("Of today", "Just young")
        self.expect_stored("Of today", "Just young")

    def test_cancel_and_escape_delete_nothing(self):
        self.start_with("Ancient", "Of today")
        self.quit()
        self.store.date("Ancient", datetime.datetime(2001, 1, 1))
        self.start()
        self.bills.open()

        self.bills.confirm("Delete old", DELETE_OLD, "Cancel")
        self.bills.ask("Delete old", DELETE_OLD)
        self.press_escape_in(DELETE_OLD)

        self.bills.expect_bills("Of today", "Ancient")
        self.expect_stored("Of today", "Ancient")

    def test_without_bills_nothing_happens(self):
        self.start()
        self.bills.open()

        self.bills.delete_old()
        self.bills.delete_all()

        self.vexilo.expect(Role.LABEL, NONE_YET)
        self.bills.close()
        self.quit()

    def test_nothing_is_deleted_without_being_asked_for(self):
        self.start_with("Ancient")
        self.quit()
        self.store.date("Ancient", datetime.datetime(2001, 1, 1))
        self.start()
        self.bills.open()
        self.bills.expect_bills("Ancient")
        self.bills.close()
        self.quit()

        self.assertEqual(self.store.descriptions(), ["Ancient"])


class DeletingAll(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.open_with("Breakfast", "Lunch", "Dinner")

    def test_the_list_is_empty_at_once(self):
        self.bills.delete_all()

        self.bills.expect_bills()
        self.vexilo.expect(Role.LABEL, NONE_YET)
        self.assertEqual(self.store.bills(), [])

    def test_cancel_escape_and_return_delete_nothing(self):
        self.bills.confirm("Delete all", DELETE_ALL, "Cancel")
        self.bills.ask("Delete all", DELETE_ALL)
        self.press_escape_in(DELETE_ALL)
        self.bills.ask("Delete all", DELETE_ALL)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")
        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG, DELETE_ALL)

        self.bills.expect_bills("Dinner", "Lunch", "Breakfast")
        self.expect_stored("Dinner", "Lunch", "Breakfast")

    def test_bills_can_be_saved_again_afterwards(self):
        self.bills.delete_all()
        self.bills.close()

        self.bills.save("Supper")
        self.bills.open()

        self.bills.expect_bills("Supper")
        self.bills.close()
        self.quit()
        self.assertEqual(self.store.integrity(), "ok")
