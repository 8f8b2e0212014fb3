"""The window: its title, its least size and its colours."""

import screen
from case import EndToEndTest
from colours import (BLACK, DARK_PAGE, LIGHT_PAGE, WHITE, expect_page, is_red, page_colour,
                     panel_colour)
from portal import SettingsPortal

LEAST = (500, 800)
ICON_SIZES = [(16, 16), (32, 32), (48, 48), (128, 128)]
PAGE_COLOURS = {"1": LIGHT_PAGE, "2": DARK_PAGE}


class WindowSize(EndToEndTest):
    def test_the_window_is_called_by_the_programs_name(self):
        vexilo = self.launch()

        self.assertEqual(screen.title_of(vexilo.window), "Vexilo")

    def test_the_window_manager_is_told_the_least_size(self):
        vexilo = self.launch()

        self.assertEqual(screen.least_size_of(vexilo.window), LEAST)

    def test_the_window_cannot_be_made_smaller(self):
        vexilo = self.launch()
        window = vexilo.window
        width, height = screen.size_of(window)
        self.assertGreaterEqual(width, LEAST[0])
        self.assertGreaterEqual(height, LEAST[1])

        screen.resize(window, 900, 900)
        vexilo.until(lambda: screen.size_of(window) == (900, 900), "the window is larger")
        screen.resize(window, 300, 300)

        vexilo.until(lambda: screen.size_of(window) == LEAST, "the window has its least size")


class WindowIcon(EndToEndTest):
    def test_the_window_has_its_icon_in_the_sizes_of_lists_and_panels(self):
        vexilo = self.launch()
        window = vexilo.window

        vexilo.until(lambda: screen.icon_sizes_of(window) == ICON_SIZES, "the window has its icon")


class Theme(EndToEndTest):
    def test_theme_two_is_dark(self):
        self.expect_page_colour(DARK_PAGE, theme="2")

    def test_theme_one_is_light(self):
        self.expect_page_colour(LIGHT_PAGE, theme="1")

    def test_theme_zero_follows_a_desktop_that_wishes_nothing(self):
        self.expect_page_colour(LIGHT_PAGE, theme="0")

    def test_a_theme_that_does_not_exist_follows_the_desktop(self):
        self.expect_page_colour(LIGHT_PAGE, theme="3")

    def test_theme_zero_follows_the_desktop_at_the_start(self):
        for scheme, colour in ((0, LIGHT_PAGE), (1, DARK_PAGE), (2, LIGHT_PAGE)):
            with self.subTest(scheme=scheme), SettingsPortal(scheme):
                self.expect_page_colour(colour, theme="0").stop()

    def test_theme_zero_follows_the_desktop_while_it_changes(self):
        with SettingsPortal(2) as portal:
            vexilo = self.expect_page_colour(LIGHT_PAGE, theme="0")

            portal.change(1)
            expect_page(vexilo, DARK_PAGE)
            portal.change(0)
            expect_page(vexilo, LIGHT_PAGE)

    def test_a_chosen_theme_overrides_the_desktop(self):
        with SettingsPortal(2) as portal:
            vexilo = self.expect_page_colour(LIGHT_PAGE, theme="1")
            portal.change(1)
            # By now the change has arrived, or it never will.
            vexilo.set_bill("10")
            vexilo.expect_figures("TOTAL $10.50", "Tip $0.50", "Share per person $5.25")

            self.assertEqual(page_colour(vexilo), LIGHT_PAGE)

    def expect_page_colour(self, colour, theme):
        self.home.write_preferences(theme=theme)
        vexilo = self.launch()
        expect_page(vexilo, colour)
        return vexilo


class Highlighting(EndToEndTest):
    def test_the_highlighted_panel_is_red_in_both_themes(self):
        for theme in ("1", "2"):
            with self.subTest(theme=theme):
                vexilo = self.launch_with(theme=theme, highlightSums="true")

                vexilo.until(lambda: is_red(panel_colour(vexilo)), "the panel is red")
                vexilo.stop()

    def test_a_panel_without_highlight_is_white_in_a_light_window(self):
        vexilo = self.launch_with(theme="1", highlightSums="false")

        vexilo.until(lambda: panel_colour(vexilo) == WHITE, "the panel is white")

    def test_a_panel_without_highlight_is_black_in_a_dark_window(self):
        vexilo = self.launch_with(theme="2", highlightSums="false")

        vexilo.until(lambda: panel_colour(vexilo) == BLACK, "the panel is black")

    def launch_with(self, theme, highlightSums):
        self.home.write_preferences(theme=theme, highlightSums=highlightSums)
        vexilo = self.launch()
        expect_page(vexilo, PAGE_COLOURS[theme])
        return vexilo
