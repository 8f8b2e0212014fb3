"""What must hold for all that assistive software meets, wherever it stands."""

import tree
from tree import Role, State

NAMED = {Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.MENU_ITEM, Role.TEXT,
         Role.LABEL, Role.HEADING, Role.DIALOG, Role.SLIDER, Role.NOTIFICATION, Role.LIST,
         Role.LIST_ITEM}
PRESSED = {Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX, Role.MENU_ITEM, Role.LIST_ITEM}


class AccessibleWalk:
    """Claims about the showing nodes of a tree, for a test case to make."""

    def assert_named(self, nodes):
        self.assertEqual([tree.describe_node(node) for node in nodes
                          if tree.role_of(node) in NAMED and not tree.name_of(node).strip()], [])

    def assert_focusable(self, nodes):
        pressed = [node for node in nodes if tree.role_of(node) in PRESSED]
        self.assertTrue(pressed)
        self.assertEqual([tree.describe_node(node) for node in pressed
                          if not tree.has(node, State.FOCUSABLE)], [])

    def assert_fields_take_text(self, vexilo, nodes):
        fields = [node for node in nodes if tree.role_of(node) == Role.TEXT]
        self.assertTrue(fields)
        for field in fields:
            tree.set_text(field, "7")
            vexilo.until(lambda node=field: tree.text_of(node) == "7", "the text is taken")
