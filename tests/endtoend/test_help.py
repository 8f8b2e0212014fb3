"""The Help command, which opens the help page in the user's browser."""

import screen
import tree
from case import EndToEndTest
from tree import Role

ADDRESS = "https://morrowick.example/vexilo/help"
COMMAND = "Help on website"


class Help(EndToEndTest):
    def setUp(self):
        super().setUp()
        browser = self.home.add_recorder("browser")
        self.vexilo = self.launch(environment={"BROWSER": str(browser)})

    def test_the_help_menu_is_a_menu_item_that_opens_when_pressed(self):
        tree.press(self.vexilo.expect(Role.MENU_ITEM, "Help"))

        self.vexilo.expect(Role.MENU_ITEM, COMMAND)

    def test_the_command_opens_the_help_page_and_closes_the_menu(self):
        self.open_menu()

        tree.press(self.vexilo.expect(Role.MENU_ITEM, COMMAND))

        self.expect_help_page()
        self.vexilo.expect_none(Role.MENU_ITEM, COMMAND)

    def test_the_menu_holds_nothing_else(self):
        self.open_menu()
        menu = self.vexilo.expect(Role.POPUP_MENU)

        names = [tree.name_of(node) for node in tree.find_all(menu, Role.MENU_ITEM)]

        self.assertEqual(names, [COMMAND])

    def test_the_help_key_opens_the_help_page(self):
        screen.press_keys("F1")

        self.expect_help_page()

    def test_the_menu_works_by_keyboard(self):
        self.open_menu()

        screen.press_keys("Down", "Return")

        self.expect_help_page()
        self.vexilo.expect_none(Role.MENU_ITEM, COMMAND)

    def test_f10_opens_the_menu_too(self):
        screen.press_keys("F10")

        self.vexilo.expect(Role.MENU_ITEM, COMMAND)

    def test_escape_closes_the_menu(self):
        self.open_menu()

        screen.press_keys("Escape")

        self.vexilo.expect_none(Role.MENU_ITEM, COMMAND)

    def open_menu(self):
        screen.press_keys("alt+h")
        self.vexilo.expect(Role.MENU_ITEM, COMMAND)

    def expect_help_page(self):
        self.vexilo.until(lambda: self.home.recorded_arguments("browser") == [ADDRESS],
                          "the browser is opened at the help page")
