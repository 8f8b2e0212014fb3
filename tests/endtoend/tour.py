"""A tour of every screen, sheet and dialog.

It finds its way by keys and by the places of buttons, never by their names, so that it leads through
the program in every language.
"""

import screen
import tree
from accessible_rules import CONTROLS, PRESSED, thing, things
from tree import Role, State

SETTINGS, CLEAR, COPY, SHARE, HISTORY, SAVE = range(6)  # the buttons of the tool bar
EDIT, DONE, COLUMN, DELETE_OLD, DELETE_ALL = range(5)  # those of the list of saved bills
BACK, RENAME, USE = range(3)  # those of a bill's page that covers the list
OK_BUTTON = 1  # of the dialog that asks for a description
CANCEL, COPY_TEXT, COPY_SHARE, CODE, EMAIL, SAVE_FILE, PRINT = range(7)  # those of the share sheet
PAGE_BUTTONS, BOTH_BUTTONS = 3, 7  # a page's, and those of the list with a page beside it
NARROW, WIDE = (540, 880), (1000, 880)


class Tour:
    """Leads through one running program. Every screen is opened from the calculator.

    `narrow` and `wide` are sizes of the window in pixels, without and with room for a bill beside
    the list; `beside` says that there is room in both. `amount` is what stands in the bill field
    wherever it is not the matter, and `phones` how many phones a text can be sent to.
    """

    def __init__(self, vexilo, narrow=NARROW, wide=WIDE, amount="100", phones=0, beside=False):
        self._vexilo = vexilo
        self._narrow = narrow
        self._wide = wide
        self._amount = amount
        self._phones = phones
        self._page_buttons = BOTH_BUTTONS if beside else PAGE_BUTTONS

    def stops(self):
        """The titles of the screens and what opens each, in an order in which all can be seen."""
        return {
            "Calculator": lambda: None,
            "Calculator, amount refused": self.refuse_amount,
            "Menu": self.open_menu,
            "Clear": lambda: self.open(CLEAR),
            "Copied": lambda: self.open(COPY),
            "Save": lambda: self.open(SAVE),
            "Settings": lambda: self.open(SETTINGS),
            "Saved bills, none": lambda: self.open(HISTORY),
            "Saved bills": self.open_list,
            "Saved bills, being edited": self.edit,
            "Saved bills, one swiped aside": self.swipe,
            "Delete old bills": lambda: self.ask_in_list(DELETE_OLD),
            "Delete all bills": lambda: self.ask_in_list(DELETE_ALL),
            "Bill": self.open_page,
            "Rename": lambda: self.ask_on_page(RENAME),
            "Use": lambda: self.ask_on_page(USE),
            "Saved bills, wide": self.open_wide_list,
            "Bill beside the list": self.open_wide_page,
            "Share": self.open_share,
            "QR code": self.open_code,
            "Share failed": self.fail_to_share,
        }

    # Where one is

    def layers(self):
        """What lies over the window's own controls, the topmost first: dialogs and menus."""
        over = []
        # They are the window's last children: no need to look at all of them.
        for node in tree.children_backwards(self._vexilo.frame):
            role = tree.role_of(node)
            if role in CONTROLS:
                break
            if role in (Role.DIALOG, Role.POPUP_MENU) and tree.has(node, State.SHOWING):
                over.append(node)
        return over

    def root(self):
        """What is on top: a dialog, a menu, or the window itself."""
        return (self.layers() or [self._vexilo.frame])[0]

    def find(self, role):
        return tree.find(self.root(), role)

    def expect(self, role):
        return self._vexilo.until(lambda: self.find(role), f"{role.value_nick} shows")

    def buttons(self):
        return list(tree.find_all(self.root(), Role.PUSH_BUTTON))

    def expect_buttons(self, count):
        self._vexilo.until(lambda: len(self.buttons()) == count, f"{count} buttons show")

    def press(self, place):
        """Presses the button at a place, as soon as there are so many."""
        self._vexilo.until(lambda: len(self.buttons()) > place, "the buttons show")
        tree.press(self.buttons()[place])

    def expect_layers(self, count):
        self._vexilo.until(lambda: len(self.layers()) == count, f"{count} dialogs show")

    def return_to_calculator(self):
        """Closes what is open, one thing after the other."""
        while over := len(self.layers()):
            screen.press_keys("Escape")
            self._vexilo.until(lambda old=over: len(self.layers()) < old, "something is closed")
        self.resize(self._narrow)
        field = self.find(Role.TEXT)
        if tree.text_of(field) != self._amount:
            tree.set_text(field, self._amount)

    def resize(self, size):
        window = self._vexilo.window
        if screen.size_of(window) != size:
            screen.resize(window, *size)
            self._vexilo.until(lambda: screen.size_of(window) == size, f"the size is {size}")

    # The screens

    def open(self, place):
        self.press(place)
        self.expect_layers(1)

    def refuse_amount(self):
        tree.set_text(self.find(Role.TEXT), "a lot")
        self.expect(Role.NOTIFICATION)

    def open_menu(self):
        screen.press_keys("F10")
        self.expect_layers(1)

    def open_list(self):
        """Opens the list of saved bills, of which there is one then."""
        self.open(HISTORY)
        if not self.find(Role.LIST_ITEM) and not self._list_fills():
            self.return_to_calculator()
            self.open(SAVE)
            self.press(OK_BUTTON)
            self.expect_layers(0)
            self.open(HISTORY)
        self.expect(Role.LIST_ITEM)

    def _list_fills(self):
        # The place of the rows is taken by a remark where there is none.
        self._vexilo.until(
            lambda: self.find(Role.LIST_ITEM) or tree.find(self.root(), Role.LABEL),
            "the list shows what it has")
        return bool(self.find(Role.LIST_ITEM))

    def edit(self):
        self.open_list()
        self.press(EDIT)
        tree.press(self.find(Role.LIST_ITEM))
        row = self.find(Role.LIST_ITEM)
        self._vexilo.until(lambda: tree.has(row, State.CHECKED), "the row is marked")

    def swipe(self):
        self.open_list()
        row = self.find(Role.LIST_ITEM)
        scale = self._display_scale()
        x, y = (round(scale * place) for place in tree.centre_of(row))
        stride = round(scale * tree.extents_of(row).width / 30)
        if not self._is_mirrored():
            stride = -stride
        screen.press_pointer(x, y)
        for step in range(1, 11):
            screen.move_pointer(x + step * stride, y)
        screen.release_pointer()
        self._vexilo.until(lambda: tree.find(row, Role.PUSH_BUTTON), "the button is uncovered")
        screen.move_pointer(0, 0)

    def _display_scale(self):
        """How many pixels of the screen a point of the accessible tree has."""
        return screen.size_of(self._vexilo.window)[0] / tree.extents_of(self._vexilo.frame).width

    def _is_mirrored(self):
        edit, done = (tree.centre_of(self.buttons()[place]) for place in (EDIT, DONE))
        return edit > done

    def ask_in_list(self, place):
        self.open_list()
        self.press(place)
        self.expect_layers(2)

    def open_page(self):
        self.open_list()
        tree.press(self.find(Role.LIST_ITEM))
        self.expect_buttons(self._page_buttons)

    def ask_on_page(self, place):
        self.open_page()
        # Beside the list it has no way back, and comes after the list's own buttons.
        self.press(place + self._page_buttons - PAGE_BUTTONS)
        self.expect_layers(2)

    def open_wide_list(self):
        self.resize(self._wide)
        self.open_list()
        self._vexilo.until(lambda: tree.find(self.root(), Role.LABEL), "the remark shows")

    def open_wide_page(self):
        self.open_wide_list()
        tree.press(self.find(Role.LIST_ITEM))
        self.expect_buttons(BOTH_BUTTONS)

    def open_share(self):
        self.open(SHARE)
        self.expect_buttons(7 + self._phones)

    def open_code(self):
        self.open_share()
        self.press(CODE)
        self.expect(Role.IMAGE)

    def fail_to_share(self):
        self.open_share()
        self.press(SAVE_FILE + self._phones)
        self.expect_layers(2)

    # What is met there

    def things(self):
        return things(self.root())

    def pressable(self):
        """What can be pressed, but for the row that is chosen already."""
        return [node for node in tree.nodes(self.root())
                if tree.role_of(node) in PRESSED and tree.has(node, State.SHOWING)
                and not tree.has(node, State.SELECTED)]

    def reached_by_keys(self):
        """The controls that the Tab key leads to, and the arrow keys from there."""
        return KeyWalk(self._vexilo, self.root()).met()


class KeyWalk:
    """A walk by keys through the controls of one screen."""

    def __init__(self, vexilo, root):
        self._vexilo = vexilo
        self._root = root
        self._controls = [one for one in things(root) if one.role in CONTROLS]

    def met(self):
        if tree.role_of(self._root) == Role.POPUP_MENU:
            screen.press_keys("Down")  # until then the menu itself has the keyboard
        met = []
        current = self._vexilo.until(self._focused, "something has the keyboard")
        for _ in self._controls:
            met += [current, *self._reached_by_arrows(current)]
            if {one.path for one in self._controls} <= {one.path for one in met}:
                break
            current = self._press("Tab", self._focused())
            if not current:
                break
        return met

    def _reached_by_arrows(self, current):
        if current.role not in (Role.RADIO_BUTTON, Role.LIST_ITEM, Role.MENU_ITEM):
            return
        group = [one for one in self._controls if one.role == current.role]
        place = [one.path for one in group].index(current.path)
        beside = group[0].box.y == group[-1].box.y
        back, forth = ("Left", "Right") if beside else ("Up", "Down")
        for key in [back] * place + [forth] * (len(group) - 1):
            current = self._press(key, current)
            if not current:
                return
            yield current

    def _press(self, key, before):
        """What has the keyboard after a key, or None where that moved nothing."""
        screen.press_keys(key)
        try:
            return self._vexilo.until(
                lambda: (now := self._focused()) and now.path != before.path and now,
                f"{key} leads on from {before}")
        except AssertionError:
            return None

    def _focused(self):
        for node in tree.nodes(self._root):
            if tree.has(node, State.FOCUSED) and tree.role_of(node) in CONTROLS:
                return thing(node)
        return None
