"""The theme, followed and chosen while the program runs."""

import screen
import tree
from colours import DARK_PAGE, LIGHT_PAGE, page_colour
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
        self.expect_page(LIGHT_PAGE)
        light = self.still_picture()

        self.desktop.change(PREFERS_DARK)
        self.expect_page(DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        self.expect_picture(light)

        self.sheet.open()
        light_sheet = self.still_picture(but=light)
        self.desktop.change(PREFERS_DARK)
        self.expect_page(DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        self.expect_picture(light_sheet)

        self.sheet.close()
        self.expect_picture(light)

    def test_a_chosen_theme_overrides_the_desktop_until_system_is_chosen_again(self):
        self.sheet.open()
        for theme, page, wishes, on in ((DARK, DARK_PAGE, (PREFERS_DARK, PREFERS_LIGHT), False),
                                        (LIGHT, LIGHT_PAGE, (PREFERS_DARK,), True)):
            self.sheet.choose_theme(theme)
            self.expect_page(page)
            for wish in wishes:
                self.desktop.change(wish)
            # By now the wishes have arrived, or they never will.
            self.sheet.switch(HIGHLIGHT, on)
            self.assertEqual(page_colour(self.vexilo), page)

        self.sheet.choose_theme(SYSTEM)
        self.expect_page(DARK_PAGE)
        self.sheet.close()
        self.expect_page(DARK_PAGE)
        self.desktop.change(PREFERS_LIGHT)
        self.expect_page(LIGHT_PAGE)

    def go_to_settings_button(self):
        """Away from the bill field, whose cursor blinks."""
        button = (Role.PUSH_BUTTON, "Settings")
        tree.focus(self.vexilo.expect(*button))
        self.vexilo.expect_focus(*button)

    def expect_page(self, colour):
        self.vexilo.until(lambda: page_colour(self.vexilo) == colour, f"the page is {colour}")

    def still_picture(self, but=None):
        """What the window shows as soon as it shows it twice, and something else than `but`."""
        def still():
            picture = screen.picture_of(self.vexilo.window)
            again = screen.picture_of(self.vexilo.window)
            return picture if picture == again != but else None
        return self.vexilo.until(still, "the window is at rest")

    def expect_picture(self, picture):
        self.vexilo.until(lambda: screen.picture_of(self.vexilo.window) == picture,
                          "the window looks as before")
