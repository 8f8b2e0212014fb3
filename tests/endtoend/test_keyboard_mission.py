"""All that the program is for, from the first key to the last one, without a pointer."""

import screen
from saved_bills import RENAME, SAVE, SHEET, USE, SavedBillsTest
from settings_sheet import CURRENCY, SettingsSheet
from settings_sheet import SHEET as SETTINGS
from tree import Role

FIGURES = ("TOTAL $156.00", "Tip (12.00 x 3) $36.00", "Share per person $52.00")


class Mission(SavedBillsTest):
    def test_a_bill_is_split_saved_renamed_used_and_deleted_by_keys_alone(self):
        self.home.write_preferences()
        self.start()
        self.vexilo.expect_focus(Role.TEXT, "Bill to Split")

        self.split()
        self.save()
        self.rename()
        self.clear()
        self.use()
        self.delete()
        self.set()

        screen.press_keys("ctrl+q")
        self.assertEqual(self.vexilo.await_exit(), 0)
        self.assertEqual(self.store.integrity(), "ok")

    def tab_to(self, *stops):
        for role, name in stops:
            screen.press_keys("Tab")
            self.vexilo.expect_focus(role, name)

    def split(self):
        screen.type_text("120")
        self.tab_to((Role.PUSH_BUTTON, "Fewer people"), (Role.PUSH_BUTTON, "More people"))
        screen.press_keys("space", "space")
        self.vexilo.expect_people(4)
        screen.press_keys("shift+Tab", "Return")
        self.vexilo.expect_people(3)
        self.tab_to((Role.PUSH_BUTTON, "More people"), (Role.RADIO_BUTTON, "Good"))
        screen.press_keys("Right")
        self.vexilo.expect_service("Excellent")
        self.tab_to((Role.CHECK_BOX, "Everyone pays the tip"))
        screen.press_keys("space")
        self.tab_to((Role.CHECK_BOX, "Round up tip"), (Role.CHECK_BOX, "Round up share"))
        screen.press_keys("Return")
        self.vexilo.expect_checked(Role.CHECK_BOX, "Round up share")
        self.vexilo.expect_figures(*FIGURES)

    def save(self):
        screen.press_keys("ctrl+s")
        self.vexilo.expect(Role.DIALOG, SAVE)
        self.vexilo.expect_focus(Role.TEXT, "Description")
        screen.type_text("Lunch")
        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG, SAVE)
        bill, = self.store.bills()
        self.assertEqual((bill["ref"], bill["bill"], bill["people"], bill["service"]),
                         ("Lunch", 120.0, 3, 2))
        self.assertEqual((bill["everyone"], bill["roundtip"], bill["roundshare"]), (1, 0, 1))

    def rename(self):
        self.open_list("Lunch ")
        screen.press_keys("Return")
        self.bills.expect_page("Lunch")
        screen.press_keys("F2")
        self.vexilo.expect(Role.DIALOG, RENAME)
        screen.type_text("Supper")
        screen.press_keys("Return")
        self.vexilo.expect_none(Role.DIALOG, RENAME)
        self.bills.expect_page("Supper")
        self.expect_stored("Supper")
        screen.press_keys("alt+Left")
        self.bills.expect_no_page()
        self.press_escape_in(SHEET)

    def clear(self):
        self.vexilo.expect_focus(Role.CHECK_BOX, "Round up share")
        self.tab_to((Role.PUSH_BUTTON, "Settings"), (Role.PUSH_BUTTON, "Clear"))
        screen.press_keys("Return")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")
        screen.press_keys("Tab", "Return")
        self.vexilo.expect_none(Role.DIALOG)
        self.vexilo.expect_figures("TOTAL $0.00", "Tip $0.00", "Share per person $0.00")
        self.vexilo.expect_people(2)

    def use(self):
        self.open_list("Supper ")
        screen.press_keys("Return")
        self.bills.expect_page("Supper")
        self.tab_to((Role.PUSH_BUTTON, RENAME), (Role.PUSH_BUTTON, "Use"))
        screen.press_keys("space")
        self.vexilo.expect(Role.DIALOG, USE)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Cancel")
        screen.press_keys("Tab", "space")
        self.bills.expect_closed()
        self.vexilo.expect_people(3)
        self.vexilo.expect_service("Excellent")
        self.vexilo.expect_figures(*FIGURES)

    def delete(self):
        self.open_list("Supper ")
        screen.press_keys("Delete")
        self.expect_stored()
        self.vexilo.expect_none(Role.LIST_ITEM)
        self.press_escape_in(SHEET)

    def open_list(self, current):
        screen.press_keys("ctrl+h")
        self.bills.expect_open()
        self.vexilo.until(lambda: (self.vexilo.focused() or (None, ""))[1].startswith(current),
                          f"the row of {current!r} has the keyboard")

    def set(self):
        sheet = SettingsSheet(self.vexilo)
        screen.press_keys("ctrl+comma")
        sheet.expect_open()
        screen.press_keys("Tab", "Tab")
        sheet.expect_focus(Role.CHECK_BOX, CURRENCY)
        screen.press_keys("space")
        sheet.expect_switch(CURRENCY, False)
        screen.press_keys("Tab", "Tab", "Tab")
        sheet.expect_focus(Role.SLIDER, "Excellent")
        screen.press_keys("Right", "Right")
        sheet.expect_percentages("5", "12")
        screen.press_keys("Tab")
        sheet.expect_focus(Role.RADIO_BUTTON, "System")
        screen.press_keys("Down")
        sheet.expect_theme("Dark")
        self.press_escape_in(SETTINGS)
        self.vexilo.expect_figures("TOTAL 165", "Tip (14.40 x 3) 43.2", "Share per person 55")
        self.vexilo.until(
            lambda: {"showCurrency": "false", "serviceExcellent": "12", "theme": "2"}.items()
            <= self.home.preferences().items(), "the settings are stored")
