"""The accessible tree of a program, read as assistive software reads it."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Role = Atspi.Role
State = Atspi.StateType
EventListener = Atspi.EventListener


def application(process_id):
    """The accessible application of a process, or None before it has announced itself."""
    desktop = Atspi.get_desktop(0)
    _read_afresh(desktop)
    for child in _children(desktop):
        if _process_id(child) == process_id:
            _read_afresh(child)
            return child
    return None


def nodes(root):
    """The node and all below it, in the order of the tree."""
    yield root
    for child in _children(root):
        yield from nodes(child)


def children_backwards(node):
    """The nodes right below, the last one first."""
    for index in reversed(range(_answer(node.get_child_count, 0))):
        child = _answer(lambda index=index: node.get_child_at_index(index), None)
        if child is not None:
            yield child


def find(root, role, name=None):
    """The first showing node of a role, and of a name where one is given; or None."""
    return next(find_all(root, role, name), None)


def find_all(root, role, name=None):
    """All showing nodes of a role, and of a name where one is given."""
    for node in nodes(root):
        if role_of(node) == role and name in (None, name_of(node)) and has(node, State.SHOWING):
            yield node


def role_of(node):
    return _answer(node.get_role, Role.INVALID)


def name_of(node):
    return _answer(node.get_name, "")


def description_of(node):
    return _answer(node.get_description, "")


def text_of(node):
    """What stands in a text field."""
    return Atspi.Text.get_text(node, 0, -1)


def set_text(node, text):
    """Replaces what stands in a text field, as dictation software does."""
    if not Atspi.EditableText.set_text_contents(node, text):
        raise AssertionError(f"The text of {describe_node(node)} cannot be set")


def value_of(node):
    return Atspi.Value.get_current_value(node)


def range_of(node):
    """The least and the greatest value that a slider takes."""
    return Atspi.Value.get_minimum_value(node), Atspi.Value.get_maximum_value(node)


def set_value(node, value):
    """Moves a slider from outside, as a screen reader does."""
    if not Atspi.Value.set_current_value(node, value):
        raise AssertionError(f"The value of {describe_node(node)} cannot be set")


def has(node, state):
    states = _answer(node.get_state_set, None)
    return states is not None and states.contains(state)


def states_of(node):
    states = _answer(node.get_state_set, None)
    return frozenset(states.get_states() if states else ())


def actions_of(node):
    """The names of what can be done to a node."""
    return [Atspi.Action.get_action_name(node, index)
            for index in range(_answer(lambda: Atspi.Action.get_n_actions(node), 0))]


def centre_of(node):
    """Where the node is drawn on the screen, in points: the middle of its rectangle."""
    box = extents_of(node)
    return box.x + box.width // 2, box.y + box.height // 2


def extents_of(node):
    """The rectangle in which the node is drawn on the screen, in points: pixels at scale 1."""
    return Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)


def focus(node):
    if not Atspi.Component.grab_focus(node):
        raise AssertionError(f"{describe_node(node)} does not take the keyboard")


def press(node):
    """Performs the action Press. That it was heeded is for the caller to see."""
    for index in range(Atspi.Action.get_n_actions(node)):
        if Atspi.Action.get_action_name(node, index) == "Press":
            Atspi.Action.do_action(node, index)
            return
    raise AssertionError(f"{describe_node(node)} has no action Press")


def describe(root):
    """The tree as indented text, for failure messages and for seeing whether anything changed."""
    return "\n".join(_lines(root, 0))


def describe_node(node):
    states = _answer(node.get_state_set, None)
    names = sorted(state.value_nick for state in states.get_states()) if states else []
    parts = [role_of(node).value_nick, repr(name_of(node))]
    if description_of(node):
        parts.append(f"description {description_of(node)!r}")
    if has(node, State.EDITABLE):
        parts.append(f"text {_answer(lambda: text_of(node), '')!r}")
    return " ".join([*parts, f"[{' '.join(names)}]"])


def _lines(node, depth):
    yield "  " * depth + describe_node(node)
    for child in _children(node):
        yield from _lines(child, depth + 1)


def _read_afresh(root):
    # Kept answers are only as fresh as the program's change events, which are what is tested.
    root.set_cache_mask(Atspi.Cache.NONE)


def _children(node):
    for index in range(_answer(node.get_child_count, 0)):
        child = _answer(lambda index=index: node.get_child_at_index(index), None)
        if child is not None:
            yield child


def _process_id(node):
    return _answer(node.get_process_id, 0)


def _answer(ask, otherwise):
    """What a node says, or `otherwise` where it has gone since it was found."""
    try:
        return ask()
    except GLib.Error:
        return otherwise
