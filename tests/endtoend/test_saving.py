"""Saving the bill on the calculator under a description."""

import screen
import tree
from saved_bills import SAVE, TOO_LONG, SavedBillsTest
from tree import Role

LONGEST = 4096  # bytes
FOREIGN = "Früh­stück 早餐 ארוחה 🍕"


class Asking(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.start()

    def test_the_dialog_says_what_an_empty_description_means(self):
        dialog = self.bills.ask_to_save()

        self.vexilo.expect(Role.LABEL, "Leave blank to use 'Bill'")
        names = [tree.name_of(node) for node in tree.find_all(dialog, Role.PUSH_BUTTON)]
        self.assertEqual(sorted(names), ["Cancel", "Save"])
        self.vexilo.expect_focus(Role.TEXT, "Description")

    def test_the_field_is_empty_each_time_it_opens(self):
        for answer in ("Save", "Cancel"):
            dialog = self.bills.ask_to_save()
            self.bills.expect_description("")
            self.bills.describe_bill("Lunch")
            self.bills.answer(answer, dialog)

        self.bills.ask_to_save()

        self.bills.expect_description("")

    def test_cancel_and_escape_save_nothing(self):
        dialog = self.bills.ask_to_save()
        self.bills.describe_bill("Lunch")
        self.bills.answer("Cancel", dialog)
        self.bills.ask_to_save()
        self.bills.describe_bill("Lunch")
        self.press_escape_in(SAVE)

        self.assertEqual(self.store.bills(), [])
        self.assertEqual(self.vexilo.bill_text(), "100")

    def test_a_bill_is_saved_by_keyboard_alone(self):
        screen.press_keys("ctrl+s")
        self.vexilo.expect_focus(Role.TEXT, "Description")
        screen.type_text("Lunch with Ann")
        self.bills.expect_description("Lunch with Ann")

        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG, SAVE)

        self.assertEqual(self.store.descriptions(), ["Lunch with Ann"])
        self.vexilo.expect_focus(Role.TEXT, "Bill to Split")

    def test_the_tab_key_reaches_the_field_and_both_buttons(self):
        self.bills.ask_to_save()
        self.vexilo.expect_focus(Role.TEXT, "Description")

        for role, name in ((Role.PUSH_BUTTON, "Cancel"), (Role.PUSH_BUTTON, "Save"),
                           (Role.TEXT, "Description")):
            screen.press_keys("Tab")
            self.vexilo.expect_focus(role, name)

    def test_a_bill_can_be_saved_from_any_control(self):
        tree.focus(self.vexilo.expect(Role.CHECK_BOX, "Round up tip"))
        self.vexilo.expect_focus(Role.CHECK_BOX, "Round up tip")

        screen.press_keys("ctrl+s")
        self.vexilo.expect(Role.DIALOG, SAVE)
        self.press_escape_in(SAVE)

        self.vexilo.expect_focus(Role.CHECK_BOX, "Round up tip")


class Description(SavedBillsTest):
    def setUp(self):
        super().setUp()
        self.start()

    def test_an_empty_description_becomes_bill(self):
        self.bills.save("")

        self.assertEqual(self.store.descriptions(), ["Bill"])

    def test_blanks_are_a_description(self):
        self.bills.save("  ")

        self.assertEqual(self.store.descriptions(), ["  "])

    def test_a_description_of_any_script_is_kept(self):
        self.bills.save(FOREIGN)

        self.assertEqual(self.store.descriptions(), [FOREIGN])

    def test_the_longest_description_is_kept(self):
        self.bills.save("é" * (LONGEST // 2))

        self.assertEqual(self.store.descriptions(), ["é" * (LONGEST // 2)])

    def test_a_longer_description_is_refused_with_a_notice(self):
        dialog = self.bills.ask_to_save()
        self.bills.describe_bill("Lunch")

        tree.set_text(self.bills.description_field, "é" * (LONGEST // 2) + "x")
        self.vexilo.expect(Role.NOTIFICATION, TOO_LONG)
        self.bills.expect_description("Lunch")
        self.bills.answer("Save", dialog)

        self.assertEqual(self.store.descriptions(), ["Lunch"])

    def test_every_key_stroke_too_many_is_refused(self):
        self.bills.ask_to_save()
        self.bills.describe_bill("x" * LONGEST)

        screen.press_keys("End", "y", "z")
        self.vexilo.expect(Role.NOTIFICATION, TOO_LONG)
        self.bills.expect_description("x" * LONGEST)
        screen.press_keys("BackSpace", "z")

        self.vexilo.expect_none(Role.NOTIFICATION, TOO_LONG)
        self.bills.expect_description("x" * (LONGEST - 1) + "z")

    def test_the_notice_goes_with_the_next_description_that_fits(self):
        self.bills.ask_to_save()
        tree.set_text(self.bills.description_field, "x" * (LONGEST + 1))
        self.vexilo.expect(Role.NOTIFICATION, TOO_LONG)

        self.bills.describe_bill("Lunch")

        self.vexilo.expect_none(Role.NOTIFICATION, TOO_LONG)


class Record(SavedBillsTest):
    def test_inputs_are_stored_raw_beside_the_results(self):
        self.home.write_preferences(bill="10.019", people="3", service="2",
                                    tipFromEveryone="true", roundTip="true", roundShare="true")
        self.start()
        self.vexilo.expect_figures("TOTAL $15.00", "Tip (1.00 x 3) $3.00",
                                   "Share per person $5.00")

        self.bills.save("Lunch")

        expected = {"bill": 10.019, "people": 3, "service": 2, "everyone": 1, "roundtip": 1,
                    "roundshare": 1, "total": 15.0, "tip": 3.0, "share": 5.0, "ref": "Lunch"}
        (record,) = self.store.bills()
        self.assertEqual(record | expected, record)

    def test_saving_twice_gives_two_records_that_differ_in_their_time_alone(self):
        self.start_with("Lunch", "Lunch")

        newer, older = self.store.bills()

        self.assertGreater(newer.pop("timestamp"), older.pop("timestamp"))
        self.assertNotEqual(newer.pop("_id"), older.pop("_id"))
        self.assertEqual(newer, older)

    def test_a_bill_with_nothing_in_it_can_be_saved(self):
        self.home.write_preferences()

        self.start_with("")

        (record,) = self.store.bills()
        self.assertEqual((record["bill"], record["total"], record["people"]), (0.0, 0.0, 2))
