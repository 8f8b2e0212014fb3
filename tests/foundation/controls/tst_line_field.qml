import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int acceptances: 0

    height: 200
    name: "LineField"
    visible: true
    when: windowShown
    width: 400

    Item {
        id: elsewhere

        focus: true
    }

    LineField {
        id: field

        name: "Description"
        onAccepted: ++test.acceptances
    }

    function init() {
        test.acceptances = 0;
        field.text = "Lunch";
        field.invalid = false;
        field.notice = "";
        elsewhere.forceActiveFocus();
    }

    // What the field shows while it is empty.
    function placeholder() {
        for (let i = 0; i < field.children.length; ++i) {
            if (field.children[i].text === "Description")
                return field.children[i];
        }
        fail("no placeholder");
    }

    function test_enteringSelectsTheWholeTextSoThatTypingReplacesIt() {
        field.forceActiveFocus(Qt.TabFocusReason);
        compare(field.selectedText, "Lunch");
        keyClick(Qt.Key_X);
        compare(field.text, "x");
    }

    function test_thePlaceholderIsShownOnlyWhileTheFieldIsEmpty() {
        compare(placeholder().visible, false);
        field.forceActiveFocus();
        keyClick(Qt.Key_Delete);
        compare(field.text, "");
        compare(placeholder().visible, true);
        keyClick(Qt.Key_X);
        compare(placeholder().visible, false);
    }

    function test_blanksAreAText() {
        field.text = "  ";
        compare(placeholder().visible, false);
    }

    function test_aShownTextKeepsTheCursorInside_data() {
        return [{ tag: "same length", text: "LUNCH", cursor: 3, kept: 3 }, { tag: "longer", text: "Luncheon", cursor: 3, kept: 3 }, { tag: "shorter", text: "Lu", cursor: 4, kept: 2 }, { tag: "empty", text: "", cursor: 4, kept: 0 }];
    }

    function test_aShownTextKeepsTheCursorInside(data) {
        field.forceActiveFocus();
        field.cursorPosition = data.cursor;
        field.show(data.text);
        compare(field.text, data.text);
        compare(field.cursorPosition, data.kept);
    }

    function test_theTextThatIsShownAlreadyLeavesTheSelection() {
        field.forceActiveFocus();
        field.selectAll();
        field.show("Lunch");
        compare(field.selectedText, "Lunch");
    }

    function test_textOfEveryScriptIsTaken() {
        field.show("\u0639\u0634\u0627\u0621 \u6669\u9910");
        compare(field.text, "\u0639\u0634\u0627\u0621 \u6669\u9910");
        compare(field.acceptableInput, true);
    }

    function test_returnIsPassedOn() {
        field.forceActiveFocus();
        keyClick(Qt.Key_Return);
        compare(test.acceptances, 1);
    }

    function test_aRefusedTextIsMarkedVisiblyAndSaid() {
        field.forceActiveFocus();
        const border = field.background.border;
        const valid = border.color.toString();
        compare(border.width, 2);
        field.invalid = true;
        field.notice = "Description too long";
        verify(border.color.toString() !== valid);
        compare(border.width, 3);
        compare(field.Accessible.description, "Description too long");
    }

    function test_assistiveSoftwareReadsWhatItAsksFor() {
        compare(field.Accessible.name, "Description");
        compare(field.Accessible.role, Accessible.EditableText);
    }

    function test_itIsLargeEnoughForAFinger() {
        verify(field.height >= 44);
    }
}
