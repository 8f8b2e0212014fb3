import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    height: 600
    name: "Placeholder"
    visible: true
    when: windowShown
    width: 400

    Placeholder {
        id: placeholder

        iconName: "doc.text"
        text: "No saved bills yet"
        width: test.width
    }

    function init() {
        placeholder.height = 600;
        placeholder.hint = "Bills that you save appear here.";
    }

    // What is seen in the placeholder, from above.
    function shown() {
        return Array.from(placeholder.children[0].children).filter(child => child.visible);
    }

    function test_itShowsAnIconWhatIsMissingAndWhatToDo() {
        const [circle, text, hint] = shown();
        compare(circle.children[0].name, "doc.text");
        compare(text.Accessible.name, "No saved bills yet");
        compare(text.Accessible.role, Accessible.StaticText);
        compare(hint.Accessible.name, "Bills that you save appear here.");
        compare(hint.Accessible.role, Accessible.StaticText);
        compare(text.font.bold, true);
    }

    function test_withoutAHintThereIsNoRoomForOne() {
        placeholder.hint = "";
        const [circle, text, hint] = shown();
        compare(hint, undefined);
        tryVerify(() => placeholder.implicitHeight === circle.height + Theme.lineSpace + text.implicitHeight);
        compare(text.font.bold, false);
    }

    function test_whereTheRoomIsSmallItIsTheWords() {
        placeholder.height = 120;
        compare(shown().map(child => child.text), ["No saved bills yet", "Bills that you save appear here."]);
    }
}
