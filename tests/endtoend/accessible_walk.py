"""What must hold for all that assistive software meets, wherever it stands."""

import tree
from tree import Role, State

NAMED = {Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.MENU_ITEM, Role.TEXT,
         Role.LABEL, Role.HEADING, Role.DIALOG, Role.SLIDER, Role.NOTIFICATION, Role.LIST,
         Role.LIST_ITEM}
PRESSED = {Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.MENU_ITEM, Role.LIST_ITEM}
REACHED = PRESSED | {Role.SLIDER}


class AccessibleWalk:
    """Claims about the showing nodes of a tree, for a test case to make."""

    def assert_named(self, nodes):
        self.assertEqual([tree.describe_node(node) for node in nodes
                          if tree.role_of(node) in NAMED and not tree.name_of(node).strip()], [])

    def assert_focusable(self, nodes):
        reached = [node for node in nodes if tree.role_of(node) in REACHED]
        self.assertTrue(reached)
        self.assertEqual([tree.describe_node(node) for node in reached
                          if not tree.has(node, State.FOCUSABLE)], [])

    def assert_fields_take_text(self, vexilo, nodes):
        fields = [node for node in nodes if tree.role_of(node) == Role.TEXT]
        self.assertTrue(fields)
        for field in fields:
            tree.set_text(field, "7")
            vexilo.until(lambda node=field: tree.text_of(node) == "7", "the text is taken")

    def assert_sliders_take_values(self, vexilo, nodes):
        sliders = [node for node in nodes if tree.role_of(node) == Role.SLIDER]
        self.assertTrue(sliders)
        for slider in sliders:
            least, greatest = tree.range_of(slider)
            self.assertLess(least, greatest)
            for value in (greatest, least):
                tree.set_value(slider, value)
                vexilo.until(lambda node=slider, shall=value: tree.value_of(node) == shall,
                             "the value is taken")
