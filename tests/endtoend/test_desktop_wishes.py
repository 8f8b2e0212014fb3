"""The desktop's wishes for high contrast and for larger texts, while the program runs."""

import itertools

import screen
import tree
from colours import LIGHT_PAGE, WHITE, contrast, expect_page, panel_colour
from pictures import expect_picture, picture_at_rest
from portal import ANIMATIONS, CONTRAST, HIGH_CONTRAST, TEXT_SCALE, SettingsPortal
from saved_bills import SavedBillsTest
from settings_sheet import CLOUD, CURRENCY, GOOD, HIGHLIGHT, SettingsSheet
from tree import Role, State

LIGHT = 2
LEAST = (500, 800)
MARGIN = 24  # between the cards and the edges of the window
SWITCHES = ("Everyone pays the tip", "Round up tip", "Round up share")
ROW = 54  # the height of a switch's row where no text is larger
CARD_EDGE = 2  # past the line around a card, which runs through its first row
SWITCH_MIDDLE = 43  # from the right end of a switch's row to the middle of the switch
# What comes first below the header, and is scrolled under it with all that follows.
CALCULATOR_FORM, SETTINGS_FORM = "Bill to Split", "GENERAL"
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

    def open_settings(self):
        """Opens the sheet and returns it with a picture of it."""
        settings = (Role.PUSH_BUTTON, "Settings")
        tree.focus(self.vexilo.expect(*settings))  # away from the bill field, whose cursor blinks
        self.vexilo.expect_focus(*settings)
        closed = picture_at_rest(self.vexilo)
        sheet = SettingsSheet(self.vexilo)
        sheet.open()
        return sheet, picture_at_rest(self.vexilo, but=closed)

    def resize(self, size):
        window = self.vexilo.window
        screen.resize(window, *size)
        self.vexilo.until(lambda: screen.size_of(window) == size, f"the size is {size}")

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

    def test_the_edges_of_the_settings_controls_stand_out_with_high_contrast_and_without(self):
        portal = self.start_on()
        sheet, before = self.open_settings()
        slider = sheet.slider(GOOD)
        tree.set_value(slider, 50)
        sheet.expect_percentages("50", "10")
        before = picture_at_rest(self.vexilo, but=before)
        box = tree.extents_of(slider)
        # Left of the knob the track is filled, right of it not.
        parts = {"the filled track": (box, box.width - box.width // 4),
                 "the bare track": (box, box.width // 4)}
        for name in (CLOUD, CURRENCY):  # the one is off and the other on
            row = tree.extents_of(sheet.expect(Role.CHECK_BOX, name))
            parts[name] = row, SWITCH_MIDDLE
        for name, part in parts.items():
            self.assertGreaterEqual(self.contrast_of_edge(*part), 3, name)
        usual = {name: self.contrast_of_edge(*part) for name, part in parts.items()}

        portal.announce(HIGH_CONTRAST, True)
        expect_page(self.vexilo, WHITE)
        for name, part in parts.items():
            self.vexilo.until(
                lambda name=name, part=part: self.contrast_of_edge(*part) > usual[name],
                f"the edge of {name} stands out more")

        portal.announce(HIGH_CONTRAST, False)
        expect_picture(self.vexilo, before)

    def contrast_of_edge(self, row, from_right):
        """The contrast of a control's upper edge, so far from its row's right end, to the card."""
        card, *below = screen.colours_below(row.x + row.width - from_right, row.y + CARD_EDGE,
                                            row.height // 2)
        return contrast(next((colour for colour in below if colour != card), card), card)

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
                self.resize(size)
                switches = [self.vexilo.expect(Role.CHECK_BOX, name) for name in SWITCHES]
                tree.focus(switches[-1])
                self.vexilo.expect_focus(Role.CHECK_BOX, SWITCHES[2])
                before = picture_at_rest(self.vexilo)
                portal.announce(TEXT_SCALE, 2.0)
                for switch in switches:
                    self.expect_higher(switch, ROW)
                self.expect_in_sight(switches[-1])

                self.assert_laid_out(self.vexilo.find(Role.FRAME), CALCULATOR_FORM)

                portal.announce(TEXT_SCALE, 1.0)
                expect_picture(self.vexilo, before)

    def test_the_keyboard_is_followed_where_the_texts_are_larger_than_the_window(self):
        portal = self.start_on()
        last = self.vexilo.expect(Role.CHECK_BOX, SWITCHES[2])
        portal.announce(TEXT_SCALE, 2.0)
        self.expect_higher(last, ROW)
        self.assertFalse(self.is_in_sight(last))

        tree.focus(last)

        self.expect_in_sight(last)

    def expect_in_sight(self, node):
        self.vexilo.until(lambda: self.is_in_sight(node), f"{tree.describe_node(node)} is in sight")

    def is_in_sight(self, node):
        """Whether nothing of a node is beyond the lower end of the window."""
        window = self.vexilo.window
        bottom = screen.origin_of(window)[1] + screen.size_of(window)[1]
        box = tree.extents_of(node)
        return tree.has(node, State.SHOWING) and box.y + box.height <= bottom

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

    def test_the_settings_grow_with_their_texts_and_shrink_again(self):
        portal = self.start_on()
        sheet, before = self.open_settings()
        dialog = self.vexilo.expect(Role.DIALOG, "Settings")
        rows = [sheet.expect(Role.CHECK_BOX, name) for name in (CLOUD, CURRENCY, HIGHLIGHT)]
        usual = screen.size_of(self.vexilo.window)

        portal.announce(TEXT_SCALE, 2.0)
        for row in rows:
            self.expect_higher(row, ROW)
        self.assert_laid_out(dialog, SETTINGS_FORM)

        self.resize(LEAST)
        self.vexilo.until(lambda: tree.extents_of(rows[-1]).width == LEAST[0] - 2 * MARGIN,
                          "the form is as narrow as the window")
        self.assert_laid_out(dialog, SETTINGS_FORM)

        self.resize(usual)
        portal.announce(TEXT_SCALE, 1.0)
        expect_picture(self.vexilo, before)

    def test_what_has_the_keyboard_stays_in_sight_when_the_texts_grow(self):
        portal = self.start_on()
        sheet, _ = self.open_settings()
        screen.press_keys("shift+Tab")  # to the last one, which is scrolled into sight
        sheet.expect_focus(Role.PUSH_BUTTON, "Help")
        help_button = sheet.expect(Role.PUSH_BUTTON, "Help")
        self.expect_in_sight(help_button)
        before = picture_at_rest(self.vexilo)

        portal.announce(TEXT_SCALE, 2.0)

        self.expect_higher(help_button, ROW)
        self.expect_in_sight(help_button)
        self.assert_laid_out(self.vexilo.expect(Role.DIALOG, "Settings"), SETTINGS_FORM)
        portal.announce(TEXT_SCALE, 1.0)
        expect_picture(self.vexilo, before)

    def assert_laid_out(self, root, form=None):
        """What can be read and pressed stands side by side, inside its window or dialog.

        `form` names the first of what can be scrolled under the header. Of that, what has gone
        there still tells a place, and is not asked.
        """
        around = tree.extents_of(root)
        nodes = list(tree.nodes(root))
        first = [tree.name_of(node) for node in nodes].index(form) if form else len(nodes)
        boxes = solid_boxes(nodes[:first])
        bottom = max(box.y + box.height for box in boxes.values())
        boxes |= {name: box for name, box in solid_boxes(nodes[first:]).items() if box.y >= bottom}
        self.assertGreater(len(boxes), 2)
        for name, box in boxes.items():
            self.assertGreater(box.width, 0, name)
            self.assertGreaterEqual(box.x, around.x, name)
            self.assertLessEqual(box.x + box.width, around.x + around.width, name)
        for (one, box), (other, second) in itertools.combinations(boxes.items(), 2):
            self.assertFalse(overlap(box, second), f"{one} and {other}")


def solid_boxes(nodes):
    return {tree.describe_node(node): tree.extents_of(node) for node in nodes
            if tree.role_of(node) in SOLID and tree.has(node, State.VISIBLE)}


def overlap(one, other):
    return (one.x < other.x + other.width and other.x < one.x + one.width
            and one.y < other.y + other.height and other.y < one.y + one.height)
