"""Results are spoken when they have changed: once, and only what came of it."""

import screen
import tree
from announcements import Announcements
from saved_bills import USE, SavedBillsTest
from settings_sheet import CURRENCY, SettingsSheet
from tree import Role

MORE = (Role.PUSH_BUTTON, "More people")
EVERYONE = (Role.CHECK_BOX, "Everyone pays the tip")


class SpokenResults(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.home.write_preferences(bill="0", people="2", service="1")
        self.announcements = self.enterContext(Announcements())
        self.start()

    def await_heard(self, text):
        self.vexilo.until(lambda: text in self.announcements.heard, f"{text!r} is spoken")

    def expect_heard(self, *texts):
        """Waits for the last of these and finds that there was nothing else."""
        self.await_heard(texts[-1])
        self.assertEqual(self.announcements.heard, list(texts))

    def test_of_what_is_typed_only_the_outcome_is_spoken_and_nothing_of_the_start(self):
        self.vexilo.type_bill(keys := "1234.50")
        self.await_heard(first := "TOTAL $1,296.22; Tip $61.72; Share per person $648.11")

        # Whatever else was to be spoken of the first change would be spoken before this.
        self.vexilo.set_bill("200")
        self.await_heard(second := "TOTAL $210.00; Tip $10.00; Share per person $105.00")

        self.assertEqual(self.announcements.heard[-2:], [first, second])
        # A machine that stalls between two keys has a part of the amount spoken, too.
        self.assertLess(len(self.announcements.heard), len(keys))
        self.assertNotIn("TOTAL $0.00; Tip $0.00; Share per person $0.00", self.announcements.heard)

    def test_people_are_spoken_with_what_changes_by_them(self):
        self.vexilo.set_bill("90")
        self.expect_heard(first := "TOTAL $94.50; Tip $4.50; Share per person $47.25")
        self.go_to(MORE)

        screen.press_keys("space")
        self.vexilo.expect_people(3)

        self.expect_heard(first, "People 3; Share per person $31.50")

    def test_people_are_spoken_where_no_result_changes(self):
        self.go_to(MORE)

        screen.press_keys("space")

        self.expect_heard("People 3")

    def test_what_has_changed_back_is_not_spoken(self):
        self.vexilo.set_bill("90")
        self.expect_heard(first := "TOTAL $94.50; Tip $4.50; Share per person $47.25")
        self.go_to(EVERYONE)

        screen.press_keys("space", "space")
        self.go_to(MORE)
        screen.press_keys("space")

        self.expect_heard(first, "People 3; Share per person $31.50")

    def test_a_text_that_is_no_amount_is_spoken_as_that_and_not_as_a_result(self):
        self.vexilo.set_bill("5x")
        self.await_heard("Not an amount")

        self.vexilo.set_bill("60")

        self.await_heard(last := "TOTAL $63.00; Tip $3.00; Share per person $31.50")
        self.assertEqual([text for text in self.announcements.heard if "Share" in text],
                         [last])

    def test_what_was_spoken_is_gone_once_it_is_out_of_date(self):
        self.vexilo.set_bill("90")
        self.expect_heard(first := "TOTAL $94.50; Tip $4.50; Share per person $47.25")
        self.vexilo.expect(Role.NOTIFICATION, first)

        SettingsSheet(self.vexilo).open()
        self.vexilo.expect_none(Role.NOTIFICATION)

    def test_what_the_settings_change_is_spoken_when_they_are_closed(self):
        sheet = SettingsSheet(self.vexilo)
        sheet.open()
        sheet.switch(CURRENCY, False)
        self.vexilo.until(lambda: self.vexilo.figures()[0] == "TOTAL 0", "the amounts are bare")
        self.assertEqual(self.announcements.heard, [])

        sheet.close()

        self.expect_heard("TOTAL 0; Tip 0; Share per person 0")

    def test_the_bill_that_is_used_is_spoken_when_the_list_is_closed(self):
        self.vexilo.set_bill("90")
        self.expect_heard(first := "TOTAL $94.50; Tip $4.50; Share per person $47.25")
        self.bills.save("Lunch")
        self.vexilo.set_bill("60")
        self.expect_heard(first, second := "TOTAL $63.00; Tip $3.00; Share per person $31.50")

        self.bills.open()
        self.bills.choose_first()
        self.bills.confirm("Use", USE, "Use this bill")
        self.bills.expect_closed()

        self.vexilo.until(lambda: len(self.announcements.heard) == 3, "the bill is spoken")
        self.assertEqual(self.announcements.heard, [first, second, first])

    def test_the_announcement_has_a_name_and_no_stop_of_the_keyboard(self):
        self.vexilo.set_bill("90")
        self.expect_heard("TOTAL $94.50; Tip $4.50; Share per person $47.25")

        spoken = self.vexilo.find(Role.NOTIFICATION)

        self.assertEqual(tree.name_of(spoken), self.announcements.heard[0])
        self.assertFalse(tree.has(spoken, tree.State.FOCUSABLE))
        self.assertEqual(tree.actions_of(spoken), [])

    def go_to(self, target):
        tree.focus(self.vexilo.expect(*target))
        self.vexilo.expect_focus(*target)
