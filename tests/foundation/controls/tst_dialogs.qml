import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int confirmations: 0

    height: 600
    name: "Dialogs"
    visible: true
    when: windowShown
    width: 600

    Confirmation {
        id: confirmation

        confirmText: "Clear"
        title: "Clear this bill?"
        onConfirmed: ++test.confirmations
    }

    Alert {
        id: alert

        message: "It is on the clipboard."
        title: "Copied"
    }

    Sheet {
        id: sheet

        title: "Settings"

        Rectangle {
            id: content

            anchors.fill: parent
        }
    }

    function init() {
        test.confirmations = 0;
    }

    function cleanup() {
        for (const dialog of [confirmation, alert, sheet]) {
            dialog.close();
            tryCompare(dialog, "visible", false);
        }
    }

    function opened(dialog) {
        dialog.open();
        tryCompare(dialog, "opened", true);
        return dialog;
    }

    function test_theSafeChoiceHasTheKeyboard() {
        opened(confirmation);
        keyClick(Qt.Key_Return);
        tryCompare(confirmation, "visible", false);
        compare(test.confirmations, 0);
    }

    function test_theDestructiveChoiceConfirms() {
        opened(confirmation);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Space);
        tryCompare(confirmation, "visible", false);
        compare(test.confirmations, 1);
    }

    function test_escapeClosesAndConfirmsNothing_data() {
        return [{ tag: "confirmation", dialog: confirmation }, { tag: "alert", dialog: alert }, { tag: "sheet", dialog: sheet }];
    }

    function test_escapeClosesAndConfirmsNothing(data) {
        opened(data.dialog);
        keyClick(Qt.Key_Escape);
        tryCompare(data.dialog, "visible", false);
        compare(test.confirmations, 0);
    }

    function test_anAlertIsClosedByItsButton() {
        opened(alert);
        keyClick(Qt.Key_Space);
        tryCompare(alert, "visible", false);
    }

    function test_aDialogFitsIntoANarrowWindow() {
        const window = test.Window.window;
        const width = window.width;
        window.width = 300;
        tryCompare(window.contentItem, "width", 300);
        opened(confirmation);
        tryCompare(confirmation, "width", 300 - 2 * Theme.margin);
        fuzzyCompare(confirmation.x, Theme.margin, 1);
        window.width = width;
        tryCompare(window.contentItem, "width", width);
    }

    function test_buttonsStackWhereAWordWouldBeBroken() {
        opened(confirmation);
        const cancel = confirmation.initialFocus;
        const clear = cancel.parent.children[1];
        fuzzyCompare(cancel.y, clear.y, 1);
        fuzzyCompare(cancel.width, clear.width, 1);
        const besideEachOther = cancel.width;

        confirmation.confirmText = "Donaudampfschifffahrtsgesellschaft now";

        tryVerify(() => clear.y >= cancel.y + cancel.height);
        fuzzyCompare(clear.x, cancel.x, 1);
        verify(clear.width > 2 * besideEachOther);
        verify(clear.wordWidth <= clear.width);
        confirmation.confirmText = "Clear";
        tryVerify(() => clear.y === cancel.y);
    }

    function test_buttonsOfSeveralWordsWrapBesideEachOther() {
        opened(confirmation);
        const cancel = confirmation.initialFocus;
        const clear = cancel.parent.children[1];

        confirmation.confirmText = "Clear this bill and all that is in it";

        tryVerify(() => clear.contentItem.lineCount > 1);
        compare(clear.y, cancel.y);
        confirmation.confirmText = "Clear";
        tryCompare(clear.contentItem, "lineCount", 1);
    }

    function test_theKeyboardIsSeenOnTheSafeChoice() {
        opened(confirmation);
        const cancel = confirmation.initialFocus;
        compare(cancel.activeFocus, true);
        verify(cancel.focusReason !== Qt.MouseFocusReason);
    }

    function test_aSheetStandsAtTheBottomAndShowsItsContent() {
        opened(sheet);
        verify(sheet.y > 0);
        verify(sheet.y + sheet.height >= 600);
        verify(content.height > 300);
        compare(sheet.title, "Settings");
    }
}
