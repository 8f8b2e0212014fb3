"""What must hold for a catalogue of translations: that it is whole, and says what the texts say."""

import re
import xml.etree.ElementTree as ET

PLACE = re.compile(r"%(?:L?\d+|L?n)")
# How a sentence ends: what is closed with it does not matter.
END = re.compile(r"(…|\.\.\.|[.:!?])?[\"'”“»«)\]]*$")


class Message:
    """One text of a source, and how it is translated."""

    def __init__(self, context, element):
        self.key = (context, element.findtext("source") or "", element.findtext("comment") or "")
        translation = element.find("translation")
        self.state = translation.get("type", "finished")
        forms = translation.findall("numerusform")
        self.translations = [form.text or "" for form in forms] or [translation.text or ""]

    def faults(self):
        if self.state != "finished":
            yield f"is {self.state}"
        for text in self.translations:
            yield from self._faults_in(text)

    def _faults_in(self, text):
        source = self.key[1]
        if not text.strip():
            yield "is empty"
            return
        for what, part in (("places", lambda of: sorted(set(PLACE.findall(of)))),
                           ("blanks at the ends", blanks),
                           ("end of the sentence", lambda of: END.search(of.strip())[1]),
                           ("line feeds", lambda of: of.count("\n")),
                           ("menu keys", lambda of: len(re.findall(r"&(?!&)", of)))):
            if part(source) != part(text):
                yield f"has other {what}: {text!r}"


def blanks(text):
    return text[:len(text) - len(text.lstrip())], text[len(text.rstrip()):]


def messages(document):
    """The messages of a catalogue by context, text and comment."""
    found = {}
    for context in ET.fromstring(document).iter("context"):
        for element in context.iter("message"):
            message = Message(context.findtext("name"), element)
            found[message.key] = message
    return found


def faults(catalogue, wanted):
    """What is wrong with a catalogue, where the wanted one has what the sources say today."""
    has, shall = messages(catalogue), messages(wanted)
    if not shall:
        return ["the sources have no text"]
    found = [f"{key} is missing" for key in shall if key not in has]
    found += [f"{key} is no text of the sources" for key in has if key not in shall]
    found += [f"{key} {fault}" for key, message in has.items() for fault in message.faults()]
    return found
