"""The theme, followed and chosen while the program runs."""

import screen
import tree
from colours import DARK_PAGE, LIGHT_PAGE, expect_page, page_colour
from pictures import expect_picture, picture_at_rest
from portal import ANIMATIONS, SettingsPortal
from settings_sheet import DARK, HIGHLIGHT, LIGHT, SYSTEM, SettingsTest
from tree import Role

PREFERS_DARK, PREFERS_LIGHT = 1, 2


class LiveTheme(SettingsTest):
    def setUp(self):
        self.desktop = SettingsPortal(PREFERS_LIGHT, (ANIMATIONS, False))
        super().setUp()
        screen.move_pointer(0, 0)  # out of the window, where it lights up nothing
        self.start()

    def test_system_follows_the_desktop_with_the_sheet_open_and_closed(self):
        self.go_to_settings_button()
        expect_page(self.vexilo, LIGHT_PAGE)
        light = picture_at_rest(self.vexilo)

        self.desktop.change(PREFERS_DARK)
        expect_page(self.vexilo, DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        expect_picture(self.vexilo, light)

        self.sheet.open()
        light_sheet = picture_at_rest(self.vexilo, but=light)
        self.desktop.change(PREFERS_DARK)
        expect_page(self.vexilo, DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        expect_picture(self.vexilo, light_sheet)

        self.sheet.close()
        expect_picture(self.vexilo, light)

    def test_a_chosen_theme_overrides_the_desktop_until_system_is_chosen_again(self):
        self.sheet.open()
        for theme, page, wishes, on in ((DARK, DARK_PAGE, (PREFERS_DARK, PREFERS_LIGHT), False),
                                        (LIGHT, LIGHT_PAGE, (PREFERS_DARK,), True)):
            self.sheet.choose_theme(theme)
            expect_page(self.vexilo, page)
            for wish in wishes:
                self.desktop.change(wish)
            # By now the wishes have arrived, or they never will.
            self.sheet.switch(HIGHLIGHT, on)
            self.assertEqual(page_colour(self.vexilo), page)

        self.sheet.choose_theme(SYSTEM)
        expect_page(self.vexilo, DARK_PAGE)
        self.sheet.close()
        expect_page(self.vexilo, DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        expect_page(self.vexilo, LIGHT_PAGE)

    def go_to_settings_button(self):
        """Away from the bill field, whose cursor blinks."""
        button = (Role.PUSH_BUTTON, "Settings")
        tree.focus(self.vexilo.expect(*button))
        self.vexilo.expect_focus(*button)
