"""The rules over what assistive software meets find what breaks them."""

import unittest

import accessible_rules as rules
from accessible_rules import Box, Thing
from tree import Role, State

FOCUSABLE = frozenset((State.SHOWING, State.FOCUSABLE))
LARGE = Box(10, 10, 44, 44)
BUTTON = Thing(Role.PUSH_BUTTON, "Save", ("Press", "SetFocus"), FOCUSABLE, LARGE)
FIELD = Thing(Role.TEXT, "Bill to Split", ("SetFocus",), FOCUSABLE, LARGE)
LABEL = Thing(Role.LABEL, "TOTAL $105.00", (), frozenset((State.SHOWING,)), Box(10, 80, 90, 20))
GROUP = Thing(Role.PANEL, "", (), frozenset((State.SHOWING,)), LARGE)


class Rules(unittest.TestCase):
    def test_what_keeps_all_rules_gives_no_complaint(self):
        self.assertEqual(rules.complaints([BUTTON, FIELD, LABEL, GROUP]), [])
        self.assertEqual(rules.unreached([BUTTON, LABEL], [BUTTON]), [])

    def test_a_control_without_a_name_is_found(self):
        for role in rules.CONTROLS:
            self.assert_found(BUTTON._replace(role=role, name=" "), "has no name")

    def test_a_text_without_a_name_is_found(self):
        for role in rules.SAID:
            self.assert_found(LABEL._replace(role=role, name=""), "has no name")

    def test_a_control_without_a_role_is_found(self):
        for role in (Role.UNKNOWN, Role.INVALID, Role.CANVAS):
            self.assert_found(BUTTON._replace(role=role), "is of no role")

    def test_a_control_without_an_action_is_found(self):
        for role in rules.PRESSED:
            self.assert_found(BUTTON._replace(role=role, actions=("SetFocus",)),
                              "cannot be pressed")

    def test_a_control_that_does_not_take_the_keyboard_is_found(self):
        for role in rules.CONTROLS:
            self.assert_found(BUTTON._replace(role=role, states=frozenset((State.SHOWING,))),
                              "does not take the keyboard")

    def test_a_small_target_is_found(self):
        for box in (Box(0, 0, 43, 44), Box(0, 0, 44, 43)):
            self.assert_found(BUTTON._replace(box=box), f"is {box.width} x {box.height} points")

    def test_the_mark_of_a_menu_key_is_found(self):
        self.assert_found(BUTTON._replace(name="&Save"), "shows the mark of a menu key")

    def test_a_control_that_no_key_leads_to_is_found(self):
        other = BUTTON._replace(path="/2")  # of the same name

        self.assertEqual(rules.unreached([BUTTON, other, FIELD], [BUTTON, FIELD]),
                         [f"{other} is not reached by keys"])

    def test_a_control_whose_press_is_not_heeded_is_found(self):
        window = {"count": 0}

        def count_up():
            window["count"] += 1

        self.assertTrue(rules.is_heeded(count_up, lambda: dict(window), lambda seen: seen()))
        self.assertFalse(rules.is_heeded(lambda: None, lambda: dict(window), lambda seen: seen()))

    def assert_found(self, broken, complaint):
        found = rules.complaints([BUTTON, broken, LABEL])

        self.assertEqual([one for one in found if complaint in one], [f"{broken} {complaint}"]
                         if complaint != "is of no role" else found)
        self.assertTrue(found)


class Report(unittest.TestCase):
    def test_the_report_tells_role_name_actions_and_whether_it_takes_the_keyboard(self):
        written = rules.report("Calculator", [BUTTON, LABEL, GROUP])

        title, _, button, label, *rest = written.splitlines()
        self.assertEqual(title, "Calculator")
        self.assertEqual(button.split(), ["push-button", "'Save'", "actions:", "Press,",
                                          "SetFocus;", "focusable"])
        self.assertEqual(label.split(), ["label", "'TOTAL", "$105.00'"])
        self.assertEqual(rest, [])
