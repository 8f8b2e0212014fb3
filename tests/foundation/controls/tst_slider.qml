import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property real percent: 50
    property int placings: 0

    height: 200
    name: "Slider"
    visible: true
    when: windowShown
    width: 400

    Slider {
        id: slider

        accessibleName: "Good"
        from: 1
        place: test.percent
        to: 100
        width: 400
        onPlaced: value => {
            test.percent = value;
            test.placings += 1;
        }
    }

    function init() {
        test.percent = 50;
        test.placings = 0;
        slider.enabled = true;
        slider.heedsWheel = true;
        slider.forceActiveFocus(Qt.TabFocusReason);
    }

    function test_keysMoveIt_data() {
        return [{ tag: "right", key: Qt.Key_Right, place: 51 }, { tag: "left", key: Qt.Key_Left, place: 49 }, { tag: "up", key: Qt.Key_Up, place: 51 }, { tag: "down", key: Qt.Key_Down, place: 49 }, { tag: "page up", key: Qt.Key_PageUp, place: 60 }, { tag: "page down", key: Qt.Key_PageDown, place: 40 }, { tag: "home", key: Qt.Key_Home, place: 1 }, { tag: "end", key: Qt.Key_End, place: 100 }];
    }

    function test_keysMoveIt(data) {
        keyClick(data.key);
        compare(test.percent, data.place);
        compare(slider.value, data.place);
        compare(test.placings, 1);
    }

    function test_keysStopAtTheEnds() {
        test.percent = 95;
        keyClick(Qt.Key_PageUp);
        compare(test.percent, 100);
        keyClick(Qt.Key_Right);
        compare(test.percent, 100);
        keyClick(Qt.Key_Home);
        keyClick(Qt.Key_Down);
        compare(test.percent, 1);
    }

    function test_theWheelMovesItByOne() {
        mouseWheel(slider, 200, 20, 0, 120);
        compare(test.percent, 51);
        mouseWheel(slider, 200, 20, 0, -240);
        compare(test.percent, 49);
    }

    function test_aWheelThatItIsNotToHeedIsLeftToOthers() {
        slider.heedsWheel = false;
        mouseWheel(slider, 200, 20, 0, 120);
        compare(test.percent, 50);
    }

    function test_draggingSetsValuesBetweenWholeOnes() {
        const knob = slider.handle;
        const from = knob.x + knob.width / 2;
        mousePress(slider, from, 22);
        let between = false;
        for (let x = from + 5; x < 390; x += 1) {
            mouseMove(slider, x, 22);
            between = between || test.percent !== Math.floor(test.percent);
        }
        mouseRelease(slider, 399, 22);
        verify(between);
        compare(test.percent, 100);
    }

    function test_aPressOnTheScaleMovesItThere() {
        mouseClick(slider, 2, 22);
        compare(test.percent, 1);
        mouseClick(slider, 398, 22);
        compare(test.percent, 100);
    }

    function test_assistiveSoftwareMovesIt() {
        compare(slider.Accessible.role, Accessible.Slider);
        compare(slider.Accessible.name, "Good");
        compare(slider.minimumValue, 1);
        compare(slider.maximumValue, 100);
        slider.Accessible.increaseAction();
        compare(test.percent, 51);
        slider.Accessible.decreaseAction();
        slider.Accessible.decreaseAction();
        compare(test.percent, 49);
        slider.value = 72.5; // as the accessibility bridge writes it
        compare(test.percent, 72.5);
        slider.value = 1000;
        compare(test.percent, 100);
        slider.value = Qt.binding(() => slider.place);
    }

    function test_itFollowsItsPlaceAfterBeingMoved() {
        keyClick(Qt.Key_Right);
        test.percent = 20;
        compare(slider.value, 20);
    }

    function test_aPlaceBeyondTheScaleIsShownAtItsEndAndKept() {
        test.percent = 250;
        compare(slider.value, 100);
        compare(test.percent, 250);
        test.percent = -4;
        compare(slider.value, 1);
        compare(test.percent, -4);
        compare(test.placings, 0);
        keyClick(Qt.Key_Right);
        compare(test.percent, 2);
    }

    function test_aDisabledSliderCannotBeMoved() {
        slider.enabled = false;
        slider.Accessible.increaseAction();
        mouseClick(slider, 2, 22);
        slider.value = 80; // as the accessibility bridge writes it
        compare(test.percent, 50);
        compare(slider.value, 50);
        slider.enabled = true;
        keyClick(Qt.Key_Right);
        compare(slider.value, 51);
    }

    function test_aFingerDragsItSidewaysAndTapsItsScale() {
        const touch = touchEvent(slider);
        const knob = slider.handle;
        touch.press(1, slider, knob.x + knob.width / 2, 22).commit();
        touch.move(1, slider, 300, 22).commit();
        touch.move(1, slider, 399, 22).commit();
        touch.release(1, slider, 399, 22).commit();
        compare(test.percent, 100);
        touch.press(1, slider, 2, 22).commit();
        touch.release(1, slider, 2, 22).commit();
        compare(test.percent, 1);
    }

    function test_rightToLeftItRunsTheOtherWay() {
        slider.LayoutMirroring.enabled = true;
        mouseClick(slider, 2, 22);
        compare(test.percent, 100);
        keyClick(Qt.Key_Right);
        compare(test.percent, 99);
        keyClick(Qt.Key_Up);
        compare(test.percent, 100);
        slider.LayoutMirroring.enabled = false;
    }
}
