import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int confirmations: 0
    property var offered: []

    height: 600
    name: "TextPrompt"
    visible: true
    when: windowShown
    width: 600

    // Stands for the state behind the dialog: takes letters as capitals, and no digit.
    QtObject {
        id: state

        property string notice: ""
        property string text: ""

        function edit(typed: string) {
            test.offered.push(typed);
            if (typed === state.text)
                return;
            state.notice = /[0-9]/.test(typed) ? "No digits" : "";
            if (state.notice === "")
                state.text = typed.toUpperCase();
            // Said also where the text is the old one: the field shows another.
            state.textChanged();
            state.noticeChanged();
        }
    }

    TextPrompt {
        id: prompt

        confirmText: "Rename"
        message: "Leave blank to use 'Bill'"
        notice: state.notice
        placeholder: "Description"
        title: "Rename"
        value: state.text
        onConfirmed: ++test.confirmations
        onEdited: text => state.edit(text)
    }

    function init() {
        state.text = "LUNCH";
        state.notice = "";
        prompt.open();
        tryCompare(prompt, "opened", true);
        test.confirmations = 0;
        test.offered = [];
    }

    function cleanup() {
        prompt.close();
        tryCompare(prompt, "visible", false);
    }

    function field() {
        return prompt.initialFocus;
    }

    function test_itOpensWithTheWholeTextSelectedInTheField() {
        compare(field().activeFocus, true);
        compare(field().text, "LUNCH");
        compare(field().selectedText, "LUNCH");
    }

    function test_openingItOffersNothing() {
        compare(test.offered, []);
    }

    function test_typingReplacesTheTextAndIsOffered() {
        keyClick(Qt.Key_X);
        compare(test.offered[0], "x");
        compare(state.text, "X");
    }

    function test_theFieldShowsWhatTheStateMadeOfTheText() {
        keyClick(Qt.Key_D);
        keyClick(Qt.Key_I);
        compare(field().text, "DI");
        compare(state.text, "DI");
    }

    function test_refusedTextIsPutBackWithTheCursorKept() {
        field().deselect();
        field().cursorPosition = 2;
        keyClick(Qt.Key_7);
        compare(state.text, "LUNCH");
        compare(field().text, "LUNCH");
        compare(field().cursorPosition, 3);
        keyClick(Qt.Key_Backspace);
        compare(field().text, "LUCH");
    }

    function test_aTextRefusedTwiceIsPutBackTwice() {
        field().deselect();
        field().cursorPosition = 5;
        keyClick(Qt.Key_7);
        keyClick(Qt.Key_7);
        compare(field().text, "LUNCH");
        compare(field().cursorPosition, 5);
    }

    function test_aRefusalIsShownAndSaid() {
        const border = field().background.border.color.toString();
        field().deselect();
        keyClick(Qt.Key_7);
        compare(field().invalid, true);
        compare(field().Accessible.description, "No digits");
        verify(field().background.border.color.toString() !== border);
        keyClick(Qt.Key_X);
        compare(field().invalid, false);
        compare(field().Accessible.description, "");
    }

    function test_returnAndEnterConfirm_data() {
        return [{ tag: "return", key: Qt.Key_Return }, { tag: "enter", key: Qt.Key_Enter }];
    }

    function test_returnAndEnterConfirm(data) {
        keyClick(data.key);
        tryCompare(prompt, "visible", false);
        compare(test.confirmations, 1);
    }

    function test_escapeCancels() {
        keyClick(Qt.Key_X);
        keyClick(Qt.Key_Escape);
        tryCompare(prompt, "visible", false);
        compare(test.confirmations, 0);
    }

    function test_tabReachesCancelAndThenTheAction() {
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Space);
        tryCompare(prompt, "visible", false);
        compare(test.confirmations, 1);

        prompt.open();
        tryCompare(prompt, "opened", true);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Space);
        tryCompare(prompt, "visible", false);
        compare(test.confirmations, 1);
    }

    function test_openedAgainItStartsWithTheTextOfTheState() {
        keyClick(Qt.Key_X);
        keyClick(Qt.Key_Escape);
        tryCompare(prompt, "visible", false);
        state.text = "DINNER";
        prompt.open();
        tryCompare(prompt, "opened", true);
        compare(field().text, "DINNER");
        compare(field().selectedText, "DINNER");
    }

    function test_theFieldIsNamedByWhatItAsksFor() {
        compare(field().Accessible.name, "Description");
        compare(field().Accessible.role, Accessible.EditableText);
        compare(prompt.title, "Rename");
    }
}
