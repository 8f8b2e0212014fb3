"""The program in German: every text of every screen, and the amounts and dates as they were."""

import re
import signal

import clipboard
import screen
import tree
import waiting
from bill_store import BillStore
from case import EndToEndTest
from catalogue_texts import CatalogueTexts, contains, parts
from portal import StillDesktop
from share_desktop import KdeConnect, WholePortal
from tree import Role

# No locale needs to be installed for a language, and money stays American.
GERMAN = {"LANGUAGE": "de", "LC_ALL": "C.UTF-8"}
BILL = {"bill": "100", "people": "4", "tipFromEveryone": "true", "roundShare": "true"}
SUMMARY = """Personen am Tisch: 4.
Die Rechnung betrug $100.00
Service: Gut, Trinkgeld: $20.00

Insgesamt zu zahlen: $120.00
Alle zahlen je $30.00
(Alle zahlen ein Trinkgeld)

Der Anteil wurde aufgerundet.

Berechnung des Trinkgelds: 5\N{NO-BREAK SPACE}% von $100.00"""
# German around an American date.
SAVED_ON = re.compile(r"Gespeichert: [A-Z][a-z]{2} \d\d [A-Z][a-z]{2} \d{4} um \d\d:\d\d\xa0Uhr")
GARBAGE = b"This was never a store.\n" * 500
# So high that nothing of the settings is out of sight.
HIGH_WINDOW = (540, 1040)
# So wide that the list and the page of a bill stand beside each other.
WIDE_WINDOW = (1100, 880)


class GermanTest(EndToEndTest):
    """The base of these tests: a program with a bill of 100 for four."""

    de = CatalogueTexts("de")

    def setUp(self):
        super().setUp()
        self.home.write_preferences(**BILL)

    def start(self, locale=GERMAN):
        self.vexilo = self.launch(locale=locale)

    def press(self, name):
        self.vexilo.press_button(name)

    def dialog(self, title):
        return self.vexilo.expect(Role.DIALOG, title)

    def close(self, title):
        screen.press_keys("Escape")
        self.vexilo.expect_none(Role.DIALOG, title)

    def shown(self):
        """All that the window says: names and descriptions, and what stands in the fields."""
        texts = []
        for node in self.vexilo.nodes():
            texts += [tree.name_of(node), tree.description_of(node)]
        return [text for text in texts if text]

    def assert_german(self, *contexts):
        """No text is English, and every one of these views shows."""
        wanted = [part for text in self.de.of(contexts) for part in parts(text)]
        self.assertTrue(wanted)
        self.vexilo.until(lambda: not self.missing(wanted), f"{contexts} show")
        self.assertEqual([(name, words) for name in self.shown()
                          if (words := self.de.english_words_in(name))], [])

    def missing(self, wanted):
        shown = self.shown()
        return [text for text in wanted if not any(contains(name, text) for name in shown)]


class Calculator(GermanTest):
    def test_the_calculator_and_its_menu_are_german(self):
        self.start()
        self.assert_german("BillRow", "CalculatorToolBar", "OptionsCard", "PeopleRow",
                           "ResultsPanel", "ServiceRow", "MainWindow")
        self.vexilo.expect(Role.LABEL, "GESAMT $120.00")
        self.vexilo.expect(Role.LABEL, "Trinkgeld (5.00 x 4) $20.00")
        self.vexilo.expect(Role.LABEL, "Anteil pro Person $30.00")

        screen.press_keys("alt+h")

        self.vexilo.expect(Role.MENU_ITEM, "Hilfe auf der Website")
        self.assert_german("HelpMenu")

    def test_what_is_said_of_an_amount_is_german(self):
        self.start()
        field = self.vexilo.expect(Role.TEXT, "Rechnungsbetrag")
        for text, notice in (("12x", "Kein Betrag"), ("9" * 17, "Betrag zu groß")):
            tree.set_text(field, text)
            self.vexilo.until(lambda said=notice: any(said in name for name in self.shown()),
                              f"{notice!r} is said")
            self.assert_german("BillRow")

    def test_the_dialogs_are_german(self):
        self.start()
        for context, button, title in (("ClearDialog", "Clear", "Clear this bill?"),
                                       ("SaveDialog", "Save", "Save bill")):
            with self.subTest(context):
                self.press(self.de("CalculatorToolBar", button))
                self.dialog(self.de(context, title))
                self.assert_german(context)
                self.close(self.de(context, title))

    def test_the_summary_is_german_and_its_amounts_are_as_ever(self):
        self.start()
        self.press("Kopieren")

        self.assert_german("CopiedDialog", "Alert")
        self.assertEqual(clipboard.text(), SUMMARY)


class Settings(GermanTest):
    def test_the_settings_are_german(self):
        self.start()
        screen.resize(self.vexilo.window, *HIGH_WINDOW)
        self.press("Einstellungen")
        self.dialog("Einstellungen")

        self.assert_german("SettingsScreen", "GeneralSection", "ThemeSection", "AboutSection")
        self.vexilo.expect(Role.CHECK_BOX, "Währungssymbol $")


class Sharing(GermanTest):
    def test_the_sheet_and_the_code_are_german(self):
        self.enterContext(KdeConnect("Lenas Handy"))
        self.enterContext(WholePortal())
        self.start()
        self.press("Teilen")
        self.dialog("Teilen")
        for row in ("Anteil pro Person kopieren $30.00", "E-Mail", "An Lenas Handy senden", "Drucken"):
            self.vexilo.expect(Role.PUSH_BUTTON, row)
        self.assert_german("ActivityPage", "ActivityScreen", "CopyActivity", "QrCodeActivity",
                           "SaveTextActivity")

        self.press("QR-Code anzeigen")

        self.assert_german("QrCodePage")


class SavedBills(GermanTest):
    def setUp(self):
        super().setUp()
        self.enterContext(StillDesktop())
        self.store = BillStore(self.home)
        self.start()

    def save(self):
        self.press("Speichern")
        dialog = self.dialog("Rechnung speichern")
        self.vexilo.press_button("Speichern", within=dialog)
        self.vexilo.expect_none(Role.DIALOG)

    def open(self):
        self.press("Verlauf")
        self.dialog("Rechnungen")

    def test_an_empty_list_is_german(self):
        self.open()

        self.assert_german("SavedBillsList", "BulkBar")
        self.vexilo.expect(Role.LABEL, "Noch keine gespeicherten Rechnungen")
        self.vexilo.expect(Role.LABEL, "Rechnungen, die Sie speichern, erscheinen hier.")
        screen.resize(self.vexilo.window, *WIDE_WINDOW)
        self.assert_german("HistoryScreen")

    def test_a_bill_is_saved_under_a_german_word_and_the_figures_it_has_everywhere(self):
        self.save()

        waiting.until(lambda: self.store.descriptions() == ["Rechnung"], "the bill is stored")
        self.assertEqual(self.home.preferences()["service"], "1")

    def test_the_list_and_its_questions_are_german(self):
        self.save()
        self.open()
        self.vexilo.expect(Role.LIST_ITEM)
        self.vexilo.expect(Role.PUSH_BUTTON, "$ Gesamt")
        for button, title, context in (
                ("Alte löschen", "Rechnungen löschen, die älter als 6 Monate sind?",
                 "DeleteOldDialog"),
                ("Alle löschen", "Sind Sie sicher?", "DeleteAllDialog")):
            with self.subTest(context):
                self.press(button)
                self.dialog(title)
                self.assert_german(context, "Confirmation")
                self.close(title)
        self.press("$ Gesamt")
        self.vexilo.expect(Role.PUSH_BUTTON, "$ Anteil")

        self.press("Bearbeiten")
        tree.press(self.vexilo.expect(Role.LIST_ITEM))

        self.vexilo.expect(Role.PUSH_BUTTON, "1 löschen")
        self.vexilo.expect(Role.PUSH_BUTTON, "Abbrechen")
        self.assertEqual([name for name in self.shown() if self.de.english_words_in(name)], [])

    def test_the_page_of_a_bill_and_its_dialogs_are_german(self):
        self.save()
        self.open()
        tree.press(self.vexilo.expect(Role.LIST_ITEM))
        self.vexilo.expect(Role.LABEL, "Rechnung $100.00")
        self.vexilo.expect(Role.LABEL, "Service Gut")
        self.assert_german("DetailPage", "DetailLines", "DetailView")
        self.assertTrue(any(SAVED_ON.fullmatch(name) for name in self.shown()), self.shown())
        for button, title, context in (
                ("Umbenennen", "Umbenennen", "RenameDialog"),
                ("Übernehmen", "Die Angaben dieser Rechnung in den Rechner übernehmen?",
                 "UseDialog")):
            with self.subTest(context):
                self.press(button)
                self.dialog(title)
                self.assert_german(context)
                self.close(title)


class UnusableStore(GermanTest):
    def test_what_is_wrong_is_said_in_german_and_logged_in_english(self):
        path = BillStore(self.home).path
        path.parent.mkdir(parents=True)
        path.write_bytes(GARBAGE)
        self.start()
        self.dialog("Die gespeicherten Rechnungen konnten nicht geöffnet werden.")

        self.assert_german("StoreFailure")
        self.assertTrue(any(name.startswith("Nicht behobener Fehler StoreError (corrupt): Der ")
                            for name in self.shown()), self.shown())

        self.press("OK")
        self.assertEqual(self.vexilo.await_exit(), -signal.SIGABRT)
        self.assertIn("Unresolved error StoreError (corrupt): The ", self.vexilo.output())


class Choice(GermanTest):
    """Which language the texts have; people and buttons tell."""

    def assert_language(self, locale, more_people):
        self.start(locale)
        self.vexilo.expect(Role.PUSH_BUTTON, more_people)
        self.vexilo.stop()

    def test_the_locale_of_messages_chooses(self):
        for locale in ({"LC_ALL": "de_DE.UTF-8"}, {"LANG": "de_AT.UTF-8"},
                       {"LANG": "en_US.UTF-8", "LC_MESSAGES": "de_DE.UTF-8"},
                       {"LANG": "en_US.UTF-8", "LANGUAGE": "nl:de:en"}):
            with self.subTest(locale):
                self.assert_language(locale, "Mehr Personen")

    def test_all_others_read_english(self):
        for locale in ({"LC_ALL": "C"}, {"LC_ALL": "nl_NL.UTF-8"},
                       {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "en"},
                       {"LANG": "de_DE.UTF-8", "LC_MESSAGES": "en_GB.UTF-8"},
                       {"LANG": "en_US.UTF-8", "LANGUAGE": "en_US:de"}):
            with self.subTest(locale):
                self.assert_language(locale, "More people")

    def test_the_figures_follow_their_own_locale(self):
        locale = {"LANGUAGE": "de", "LANG": "de_DE.UTF-8", "LC_MONETARY": "en_US.UTF-8",
                  "LC_TIME": "en_US.UTF-8"}
        self.start(locale)

        self.vexilo.expect(Role.LABEL, "GESAMT $120.00")

    def test_the_window_is_mirrored_for_who_reads_from_right_to_left_first(self):
        self.start({"LANG": "he_IL.UTF-8", "LANGUAGE": "he:de"})
        fewer, more = (tree.centre_of(self.vexilo.expect(Role.PUSH_BUTTON, name))[0]
                       for name in ("Weniger Personen", "Mehr Personen"))

        self.assertLess(more, fewer)
