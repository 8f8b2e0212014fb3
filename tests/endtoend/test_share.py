"""The share sheet: where the summary of the bill can go from here."""

import subprocess
import urllib.parse

import clipboard
import screen
import tree
import waiting
from accessible_walk import AccessibleWalk
from case import EndToEndTest
from colours import DARK_PAGE, LIGHT_PAGE, expect_page
from portal import CANCELLED, EMAIL, FAILED, StillDesktop
from share_desktop import OPEN, KdeConnect, SharePortal, WholePortal
from test_copying import BILL, SUMMARY
from tree import Role, State

SHEET = "Share"
NOT_SHARED = "The text could not be shared."
COPY, EXCERPT, CODE = "Copy text", "Copy share per person $30.00", "Show QR code"
EMAIL_ROW, MESSAGE, PHONE = "E-mail", "Text message", "Send to Lena's phone"
SAVE, PDF, PRINT_ROW = "Save as text file", "Save as PDF", "Print"
NBSP = "\N{NO-BREAK SPACE}"
BARE = [COPY, EXCERPT, CODE]
HANDLER = "[Desktop Entry]\nType=Application\nName=Handler\nExec={} %u\n"


class ShareTest(EndToEndTest):
    """The base of these tests: a program with a bill of 100 for four, on a desktop without motion."""

    desktop = StillDesktop

    def setUp(self):
        super().setUp()
        self.home.write_preferences(**BILL)

    def start(self, portal=None, **options):
        """Starts the program on a desktop with that portal and returns the portal."""
        desktop = self.enterContext(portal or self.desktop())
        self.vexilo = self.launch(**options)
        return desktop

    def open(self, *rows):
        """Presses Share and waits for the sheet with these rows."""
        self.vexilo.press_button("Share")
        self.sheet = self.vexilo.expect(Role.DIALOG, SHEET)
        self.vexilo.until(lambda: self.rows() == list(rows or BARE), f"the sheet offers {rows}")

    def rows(self):
        names = [tree.name_of(node) for node in tree.find_all(self.sheet, Role.PUSH_BUTTON)]
        return [name for name in names if name != "Cancel"]

    def choose(self, row):
        self.vexilo.press_button(row, within=self.sheet)

    def expect_closed(self):
        self.vexilo.expect_none(Role.DIALOG)

    def read_code(self):
        """What a QR reader reads in the picture of the window."""
        picture = subprocess.run(["import", "-silent", "-window", self.vexilo.window, "png:-"],
                                 check=True, capture_output=True).stdout
        return subprocess.run(
            ["zbarimg", "--quiet", "--raw", "--oneshot", "-Sbinary", "png:-"], input=picture,
            check=False, capture_output=True).stdout.decode("utf-8")

    def associate(self, scheme, program):
        """Makes a program the handler of a scheme, as its installation would."""
        applications = self.home.file("data") / "applications"
        applications.mkdir()
        (applications / "handler.desktop").write_text(HANDLER.format(program), encoding="utf-8")
        (applications / "mimeinfo.cache").write_text(
            f"[MIME Cache]\nx-scheme-handler/{scheme}=handler.desktop;\n", encoding="utf-8")


class Sheet(ShareTest):
    def test_a_bare_desktop_has_copying_and_the_code(self):
        # A phone is asked for last and answers twice: when it shows, nothing else is awaited.
        self.enterContext(KdeConnect("Lena's phone"))
        self.start()
        self.open(*BARE, PHONE)

    def test_a_desktop_that_has_everything_offers_everything(self):
        self.enterContext(KdeConnect("Lena's phone"))
        self.associate("sms", "messages")
        self.start(WholePortal())

        self.open(COPY, EXCERPT, CODE, EMAIL_ROW, MESSAGE, PHONE, SAVE, PRINT_ROW)

    def test_the_keyboard_goes_through_the_sheet_and_copies(self):
        self.start()
        tree.focus(self.vexilo.expect(Role.PUSH_BUTTON, "Share"))
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Share")
        screen.press_keys("Return")
        self.vexilo.expect(Role.DIALOG, SHEET)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, COPY)

        for key, name in (("Tab", EXCERPT), ("Tab", CODE), ("Tab", "Cancel"), ("Tab", COPY),
                          ("Down", EXCERPT), ("Down", CODE), ("Up", EXCERPT)):
            screen.press_keys(key)
            self.vexilo.expect_focus(Role.PUSH_BUTTON, name)
        screen.press_keys("Return")

        self.expect_closed()
        self.vexilo.until(lambda: clipboard.text() == "$30.00", "the share is on the clipboard")
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Share")

    def test_copying_puts_the_summary_on_the_clipboard(self):
        self.start()
        self.open()

        self.choose(COPY)

        self.expect_closed()
        self.vexilo.until(lambda: clipboard.text() == SUMMARY, "the summary is on the clipboard")

    def test_escape_cancel_and_a_click_beside_it_close_the_sheet(self):
        self.start()
        left, top = screen.origin_of(self.vexilo.window)
        for close in (lambda: screen.press_keys("Escape"), lambda: self.choose("Cancel")):
            self.open()
            close()
            self.expect_closed()
        self.open()

        # What may be the second press of a double click is not heeded, a later one is.
        def click_and_look():
            screen.click(left + 200, top + 10)
            return not self.vexilo.find(Role.DIALOG)
        self.vexilo.until(click_and_look, "a click beside it closes the sheet")

    def test_a_double_click_on_share_opens_the_sheet_once(self):
        self.vexilo = self.launch()
        self.assert_a_double_click_opens_it_once()

    def test_without_motion_a_double_click_on_share_opens_the_sheet_once(self):
        self.start()  # on a desktop where the sheet is there between the two clicks
        self.assert_a_double_click_opens_it_once()

    def assert_a_double_click_opens_it_once(self):
        button = self.vexilo.expect(Role.PUSH_BUTTON, "Share")

        screen.double_click(*tree.centre_of(button))

        self.sheet = self.vexilo.expect(Role.DIALOG, SHEET)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, COPY)
        screen.press_keys("Down")  # heeded after both clicks, so that their effect would be seen
        self.vexilo.expect_focus(Role.PUSH_BUTTON, EXCERPT)
        self.assertEqual(self.rows(), BARE)

    def test_the_sheet_has_the_text_of_its_moment(self):
        self.start()
        self.open()
        screen.press_keys("Escape")
        self.expect_closed()

        self.vexilo.set_bill("10")
        self.open(COPY, "Copy share per person $3.00", CODE)
        self.choose(COPY)

        self.vexilo.until(lambda: "\nThe bill came to $10.00\n" in clipboard.text(),
                          "the new summary is on the clipboard")

    def test_nothing_of_the_sheet_is_loaded_before_it_opens(self):
        self.start(environment={"QT_LOGGING_RULES": "qt.qml.import.debug=true"})
        self.assertTrue("Vexilo/Controls/qmldir" in self.vexilo.output())
        self.assertFalse("Vexilo/Share" in self.vexilo.output())

        self.open()

        self.assertTrue("Vexilo/Share/qmldir" in self.vexilo.output())


class Code(ShareTest):
    def test_the_code_is_read_from_the_screen_in_both_themes(self):
        for theme, page in (("1", LIGHT_PAGE), ("2", DARK_PAGE)):
            with self.subTest(theme=theme):
                self.home.write_preferences(**BILL, theme=theme)
                with StillDesktop():
                    self.vexilo = self.launch(locale={"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "en"})
                    expect_page(self.vexilo, page)
                    self.open(COPY, f"Copy share per person 30,00{NBSP}€", CODE)
                    self.choose(CODE)
                    self.vexilo.expect_focus(Role.PUSH_BUTTON, "Done")

                    self.vexilo.until(lambda: f"The bill came to 100,00{NBSP}€\n" in self.read_code(),
                                      "the code is read")
                    self.vexilo.stop()

    def test_the_code_is_as_wide_as_the_sheet(self):
        self.start()
        self.open()
        self.choose(CODE)
        code = self.vexilo.until(
            lambda: next((node for node in tree.nodes(self.sheet)
                          if tree.role_of(node) == Role.IMAGE and tree.has(node, State.SHOWING)),
                         None), "the code shows")

        self.assertEqual(tree.name_of(code), "QR code")
        self.assertEqual(tree.description_of(code), SUMMARY)
        self.assertGreater(tree.extents_of(code).width, 450)

    def test_back_leads_to_the_destinations_and_done_closes(self):
        self.start()
        self.open()
        self.choose(CODE)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Done")
        self.choose("Back")
        self.vexilo.until(lambda: self.rows() == BARE, "the destinations are back")

        self.choose(CODE)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Done")
        screen.press_keys("Return")

        self.expect_closed()


class Sending(ShareTest):
    def test_the_portal_is_asked_to_compose_the_summary(self):
        portal = self.start(SharePortal(EMAIL))
        self.open(*BARE, EMAIL_ROW)

        self.choose(EMAIL_ROW)

        self.expect_closed()
        self.assertEqual([call.options for call in portal.calls],
                         [{"subject": "Vexilo", "body": SUMMARY}])
        self.assertEqual(portal.calls[0].parent, f"x11:{int(self.vexilo.window):x}")

    def test_where_the_portal_fails_the_mail_program_gets_the_summary(self):
        self.home.add_recorder("xdg-email")
        self.start(SharePortal(EMAIL, responses={"ComposeEmail": FAILED}))
        self.open(*BARE, EMAIL_ROW)

        self.choose(EMAIL_ROW)

        self.expect_closed()
        self.assertEqual(self.home.recorded_arguments("xdg-email"),
                         ["--utf8", "--subject", "Vexilo", "--body", SUMMARY])

    def test_who_cancels_at_the_portal_is_not_asked_again(self):
        self.home.add_recorder("xdg-email")
        portal = self.start(SharePortal(EMAIL, responses={"ComposeEmail": CANCELLED}))
        self.open(*BARE, EMAIL_ROW)

        self.choose(EMAIL_ROW)

        self.expect_closed()
        self.assertEqual(portal.methods(), ["ComposeEmail"])
        self.assertIsNone(self.home.recorded_arguments("xdg-email"))

    def test_without_a_portal_the_mail_program_gets_the_summary(self):
        self.home.add_recorder("xdg-email")
        self.associate("mailto", "letters")
        self.start()
        self.open(*BARE, EMAIL_ROW)

        self.choose(EMAIL_ROW)

        self.expect_closed()
        self.assertEqual(self.home.recorded_arguments("xdg-email")[-1], SUMMARY)

    def test_a_mail_program_that_is_still_starting_outlives_the_window(self):
        gate = self.home.file("gate")
        self.home.add_recorder("xdg-email", wait_for=gate)
        self.associate("mailto", "letters")
        self.start()
        self.open(*BARE, EMAIL_ROW)
        self.choose(EMAIL_ROW)
        self.vexilo.until(gate.with_suffix(".reached").exists, "the mail program is starting")

        self.vexilo.quit()
        gate.touch()

        waiting.until(lambda: self.home.recorded_arguments("xdg-email"), "the letter is composed")

    def test_where_xdg_email_fails_what_opens_addresses_gets_the_summary(self):
        self.home.add_recorder("xdg-email", exit_code=3)
        self.home.add_recorder("xdg-open")
        self.associate("mailto", "letters")
        self.start()
        self.open(*BARE, EMAIL_ROW)

        self.choose(EMAIL_ROW)

        self.expect_closed()
        address, = waiting.until(lambda: self.home.recorded_arguments("xdg-open"),
                                 "the address is opened")
        letter = urllib.parse.parse_qs(urllib.parse.urlsplit(address).query)
        self.assertEqual(letter, {"subject": ["Vexilo"], "body": [SUMMARY.replace("\n", "\r\n")]})

    def test_where_the_portal_goes_away_the_mail_program_gets_the_summary(self):
        self.home.add_recorder("xdg-email")
        with SharePortal(EMAIL, responses={"ComposeEmail": OPEN}) as portal:
            self.vexilo = self.launch()
            self.open(*BARE, EMAIL_ROW)
            self.choose(EMAIL_ROW)
            self.vexilo.until(portal.methods, "the portal is asked")

        self.expect_closed()
        self.assertEqual(self.home.recorded_arguments("xdg-email")[-1], SUMMARY)

    def test_the_program_ends_while_the_portal_is_busy_with_a_request(self):
        for end in (self.quit, self.close_window):
            with (self.subTest(end=end.__name__),
                  SharePortal(EMAIL, responses={"ComposeEmail": OPEN}) as portal):
                self.vexilo = self.launch()
                self.open(*BARE, EMAIL_ROW)
                self.choose(EMAIL_ROW)
                self.vexilo.until(portal.methods, "the portal is asked")

                self.assertEqual(end(), 0)

    def quit(self):
        return self.vexilo.quit()

    def close_window(self):
        screen.press_keys("alt+F4")  # heeded by the window manager
        return self.vexilo.await_exit()

    def test_a_phone_gets_the_summary(self):
        phone = self.enterContext(KdeConnect("Lena's phone"))
        self.start()
        self.open(*BARE, PHONE)

        self.choose(PHONE)

        self.expect_closed()
        self.assertEqual(phone.texts, [SUMMARY])


class Keeping(ShareTest):
    def open_whole(self, portal):
        portal = self.start(portal)
        self.open(*BARE, EMAIL_ROW, SAVE, PRINT_ROW)
        return portal

    def test_the_summary_is_saved(self):
        file = self.home.file("bill.txt")
        portal = self.open_whole(WholePortal(saved_as=file))

        self.choose(SAVE)

        self.expect_closed()
        self.assertEqual(file.read_text(encoding="utf-8"), SUMMARY)
        self.assertEqual([call.options for call in portal.calls],
                         [{"current_name": "Vexilo.txt"}])

    def test_cancelling_the_file_chooser_saves_nothing(self):
        file = self.home.file("bill.txt")
        self.open_whole(WholePortal(saved_as=file, responses={"SaveFile": CANCELLED}))

        self.choose(SAVE)

        self.expect_closed()
        self.assertFalse(file.exists())

    def test_a_file_that_cannot_be_written_is_told(self):
        self.open_whole(WholePortal(saved_as=self.home.file("nowhere") / "bill.txt"))

        self.choose(SAVE)

        dialog = self.vexilo.expect(Role.DIALOG, NOT_SHARED)
        self.assertIn("No such file or directory", tree.describe(dialog))
        self.vexilo.press_button("OK", within=dialog)
        self.expect_closed()

    def test_the_summary_is_printed(self):
        portal = self.open_whole(WholePortal())

        self.choose(PRINT_ROW)

        self.expect_closed()
        self.assertEqual(portal.methods(), ["PreparePrint", "Print"])
        self.assertEqual(portal.calls[1].options, {"token": 5})
        printed = subprocess.run(["pdftotext", "-", "-"], input=portal.calls[1].document,
                                 check=True, capture_output=True).stdout.decode("utf-8")
        self.assertIn("Everyone pays $30.00", printed)

    def test_cancelling_the_print_dialog_prints_nothing(self):
        portal = self.open_whole(WholePortal(responses={"PreparePrint": CANCELLED}))

        self.choose(PRINT_ROW)

        self.expect_closed()
        self.assertEqual(portal.methods(), ["PreparePrint"])


class AccessibleSheet(AccessibleWalk, ShareTest):
    def test_everything_is_named_and_can_be_reached(self):
        self.enterContext(KdeConnect("Lena's phone"))
        self.start(WholePortal())
        self.open(COPY, EXCERPT, CODE, EMAIL_ROW, PHONE, SAVE, PRINT_ROW)

        met = [(tree.role_of(node), tree.name_of(node)) for node in tree.nodes(self.sheet)
               if tree.has(node, State.SHOWING) and tree.name_of(node)]
        self.assertEqual(met, [
            (Role.DIALOG, SHEET), (Role.HEADING, SHEET), (Role.PUSH_BUTTON, "Cancel"),
            (Role.LABEL, SUMMARY),
            *((Role.PUSH_BUTTON, name)
              for name in (COPY, EXCERPT, CODE, EMAIL_ROW, PHONE, SAVE, PRINT_ROW))])
        self.assert_named(tree.nodes(self.sheet))
        self.assert_focusable(tree.nodes(self.sheet))

    def test_everything_of_the_code_is_named_and_can_be_reached(self):
        self.start()
        self.open()
        self.choose(CODE)
        self.vexilo.expect_focus(Role.PUSH_BUTTON, "Done")

        nodes = [node for node in tree.nodes(self.sheet) if tree.has(node, State.SHOWING)]
        self.assert_named(nodes)
        self.assert_focusable(nodes)
