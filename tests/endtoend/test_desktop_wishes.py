"""The desktop's wishes for high contrast and for larger texts, while the program runs."""

import itertools

import screen
import tree
from colours import LIGHT_PAGE, WHITE, contrast, expect_page, panel_colour
from pictures import expect_picture, picture_at_rest
from portal import ANIMATIONS, CONTRAST, HIGH_CONTRAST, TEXT_SCALE, SettingsPortal
from saved_bills import SavedBillsTest
from tree import Role, State

LIGHT = 2
LEAST = (500, 800)
SWITCHES = ("Everyone pays the tip", "Round up tip", "Round up share")
ROW = 54  # the height of a switch's row where no text is larger
SOLID = (Role.LABEL, Role.TEXT, Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.HEADING,
         Role.LIST_ITEM)


class DesktopWishes(SavedBillsTest):
    def start_on(self, portal_wishes=(), *bills):
        screen.move_pointer(0, 0)  # where nothing lies under it, whatever moves
        desktop = SettingsPortal(LIGHT, (ANIMATIONS, False), *portal_wishes)
        self.enterContext(desktop)
        self.start_with(*bills)
        expect_page(self.vexilo, WHITE if portal_wishes else LIGHT_PAGE)
        return desktop

    def expect_higher(self, node, height):
        self.vexilo.until(lambda: tree.extents_of(node).height > height,
                          f"{tree.describe_node(node)} is higher than {height}")

    # Contrast

    def test_high_contrast_is_followed_and_taken_back(self):
        portal = self.start_on()
        before = picture_at_rest(self.vexilo)
        self.assertLess(contrast(panel_colour(self.vexilo), WHITE), 7)

        portal.announce(HIGH_CONTRAST, True)
        expect_page(self.vexilo, WHITE)
        self.vexilo.until(lambda: contrast(panel_colour(self.vexilo), WHITE) >= 7,
                          "the panel is darker")
        self.assertGreaterEqual(contrast(self.card_edge_colour(), WHITE), 3)

        portal.announce(CONTRAST, 1)
        portal.announce(HIGH_CONTRAST, False)
        portal.announce(CONTRAST, 0)
        expect_picture(self.vexilo, before)

    def test_high_contrast_holds_from_the_start(self):
        self.start_on([(CONTRAST, 1)])

        self.assertGreaterEqual(contrast(panel_colour(self.vexilo), WHITE), 7)

    def card_edge_colour(self):
        """The colour of the left edge of the card of the switches."""
        box = tree.extents_of(self.vexilo.expect(Role.CHECK_BOX, SWITCHES[1]))
        return screen.colour_at(box.x, box.y + box.height // 2)

    # Text scale

    def test_the_calculator_grows_with_its_texts_and_shrinks_again(self):
        portal = self.start_on()
        window = self.vexilo.window
        for size in (screen.size_of(window), LEAST):
            with self.subTest(size=size):
                screen.resize(window, *size)
                self.vexilo.until(lambda size=size: screen.size_of(window) == size, f"it is {size}")
                switches = [self.vexilo.expect(Role.CHECK_BOX, name) for name in SWITCHES]
                tree.focus(switches[-1])
                self.vexilo.expect_focus(Role.CHECK_BOX, SWITCHES[2])
                before = picture_at_rest(self.vexilo)
                portal.announce(TEXT_SCALE, 2.0)
                for switch in switches:
                    self.expect_higher(switch, ROW)

                self.assert_laid_out(self.vexilo.find(Role.FRAME))

                portal.announce(TEXT_SCALE, 1.0)
                expect_picture(self.vexilo, before)

    def test_the_keyboard_is_followed_where_the_texts_are_larger_than_the_window(self):
        portal = self.start_on()
        last = self.vexilo.expect(Role.CHECK_BOX, SWITCHES[2])
        portal.announce(TEXT_SCALE, 2.0)
        self.expect_higher(last, ROW)
        window = self.vexilo.window
        bottom = screen.origin_of(window)[1] + screen.size_of(window)[1]
        box = tree.extents_of(last)
        self.assertGreater(box.y + box.height, bottom)

        tree.focus(last)

        def is_in_sight():
            box = tree.extents_of(last)
            return box.y + box.height <= bottom
        self.vexilo.until(is_in_sight, "the last switch is in sight")

    def test_a_dialog_grows_with_its_texts(self):
        portal = self.start_on()
        dialog = self.bills.ask_to_save()
        portal.announce(TEXT_SCALE, 2.0)
        self.expect_higher(tree.find(dialog, Role.TEXT), ROW)
        self.assert_laid_out(dialog)
        self.bills.answer("Cancel", dialog)

    def test_the_saved_bills_grow_with_their_texts_and_shrink_again(self):
        portal = self.start_on((), "Lunch", "A dinner whose description is longer than a row")
        self.bills.open()
        before = picture_at_rest(self.vexilo)
        sheet = self.vexilo.expect(Role.DIALOG, "Saved Bills")
        self.assertEqual(self.row_heights(sheet), [56, 56])

        portal.announce(TEXT_SCALE, 2.0)

        self.vexilo.until(lambda: self.row_heights(sheet) == [112, 112], "the rows are higher")
        self.assert_laid_out(sheet)
        portal.announce(TEXT_SCALE, 1.0)
        expect_picture(self.vexilo, before)

    def row_heights(self, sheet):
        return [tree.extents_of(row).height for row in tree.find_all(sheet, Role.LIST_ITEM)]

    def assert_laid_out(self, root):
        """What can be read and pressed stands side by side, inside its window or dialog."""
        around = tree.extents_of(root)
        boxes = {tree.describe_node(node): tree.extents_of(node)
                 for node in tree.nodes(root)
                 if tree.role_of(node) in SOLID and tree.has(node, State.VISIBLE)}
        self.assertGreater(len(boxes), 2)
        for name, box in boxes.items():
            self.assertGreater(box.width, 0, name)
            self.assertGreaterEqual(box.x, around.x, name)
            self.assertLessEqual(box.x + box.width, around.x + around.width, name)
        for (one, box), (other, second) in itertools.combinations(boxes.items(), 2):
            self.assertFalse(overlap(box, second), f"{one} and {other}")


def overlap(one, other):
    return (one.x < other.x + other.width and other.x < one.x + one.width
            and one.y < other.y + other.height and other.y < one.y + one.height)
