"""The settings sheet: what is changed there, where it is stored and what comes of it."""

import itertools

import screen
import tree
from colours import is_red, panel_colour
from home import FIRST_RUN_PREFERENCES
from settings_sheet import (CURRENCY, DARK, EXCELLENT, GOOD, HIGHLIGHT, LIGHT, SYSTEM,
                            SettingsTest)
from tree import Role

HELP = "https://morrowick.example/vexilo/help"
FIGURES = ("TOTAL $105.00", "Tip $5.00", "Share per person $52.50")


class Opening(SettingsTest):
    def test_it_opens_and_closes_by_keyboard_changes_nothing_and_gives_the_keyboard_back(self):
        self.start()

        for button, opening, closing in (("Settings", "Return", "Return"),
                                         ("More people", "ctrl+comma", "Escape")):
            tree.focus(self.vexilo.expect(Role.PUSH_BUTTON, button))
            self.vexilo.expect_focus(Role.PUSH_BUTTON, button)
            screen.press_keys(opening)
            self.sheet.expect_open()
            screen.press_keys(closing)
            self.sheet.expect_closed()
            self.vexilo.expect_focus(Role.PUSH_BUTTON, button)

        self.vexilo.expect_figures(*FIGURES)
        self.quit()
        self.assert_stored(**FIRST_RUN_PREFERENCES | {"bill": "100"})

    def test_help_opens_the_help_page_in_the_browser(self):
        self.open(environment={"BROWSER": str(self.home.add_recorder("browser"))})
        screen.press_keys("shift+Tab")  # to the last one, which is scrolled into sight
        self.sheet.expect_focus(Role.PUSH_BUTTON, "Help")

        screen.press_keys("Return")

        self.vexilo.until(lambda: self.home.recorded_arguments("browser") == [HELP],
                          "the browser is opened at the help page")


class Percentages(SettingsTest):
    def test_assistive_software_sets_any_value_of_which_whole_percents_are_shown(self):
        self.open()

        for name, texts in ((GOOD, ("12", "10")), (EXCELLENT, ("12", "12"))):
            slider = self.sheet.slider(name)
            self.assertEqual(tree.range_of(slider), (1, 100))
            tree.set_value(slider, 12.75)
            self.sheet.expect_percentages(*texts)
            self.assertEqual(tree.value_of(slider), 12.75)
        for beyond, end in ((1000, 100), (-1000, 1)):
            tree.set_value(slider, beyond)
            self.sheet.expect_percentages("12", str(end))
            self.assertEqual(tree.value_of(slider), end)

    def test_keys_go_by_one_by_ten_and_to_the_ends_and_the_last_is_stored(self):
        self.open()
        slider = self.sheet.slider(EXCELLENT)
        tree.set_value(slider, 10.5)
        self.sheet.focus(Role.SLIDER, EXCELLENT)

        for key, text in (("Right", "11"), ("Up", "12"), ("Left", "11"), ("Down", "10"),
                          ("Page_Up", "20"), ("Page_Down", "10")):
            screen.press_keys(key)
            self.sheet.expect_percentages("5", text)
        self.assertEqual(tree.value_of(slider), 10.5)
        for key, text in (("Page_Down", "1"), ("End", "100"), ("Home", "1")):
            screen.press_keys(key)
            self.sheet.expect_percentages("5", text)

        screen.press_keys("Left", "Right")  # the first of which changes nothing
        self.quit()
        self.assert_stored(serviceGood="5", serviceExcellent="2")


class Pointing(SettingsTest):
    def test_dragging_sets_any_value_while_the_pointer_moves(self):
        self.open()
        slider = self.sheet.slider(GOOD)
        x, y = tree.centre_of(slider)
        self.addCleanup(screen.release_pointer)

        screen.press_pointer(x - 100, y)
        screen.move_pointer(x, y)
        self.sheet.expect_percentages("50", "10")
        self.assertAlmostEqual(tree.value_of(slider), 50.5, delta=0.4)
        screen.move_pointer(x + 1000, y)
        self.sheet.expect_percentages("100", "10")
        screen.move_pointer(x, y)
        screen.release_pointer()

        self.sheet.expect_percentages("50", "10")
        self.assertAlmostEqual(tree.value_of(slider), 50.5, delta=0.4)

    def test_the_wheel_turns_the_slider_that_is_pointed_at(self):
        self.open()
        x, y = tree.centre_of(self.sheet.slider(EXCELLENT))

        screen.turn_wheel_up(x, y)
        self.sheet.expect_percentages("5", "11")
        screen.turn_wheel_down(x, y, notches=2)
        self.sheet.expect_percentages("5", "9")

    def test_the_wheel_that_scrolls_the_form_leaves_the_slider_that_comes_below_it(self):
        self.open()
        above = self.place_of_slider()
        screen.press_keys("shift+Tab")  # to the last one, so that the form is scrolled to its end
        self.vexilo.until(lambda: self.place_of_slider() != above, "the form is scrolled")
        x, y = below = self.place_of_slider()
        screen.press_keys("Page_Up")
        self.vexilo.until(lambda: self.place_of_slider() == above, "the form is scrolled back")

        jitter = itertools.cycle((0, 1))  # a hand on the wheel does not keep the pointer still

        def is_scrolled_to_end():
            screen.turn_wheel_down(x + next(jitter), y)
            return self.place_of_slider() == below
        self.vexilo.until(is_scrolled_to_end, "the form is at its end")
        for _ in range(2):
            screen.turn_wheel_down(x + next(jitter), y)
        # The pointer is moved: now it is the slider that is meant.
        screen.turn_wheel_up(x + 20, y)

        self.sheet.expect_percentages("6", "10")  # one more than at first

    def place_of_slider(self):
        return tree.centre_of(self.sheet.slider(GOOD))


class Themes(SettingsTest):
    def test_keys_go_through_the_themes_and_stop_at_the_ends(self):
        self.open()
        self.sheet.focus(Role.RADIO_BUTTON, SYSTEM)

        for key, name in (("Up", SYSTEM), ("Down", DARK), ("Down", LIGHT), ("Down", LIGHT),
                          ("Up", DARK)):
            screen.press_keys(key)
            self.sheet.expect_theme(name)
            self.sheet.expect_focus(Role.RADIO_BUTTON, name)

        self.expect_stored(theme="2")


class Results(SettingsTest):
    def test_currency_symbol_and_highlight_go_and_come_at_once(self):
        self.start()

        for on, figures in ((False, ("TOTAL 105", "Tip 5", "Share per person 52.5")),
                            (True, FIGURES)):
            self.sheet.open()
            for name in (CURRENCY, HIGHLIGHT):
                self.sheet.switch(name, on)
            self.vexilo.expect_figures(*figures)  # below the open sheet
            self.sheet.close()
            self.vexilo.until(lambda: is_red(panel_colour(self.vexilo)) == on,
                              f"the panel is {'' if on else 'not '}red")

    def test_the_new_percentages_count_once_the_sheet_is_closed(self):
        self.open()
        tree.set_value(self.sheet.slider(GOOD), 20.9)
        self.sheet.close()
        self.vexilo.expect_figures("TOTAL $120.00", "Tip $20.00", "Share per person $60.00")

        self.sheet.open()
        tree.set_value(self.sheet.slider(GOOD), 30)
        self.sheet.expect_percentages("30", "10")
        screen.press_keys("Escape")

        self.vexilo.expect_figures("TOTAL $130.00", "Tip $30.00", "Share per person $65.00")


class Restart(SettingsTest):
    def test_every_setting_is_stored_at_once_and_found_again(self):
        self.open()
        for name in (CURRENCY, HIGHLIGHT):
            self.sheet.switch(name, False)
        tree.set_value(self.sheet.slider(GOOD), 12.75)
        tree.set_value(self.sheet.slider(EXCELLENT), 33)
        for theme in (DARK, SYSTEM, LIGHT):
            self.sheet.choose_theme(theme)

        self.expect_stored(showCurrency="false", highlightSums="false", serviceGood="12",
                           serviceExcellent="33", theme="1")
        self.quit()
        self.start()

        self.vexilo.expect_figures("TOTAL 112", "Tip 12", "Share per person 56")
        self.sheet.open()
        for name in (CURRENCY, HIGHLIGHT):
            self.sheet.expect_switch(name, False)
        self.sheet.expect_percentages("12", "33")
        self.assertEqual([tree.value_of(self.sheet.slider(name)) for name in (GOOD, EXCELLENT)],
                         [12, 33])
        self.sheet.expect_theme(LIGHT)


class StoredSettings(SettingsTest):
    def test_percentages_that_are_none_are_repaired_when_the_sheet_opens(self):
        for good, excellent in (("0", "-3"), (None, None)):
            with self.subTest(good=good, excellent=excellent):
                self.home.write_preferences(serviceGood=good, serviceExcellent=excellent)
                self.open()

                self.sheet.expect_percentages("5", "10")
                self.expect_stored(serviceGood="5", serviceExcellent="10")

                self.vexilo.stop()

    def test_values_beyond_the_choices_stay_until_another_is_chosen(self):
        self.home.write_preferences(bill="100", service="2", serviceExcellent="250", theme="7")
        self.open()

        self.sheet.expect_percentages("5", "250")
        self.assertEqual(tree.value_of(self.sheet.slider(EXCELLENT)), 100)
        self.sheet.expect_theme()
        self.sheet.switch(HIGHLIGHT, False)
        self.expect_stored(highlightSums="false", serviceExcellent="250", theme="7")
        self.sheet.close()
        self.vexilo.expect_figures("TOTAL $350.00", "Tip $250.00", "Share per person $175.00")

        self.sheet.open()
        self.sheet.focus(Role.SLIDER, EXCELLENT)
        screen.press_keys("Left")
        self.sheet.expect_percentages("5", "99")
        self.sheet.choose_theme(DARK)
        self.quit()
        self.assert_stored(serviceExcellent="99", theme="2")
