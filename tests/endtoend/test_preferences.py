"""What the program keeps from one start to the next."""


import screen
from case import EndToEndTest
from home import FIRST_RUN_PREFERENCES, MARKER
from tree import Role

EVERYONE = "Everyone pays the tip"


class FirstLaunch(EndToEndTest):
    def test_all_preferences_are_written_with_their_first_values(self):
        vexilo = self.launch()

        expected = FIRST_RUN_PREFERENCES | MARKER
        vexilo.until(lambda: self.home.preferences() == expected,
                     "the file holds the first-run preferences and nothing else")

    def test_the_window_shows_an_empty_bill_for_two(self):
        vexilo = self.launch()

        vexilo.expect_bill_text("0")
        vexilo.expect_people(2)
        vexilo.expect_figures("TOTAL $0.00", "Tip $0.00", "Share per person $0.00")
        self.assertEqual(vexilo.checked(Role.RADIO_BUTTON), ["Good"])
        self.assertEqual(vexilo.checked(Role.CHECK_BOX), [])


class Restart(EndToEndTest):
    def test_the_inputs_are_found_again_after_quitting(self):
        vexilo = self.launch()
        self.enter_bill(vexilo)

        self.assertEqual(vexilo.quit(), 0)

        self.expect_bill(self.launch())

    def test_a_key_stroke_just_before_quitting_is_not_lost(self):
        vexilo = self.launch()
        vexilo.focus_bill()

        screen.press_keys("4", "2")
        self.assertEqual(vexilo.quit(), 0)

        self.launch().expect_bill_text("42")

    def test_the_inputs_are_found_again_after_a_termination(self):
        vexilo = self.launch()
        self.enter_bill(vexilo)
        stored = {"bill": "80", "people": "3", "service": "2", "tipFromEveryone": "true"}
        vexilo.until(lambda: stored.items() <= self.home.preferences().items(),
                     "the inputs are in the file while the program runs")

        self.assertEqual(vexilo.terminate(), 0)

        self.expect_bill(self.launch())

    def test_a_key_stroke_just_before_a_termination_is_not_lost(self):
        vexilo = self.launch()

        vexilo.type_bill("42")
        vexilo.expect_figures("TOTAL $44.10", "Tip $2.10", "Share per person $22.05")
        self.assertEqual(vexilo.terminate(), 0)

        self.launch().expect_bill_text("42")

    def test_a_window_closed_by_the_desktop_ends_the_program(self):
        vexilo = self.launch()
        self.enter_bill(vexilo)

        screen.press_keys("alt+F4")  # heeded by the window manager
        vexilo.until(lambda: not vexilo.is_running(), "the program ends")

        self.expect_bill(self.launch())

    def enter_bill(self, vexilo):
        vexilo.type_bill("80")
        vexilo.expect_bill_text("80")
        vexilo.press_button("More people")
        vexilo.choose_service("Excellent")
        vexilo.switch(EVERYONE)
        vexilo.expect_figures("TOTAL $104.00", "Tip (8.00 x 3) $24.00", "Share per person $34.66")

    def expect_bill(self, vexilo):
        vexilo.expect_bill_text("80")
        vexilo.expect_people(3)
        vexilo.expect_figures("TOTAL $104.00", "Tip (8.00 x 3) $24.00", "Share per person $34.66")
        self.assertEqual(vexilo.checked(Role.RADIO_BUTTON), ["Excellent"])
        self.assertEqual(vexilo.checked(Role.CHECK_BOX), [EVERYONE])


class StoredPreferences(EndToEndTest):
    def test_less_than_one_person_is_raised_to_one(self):
        self.home.write_preferences(bill="10", people="0")

        vexilo = self.launch()

        vexilo.expect_people(1)
        vexilo.expect_figures("TOTAL $10.50", "Tip $0.50", "Share per person $10.50")
        vexilo.until(lambda: self.home.preferences()["people"] == "1", "one person is stored")

    def test_the_stored_percentages_count(self):
        self.home.write_preferences(bill="100", serviceGood="12", serviceExcellent="20")
        vexilo = self.launch()

        vexilo.expect_figures("TOTAL $112.00", "Tip $12.00", "Share per person $56.00")
        vexilo.choose_service("Excellent")

        vexilo.expect_figures("TOTAL $120.00", "Tip $20.00", "Share per person $60.00")

    def test_a_service_outside_the_choices_is_none_of_them_and_gives_no_tip(self):
        self.home.write_preferences(bill="100", service="7")

        vexilo = self.launch()

        vexilo.expect_figures("TOTAL $100.00", "Tip $0.00", "Share per person $50.00")
        self.assertEqual(vexilo.checked(Role.RADIO_BUTTON), [])

    def test_amounts_without_currency_are_plain_numbers(self):
        self.home.write_preferences(bill="1234.5", service="0", showCurrency="false")

        vexilo = self.launch()

        vexilo.expect_figures("TOTAL 1,234.5", "Tip 0", "Share per person 617.25")

    def test_any_marker_but_zero_means_that_preferences_are_there(self):
        self.home.write_preferences(havePrefs="1", bill="10", service="0")

        vexilo = self.launch()

        vexilo.expect_figures("TOTAL $10.00", "Tip $0.00", "Share per person $5.00")

    def test_without_the_marker_the_program_starts_anew(self):
        self.home.write_preferences(havePrefs="0", bill="10", people="7", service="0")

        vexilo = self.launch()

        vexilo.expect_people(2)
        vexilo.until(lambda: self.home.preferences() == FIRST_RUN_PREFERENCES | MARKER,
                     "the file holds the first-run preferences")
