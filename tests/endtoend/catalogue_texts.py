"""The texts of the program in another language, as its catalogue has them."""

import pathlib
import re
import xml.etree.ElementTree as ET

FOLDER = pathlib.Path(__file__).resolve().parents[2] / "translations"
PLACE = re.compile(r"%\d")


class CatalogueTexts:
    """One language's catalogue: `texts("SaveDialog", "Save")` is what that says in it."""

    def __init__(self, language):
        self._texts = {}
        for context in ET.parse(FOLDER / f"vexilo_{language}.ts").iter("context"):
            for message in context.iter("message"):
                key = context.findtext("name"), message.findtext("source")
                self._texts[key] = message.findtext("translation")

    def __call__(self, context, source):
        return self._texts[context, source]

    def of(self, contexts):
        """All texts of some contexts, in the language of the catalogue."""
        return [text for (context, _), text in self._texts.items() if context in contexts]

    def english_words_in(self, name):
        """What a name has of the English texts that are others in this language."""
        return [part for part in self._english_parts() if contains(name, part)]

    def _english_parts(self):
        for (_, source), text in self._texts.items():
            if source != text:
                yield from parts(source)


def parts(text):
    """What a text has around its places, where that has a letter."""
    return [part.strip() for part in PLACE.split(text) if re.search(r"[^\W\d_]", part)]


def contains(name, part):
    """Whether a name has these words, and not only as a part of others."""
    return re.search(rf"(?<!\w){re.escape(part)}(?!\w)", name) is not None
