import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int presses: 0

    height: 200
    name: "Buttons"
    visible: true
    when: windowShown
    width: 400

    IconButton {
        id: button

        accessibleName: "Copy"
        iconName: "doc.on.doc"
        onClicked: ++test.presses
    }

    PushButton {
        id: filled

        fill: Theme.on
        text: "Delete"
        y: 100
    }

    // Around what has the keyboard, in the button's own place.
    function ring(button) {
        return button.background.children[1];
    }

    function init() {
        test.presses = 0;
        button.enabled = true;
        button.forceActiveFocus(Qt.TabFocusReason);
    }

    function test_theMousePressesIt() {
        mouseClick(button);
        compare(test.presses, 1);
    }

    function test_spaceReturnAndEnterPressIt_data() {
        return [{ tag: "space", key: Qt.Key_Space }, { tag: "return", key: Qt.Key_Return }, { tag: "enter", key: Qt.Key_Enter }];
    }

    function test_spaceReturnAndEnterPressIt(data) {
        keyClick(data.key);
        compare(test.presses, 1);
    }

    function test_theRingLeavesAGapToAFilledButton() {
        filled.forceActiveFocus(Qt.TabFocusReason);
        verify(ring(filled).visible);
        verify(ring(filled).x + ring(filled).border.width <= -2);
    }

    function test_theRingStandsInsideAButtonWithoutAGround() {
        verify(ring(button).visible);
        compare(ring(button).width, button.width);
        compare(ring(button).height, button.height);
    }

    function test_itIsLargeEnoughForAFinger() {
        verify(button.width >= 44);
        verify(button.height >= 44);
    }

    function test_aDisabledButtonIsNotPressed() {
        button.enabled = false;
        mouseClick(button);
        button.Accessible.pressAction();
        compare(test.presses, 0);
    }

    function test_assistiveSoftwarePressesIt() {
        button.Accessible.pressAction();
        compare(test.presses, 1);
        compare(button.Accessible.name, "Copy");
        compare(button.Accessible.role, Accessible.Button);
    }
}
