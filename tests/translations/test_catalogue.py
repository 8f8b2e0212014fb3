"""That what is wrong with a catalogue is seen."""

import sys
import unittest

sys.dont_write_bytecode = True

import catalogue  # noqa: E402

MESSAGE = "<message><source>{}</source><translation{}>{}</translation></message>"


def document(*messages):
    return f"<TS><context><name>Screen</name>{''.join(messages)}</context></TS>"


def message(source, translation, kind=""):
    return MESSAGE.format(source, f' type="{kind}"' if kind else "", translation)


class Faults(unittest.TestCase):
    def faults(self, *messages, wanted=None):
        whole = document(*messages)
        return catalogue.faults(whole, document(*wanted) if wanted is not None else whole)

    def test_a_whole_catalogue_has_none(self):
        self.assertEqual(self.faults(message("Waiting…", "Warten …"), message("Tip %1", "%1 Tip"),
                                     message("Use 'Bill'", "Für „Rechnung“")), [])

    def test_a_new_text_is_missing(self):
        self.assertEqual(self.faults(message("Yes", "Ja"),
                                     wanted=[message("Yes", "Ja"), message("No", "")]),
                         ["('Screen', 'No', '') is missing"])

    def test_a_text_that_went_is_seen(self):
        self.assertEqual(self.faults(message("Yes", "Ja"), message("No", "Nein"),
                                     wanted=[message("Yes", "Ja")]),
                         ["('Screen', 'No', '') is no text of the sources"])

    def test_sources_without_texts_are_seen(self):
        self.assertEqual(self.faults(wanted=[]), ["the sources have no text"])

    def test_what_is_wrong_with_a_translation_is_seen(self):
        for source, translation, kind in (
                ("Yes", "Ja", "unfinished"), ("Yes", "Ja", "vanished"), ("Yes", "Ja", "obsolete"),
                ("Yes", "", ""), ("%1 at %2", "%1", ""), ("%1", "%1 %2", ""), ("%n bills", "Rechnungen", ""),
                ("Tip ", "Trinkgeld", ""), ("Tip", " Trinkgeld", ""), ("Sure?", "Sicher", ""),
                ("Waiting…", "Warten", ""), ("Name:", "Name", ""), ("Saved", "Gespeichert.", ""),
                ("(Saved.)", "(Gespeichert)", ""), ("A\nB", "A B", ""), ("&amp;Help", "Hilfe", "")):
            with self.subTest(source=source, translation=translation, kind=kind):
                self.assertEqual(len(self.faults(message(source, translation, kind))), 1)

    def test_every_form_of_a_plural_is_read(self):
        forms = "<numerusform>%n Rechnung</numerusform><numerusform>Rechnungen</numerusform>"
        self.assertEqual(len(self.faults(message("%n bills", forms))), 1)


if __name__ == "__main__":
    unittest.main()
