"""What must hold for all that assistive software meets, as rules over what was seen of a screen.

A rule takes things and returns a complaint for each that breaks it, so that a rule itself can be
tried on things that no screen has.
"""

from typing import NamedTuple

import tree
from tree import Role, State

PRESSED = {Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.MENU_ITEM, Role.LIST_ITEM}
CONTROLS = PRESSED | {Role.SLIDER, Role.TEXT}
SAID = {Role.LABEL, Role.HEADING, Role.DIALOG, Role.LIST, Role.NOTIFICATION, Role.IMAGE}
# What only holds others together, and may have no name of its own.
AROUND = {Role.FRAME, Role.PANEL, Role.MENU_BAR, Role.POPUP_MENU, Role.FILLER}
LEAST_TARGET = 44  # points, in both directions


class Box(NamedTuple):
    x: int
    y: int
    width: int
    height: int


class Thing(NamedTuple):
    """What was seen of a node at one moment."""

    role: Role
    name: str
    actions: tuple = ()
    states: frozenset = frozenset()
    box: Box = Box(0, 0, 0, 0)
    path: str = ""  # the node's own for as long as it lives

    @property
    def is_control(self):
        return self.role in CONTROLS or State.FOCUSABLE in self.states

    def __str__(self):
        return f"{self.role.value_nick} {self.name!r}"


def thing(node):
    box = tree.extents_of(node)
    return Thing(tree.role_of(node), tree.name_of(node), tuple(tree.actions_of(node)),
                 tree.states_of(node), Box(box.x, box.y, box.width, box.height), node.path)


def things(root):
    """All that shows of a node and below it."""
    return [seen for seen in map(thing, tree.nodes(root)) if State.SHOWING in seen.states]


def without_role(seen):
    known = CONTROLS | SAID | AROUND
    return [f"{one} is of no role that is known here" for one in seen if one.role not in known]


def without_name(seen):
    return [f"{one} has no name" for one in seen
            if (one.role in CONTROLS | SAID or one.is_control) and one.role not in AROUND
            and not one.name.strip()]


def with_marks(seen):
    return [f"{one} shows the mark of a menu key" for one in seen if "&" in one.name]


def without_action(seen):
    return [f"{one} cannot be pressed" for one in seen
            if one.role in PRESSED and "Press" not in one.actions]


def not_focusable(seen):
    return [f"{one} does not take the keyboard" for one in seen
            if one.role in CONTROLS and State.FOCUSABLE not in one.states]


def too_small(seen):
    return [f"{one} is {one.box.width} x {one.box.height} points" for one in seen
            if one.role in CONTROLS and min(one.box.width, one.box.height) < LEAST_TARGET]


def unreached(seen, reached):
    """What takes the keyboard and was not among what keys led to."""
    met = {one.path for one in reached}
    return [f"{one} is not reached by keys" for one in seen
            if one.role in CONTROLS and one.path not in met]


def is_heeded(press, look, wait):
    """Whether a press changes what is seen. That an action says it was done proves nothing.

    `wait` takes a condition and returns whether it came true.
    """
    before = look()
    press()
    return wait(lambda: look() != before)


RULES = (without_role, without_name, with_marks, without_action, not_focusable, too_small)


def complaints(seen):
    """What is wrong with one screen, by all rules that need nothing but to look."""
    return [complaint for rule in RULES for complaint in rule(seen)]


def report(title, seen):
    """The screen's controls and texts, for people to read."""
    lines = [title, "-" * len(title)]
    for one in seen:
        if one.role in AROUND and not one.name:
            continue
        facts = [f"actions: {', '.join(one.actions)}"] if one.actions else []
        facts += ["focusable"] if State.FOCUSABLE in one.states else []
        lines.append(f"  {one.role.value_nick:13} {one.name!r:60} {'; '.join(facts)}".rstrip())
    return "\n".join(lines) + "\n"
