"""Amounts in the user's own notation, taken from the environment of the process."""

import screen
import tree
from case import EndToEndTest
from tree import Role

GERMAN = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "en"}
EURO = "\N{NO-BREAK SPACE}€"
THIN = "\N{NARROW NO-BREAK SPACE}"
GERMAN_FIGURES = (f"TOTAL 13,12{EURO}", f"Tip 0,62{EURO}", f"Share per person 6,56{EURO}")


class German(EndToEndTest):
    def test_a_point_is_read_as_the_decimal_mark(self):
        vexilo = self.launch(locale=GERMAN)

        vexilo.type_bill("12.50")

        vexilo.expect_figures(*GERMAN_FIGURES)
        vexilo.until(lambda: self.home.preferences().get("bill") == "12.5", "the bill is stored")

    def test_a_comma_is_read_as_the_decimal_mark(self):
        vexilo = self.launch(locale=GERMAN)

        vexilo.type_bill("12,50")

        vexilo.expect_figures(*GERMAN_FIGURES)

    def test_the_field_shows_a_comma_after_it_was_left(self):
        vexilo = self.launch(locale=GERMAN)
        vexilo.type_bill("12.50")
        vexilo.expect_bill_text("12.50")

        screen.press_keys("Tab")

        vexilo.expect_bill_text("12,5")

    def test_thousands_are_grouped_as_the_locale_does(self):
        self.home.write_preferences(bill="1234.5", service="0")

        vexilo = self.launch(locale=GERMAN)

        vexilo.expect_bill_text("1.234,5")
        vexilo.expect_figures(f"TOTAL 1.234,50{EURO}", f"Tip 0,00{EURO}",
                              f"Share per person 617,25{EURO}")

    def test_amounts_without_currency_are_the_same_everywhere(self):
        self.home.write_preferences(bill="1234.5", service="0", showCurrency="false")

        vexilo = self.launch(locale=GERMAN)

        vexilo.expect_figures("TOTAL 1,234.5", "Tip 0", "Share per person 617.25")


class OtherLocales(EndToEndTest):
    def test_french_amounts_have_narrow_blanks(self):
        self.home.write_preferences(bill="1234.5", service="0")

        vexilo = self.launch(locale={"LC_ALL": "fr_FR.UTF-8"})

        vexilo.expect_bill_text(f"1{THIN}234,5")
        vexilo.expect_figures(f"TOTAL 1{THIN}234,50{EURO}", f"Tip 0,00{EURO}",
                              f"Share per person 617,25{EURO}")

    def test_numbers_and_money_may_be_of_two_locales(self):
        locale = {"LANG": "C.UTF-8", "LC_NUMERIC": "de_DE.UTF-8", "LC_MONETARY": "en_US.UTF-8"}
        self.home.write_preferences(bill="12.5")

        vexilo = self.launch(locale=locale)

        vexilo.expect_bill_text("12,5")
        vexilo.expect_figures("TOTAL $13.12", "Tip $0.62", "Share per person $6.56")

    def test_without_any_locale_amounts_are_american(self):
        self.home.write_preferences(bill="12.5")

        vexilo = self.launch(locale={"LC_ALL": "C"})

        vexilo.expect_figures("TOTAL $13.12", "Tip $0.62", "Share per person $6.56")


class WritingDirection(EndToEndTest):
    def test_the_window_is_mirrored_for_a_right_to_left_language(self):
        left_to_right = self.places(self.launch())

        right_to_left = self.places(self.launch(locale={"LC_ALL": "he_IL.UTF-8"}))

        self.assertEqual(left_to_right, ["Fewer people", "More people"])
        self.assertEqual(right_to_left, ["More people", "Fewer people"])

    def test_the_layout_follows_the_language_and_not_the_numbers(self):
        mixed = {"LANG": "en_US.UTF-8", "LC_NUMERIC": "he_IL.UTF-8"}

        self.assertEqual(self.places(self.launch(locale=mixed)), ["Fewer people", "More people"])

    def test_arrows_move_the_service_the_way_they_point(self):
        for locale in ("en_US.UTF-8", "he_IL.UTF-8"):
            with self.subTest(locale):
                self.home.write_preferences()
                vexilo = self.launch(locale={"LC_ALL": locale})
                tree.focus(vexilo.expect(Role.RADIO_BUTTON, "Good"))
                before = self.place_of_choice(vexilo)

                screen.press_keys("Left")

                vexilo.until(lambda: self.place_of_choice(vexilo) < before,
                             "the choice moves to the left")
                vexilo.stop()

    def places(self, vexilo):
        """The two people buttons as they stand from left to right."""
        buttons = [vexilo.expect(Role.PUSH_BUTTON, name)
                   for name in ("Fewer people", "More people")]
        names = [tree.name_of(node)
                 for node in sorted(buttons, key=lambda node: tree.centre_of(node)[0])]
        vexilo.stop()
        return names

    def place_of_choice(self, vexilo):
        chosen = vexilo.until(lambda: vexilo.checked(Role.RADIO_BUTTON), "a service is chosen")
        return tree.centre_of(vexilo.expect(Role.RADIO_BUTTON, chosen[0]))[0]
