import QtQuick
import QtQuick.Layouts
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int choice: 1

    height: 300
    name: "SegmentedPicker"
    visible: true
    when: windowShown
    width: 400

    RowLayout {
        height: 120
        width: 400

        SegmentedPicker {
            id: picker

            Layout.fillHeight: true
            Layout.fillWidth: true
            currentIndex: test.choice
            name: "Service"
            segments: [
                SegmentedPickerItem {
                    icon: "hand.thumbsdown.fill"
                    name: "Poor"
                },
                SegmentedPickerItem {
                    icon: "hand.thumbsup"
                    name: "Good"
                },
                SegmentedPickerItem {
                    icon: "trophy"
                    name: "Excellent"
                }
            ]
            onChosen: index => test.choice = index
        }
    }

    function init() {
        test.choice = 1;
        picker.forceActiveFocus(Qt.TabFocusReason);
    }

    function test_aClickChooses() {
        mouseClick(picker, picker.width * 5 / 6, picker.height / 2);
        compare(test.choice, 2);
        mouseClick(picker, picker.width / 6, picker.height / 2);
        compare(test.choice, 0);
    }

    function test_aFingerChoosesAtTheVeryEdgesOfThePicker() {
        const touch = touchEvent(picker);
        for (const [x, y, chosen] of [[1, 1, 0], [picker.width - 1, picker.height - 1, 2]]) {
            touch.press(1, picker, x, y).commit();
            touch.release(1, picker, x, y).commit();
            compare(test.choice, chosen);
        }
    }

    function test_arrowsChooseAndStopAtTheEnds() {
        keyClick(Qt.Key_Right);
        compare(test.choice, 2);
        keyClick(Qt.Key_Right);
        compare(test.choice, 2);
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_Left);
        compare(test.choice, 0);
    }

    function test_arrowsFollowTheEyeInARightToLeftLayout() {
        picker.LayoutMirroring.enabled = true;
        keyClick(Qt.Key_Left);
        compare(test.choice, 2);
        picker.LayoutMirroring.enabled = false;
    }

    function test_theChosenSegmentHasTheKeyboard() {
        keyClick(Qt.Key_Right);
        compare(segments()[2].activeFocus, true);
        keyClick(Qt.Key_Left);
        compare(segments()[1].activeFocus, true);
    }

    function test_spaceChoosesTheFirstSegmentWhereNoneIsChosen() {
        test.choice = -1;
        compare(segments()[0].activeFocus, true);
        keyClick(Qt.Key_Space);
        compare(test.choice, 0);
    }

    function test_aValueOutsideChoosesNoSegment() {
        test.choice = -1;
        compare(segments().filter(segment => segment.checked).length, 0);
    }

    function test_itFillsTheHeightOfItsRow() {
        compare(picker.height, 120);
        compare(segments().filter(segment => segment.height > 100).length, 3);
    }

    function test_assistiveSoftwareSeesRadioButtons() {
        const names = segments().map(segment => segment.Accessible.name);
        compare(names, ["Poor", "Good", "Excellent"]);
        segments()[2].Accessible.pressAction();
        compare(test.choice, 2);
        compare(segments()[2].Accessible.checked, true);
        compare(segments()[2].Accessible.role, Accessible.RadioButton);
    }

    function segments() {
        const found = [];
        const search = item => {
            if (item.checked !== undefined && item.modelData !== undefined)
                found.push(item);
            for (let i = 0; i < item.children.length; ++i)
                search(item.children[i]);
        };
        search(picker);
        return found;
    }
}
