import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int copies: 0

    height: 200
    name: "AmountField"
    visible: true
    when: windowShown
    width: 400

    Item {
        id: elsewhere

        focus: true
    }

    AmountField {
        id: field

        name: "Bill to Split"
        text: "133.5"
        onCopyRequested: ++test.copies
    }

    function init() {
        test.copies = 0;
        field.text = "133.5";
        field.invalid = false;
        elsewhere.forceActiveFocus();
    }

    function test_enteringSelectsTheWholeTextSoThatTypingReplacesIt() {
        field.forceActiveFocus(Qt.TabFocusReason);
        compare(field.selectedText, "133.5");
        keyClick("7");
        compare(field.text, "7");
    }

    function test_clickingIntoItSelectsTheWholeText() {
        mouseClick(field);
        compare(field.selectedText, "133.5");
    }

    function test_aRefusedTextIsMarkedVisibly() {
        field.forceActiveFocus();
        const border = field.background.border;
        const valid = border.color.toString();
        compare(border.width, 2);
        field.invalid = true;
        verify(border.color.toString() !== valid);
        compare(border.width, 3);
    }

    function test_copyIsPassedOnWhereNothingIsSelected() {
        field.forceActiveFocus();
        field.deselect();
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(test.copies, 1);
    }

    function test_copyIsPassedOnWhereOnlyEnteringSelectedTheText() {
        field.forceActiveFocus();
        compare(field.selectedText, "133.5");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(test.copies, 1);
    }

    function test_copyOfAPartThatIsSelectedByKeysStaysInTheField() {
        field.forceActiveFocus();
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Left, Qt.ShiftModifier);
        compare(field.selectedText, "5");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(test.copies, 0);
    }

    function test_copyOfASelectionStaysInTheField() {
        field.forceActiveFocus();
        keyClick(Qt.Key_A, Qt.ControlModifier);
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(test.copies, 0);
        field.clear();
        field.paste();
        compare(field.text, "133.5");
    }

    function test_assistiveSoftwareHearsWhatIsWrong() {
        field.notice = "Not an amount";
        compare(field.Accessible.description, "Not an amount");
        compare(field.Accessible.name, "Bill to Split");
        field.notice = "";
    }
}
