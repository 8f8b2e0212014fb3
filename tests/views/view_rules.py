"""Fails where a view has a colour of its own, or moves where the desktop asks for no motion.

Colours come from the palette, whose contrasts are tested; times of movements from the theme, where
they are 0 for who wants no motion.
"""

import pathlib
import re
import sys
import unittest

# No name of one of our icons, states or properties is among them.
NAMED_COLOURS = """aqua beige black blue brown coral crimson cyan darkblue darkgray darkgreen darkred
dimgray fuchsia gold gray green grey indigo ivory lightblue lightgray lightgreen lightgrey lime magenta
maroon navy olive orange orchid pink plum purple red salmon silver snow tan teal tomato turquoise violet
wheat white whitesmoke yellow""".split()
COLOUR = re.compile(
    r'"#[0-9A-Fa-f]{3,8}"|"(?:' + "|".join(NAMED_COLOURS) + r')"'
    r"|\bQt\.(?:rgba|hsla|hsva|color|lighter|darker|alpha|tint)\b|\bGradientStop\b")
ANIMATION = re.compile(r"\b(\w*(?:Animation|Animator))\s*(?:on\s+[\w.]+\s*)?\{([^{}]*)\}")
# They group others, or do nothing themselves.
GROUPS = {"SequentialAnimation", "ParallelAnimation", "PropertyAction", "ScriptAction"}
ENDLESS = re.compile(
    r"\b(?:AnimatedImage|AnimatedSprite|FrameAnimation|SpringAnimation|SmoothedAnimation)\b"
    r"|\bloops\s*:")


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.DOTALL)


def own_colours(text):
    return COLOUR.findall(without_comments(text))


def unasked_motion(text):
    """Animations whose time is not the theme's, and those that know no time."""
    text = without_comments(text)
    found = [kind for kind, body in ANIMATION.findall(text)
             if kind not in GROUPS and not re.search(r"\bduration\s*:\s*Theme\.motion\b", body)]
    return found + ENDLESS.findall(text)


class Rules(unittest.TestCase):
    def test_colours_are_found(self):
        for colour in ('"#fff"', '"#24000000"', '"white"', "Qt.rgba(0, 0, 0, 1)",
                       "Qt.darker(Theme.on)"):
            self.assertEqual(len(own_colours(f"Rectangle {{\n    color: {colour}\n}}")), 1, colour)

    def test_what_is_no_colour_of_its_own_is_not(self):
        for text in ("color: Theme.card", 'color: "transparent"', '// once it was "white"',
                     'iconName: "gift.fill"'):
            self.assertEqual(own_colours(text), [], text)

    def test_motion_of_its_own_is_found(self):
        for text in ("NumberAnimation {\n    duration: 200\n}", "NumberAnimation {\n}",
                     "NumberAnimation on x {\n    to: 4\n}", "ColorAnimation { duration: 90 }",
                     "SpringAnimation", "RotationAnimator { loops: Animation.Infinite }"):
            self.assertTrue(unasked_motion(text), text)

    def test_motion_in_the_time_of_the_theme_is_not(self):
        text = "Transition {\n    NumberAnimation {\n        duration: Theme.motion\n    }\n}"
        self.assertEqual(unasked_motion(text), [])


class Views(unittest.TestCase):
    root = pathlib.Path()

    def setUp(self):
        self.views = {view: view.read_text(encoding="utf-8")
                      for view in sorted(self.root.glob("src/**/*.qml"))}
        self.assertGreater(len(self.views), 70)

    def test_no_view_has_a_colour_of_its_own(self):
        self.assertEqual(self.found(own_colours), {})

    def test_no_view_moves_where_no_motion_is_asked_for(self):
        self.assertEqual(self.found(unasked_motion), {})

    def found(self, rule):
        return {view.name: found for view, text in self.views.items() if (found := rule(text))}


if __name__ == "__main__":
    Views.root = pathlib.Path(sys.argv.pop())
    unittest.main()
