import QtQuick
import QtQuick.Layouts
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property real naturalHeight
    property Window other
    property real percent: 50
    readonly property string remark: "Why there are switches in this group of rows, said at such a length that it does not fit one line."

    height: 300
    name: "FormScroller"
    visible: true
    when: windowShown
    width: 400

    Component {
        id: otherWindow

        Window {
            height: 100
            visible: true
            width: 100
        }
    }

    FormScroller {
        id: form

        anchors.fill: parent

        FormSection {
            id: section

            Layout.fillWidth: true
            footer: test.remark
            header: "FIRST"

            SwitchRow {
                id: first

                on: false
                text: "First"
            }
        }

        Slider {
            id: slider

            Layout.fillWidth: true
            accessibleName: "Slider"
            from: 1
            heedsWheel: form.pointed
            place: test.percent
            to: 100
            onPlaced: value => test.percent = value
        }

        Item {
            Layout.preferredHeight: 500
        }

        FormSection {
            Layout.fillWidth: true
            header: "LAST"

            ButtonRow {
                id: last

                text: "Last"
            }
        }
    }

    function initTestCase() {
        test.naturalHeight = section.height;
    }

    function init() {
        test.percent = 50;
        section.footer = test.remark;
        tryCompare(section, "height", test.naturalHeight);
        form.contentY = 0;
        form.height = 300;
        first.forceActiveFocus(Qt.TabFocusReason);
    }

    function leaveWindow() {
        test.other = otherWindow.createObject(null);
        test.other.requestActivate();
        tryCompare(test.Window.window, "active", false);
    }

    function returnToWindow() {
        test.Window.window.requestActivate();
        tryCompare(test.Window.window, "active", true);
        test.other.destroy();
    }

    function upperEdge(item) {
        return item.mapToItem(form, 0, 0).y;
    }

    function test_itScrollsToWhatHasTheKeyboard() {
        last.forceActiveFocus(Qt.TabFocusReason);
        verify(upperEdge(last) >= 0);
        verify(upperEdge(last) + last.height <= form.height);
        first.forceActiveFocus(Qt.BacktabFocusReason);
        verify(upperEdge(first) >= 0);
        verify(upperEdge(first) + first.height <= form.height);
    }

    function test_whatIsInSightIsNotMoved() {
        slider.forceActiveFocus(Qt.TabFocusReason);
        compare(form.contentY, 0);
    }

    function test_pageKeysScroll() {
        keyClick(Qt.Key_PageDown);
        compare(form.contentY, form.height - Theme.rowHeight);
        for (let i = 0; i < 9; ++i)
            keyClick(Qt.Key_PageDown);
        compare(form.contentY, form.contentHeight - form.height);
        for (let i = 0; i < 9; ++i)
            keyClick(Qt.Key_PageUp);
        compare(form.contentY, 0);
    }

    function test_aWheelOverASliderThatThePointerCameToMovesIt() {
        mouseMove(form, 5, 5);
        mouseMove(slider, 200, 20);
        mouseWheel(slider, 200, 20, 0, 120);
        compare(test.percent, 51);
        compare(form.contentY, 0);
    }

    function test_aWheelThatScrollsTheFormDoesNotMoveASliderThatComesUnderIt() {
        const place = slider.mapToItem(form, 200, 20);
        mouseMove(form, place.x, place.y - 60);
        form.contentY = 60;
        mouseWheel(form, place.x, place.y - 60, 0, 120);
        compare(test.percent, 50);
    }

    function test_aHandThatTremblesOnTheWheelGoesOnScrolling() {
        const place = slider.mapToItem(form, 200, 20);
        mouseMove(form, place.x, place.y - 60);
        form.contentY = 60;
        for (let jitter = 1; jitter <= 4; ++jitter) {
            mouseMove(form, place.x + jitter, place.y - 60);
            mouseWheel(form, place.x + jitter, place.y - 60, 0, -10);
        }
        compare(test.percent, 50);
        const now = slider.mapToItem(form, 200, 20);
        mouseMove(form, now.x + 30, now.y);
        mouseWheel(form, now.x + 30, now.y, 0, 120);
        compare(test.percent, 51);
    }

    function test_whatHasTheKeyboardStaysInSightWhenTheWindowShrinks() {
        form.height = 700;
        last.forceActiveFocus(Qt.TabFocusReason);
        form.height = 200;
        tryVerify(() => upperEdge(last) >= 0 && upperEdge(last) + last.height <= form.height);
    }

    function test_whatHasTheKeyboardStaysInSightWhenTheColumnGrows() {
        slider.forceActiveFocus(Qt.TabFocusReason);
        section.footer = test.remark.repeat(10);
        tryVerify(() => form.contentY > 0);
        verify(upperEdge(slider) >= 0);
        verify(upperEdge(slider) + slider.height <= form.height);
    }

    function test_whatWasScrolledAwayFromStaysAway() {
        last.forceActiveFocus(Qt.TabFocusReason);
        form.contentY = 0;
        section.footer = test.remark.repeat(2);
        tryVerify(() => section.height > test.naturalHeight);
        section.footer = test.remark;
        tryCompare(section, "height", test.naturalHeight); // a frame after that of the growth
        compare(form.contentY, 0);
    }

    function test_aWindowThatBecomesActiveAgainStaysAsItWasScrolled() {
        last.forceActiveFocus(Qt.TabFocusReason);
        form.contentY = 0;
        leaveWindow();
        returnToWindow();
        verify(last.activeFocus);
        compare(form.contentY, 0);
    }

    function test_whatHasTheKeyboardStaysInSightInAWindowThatIsNotActive() {
        slider.forceActiveFocus(Qt.TabFocusReason);
        leaveWindow();
        section.footer = test.remark.repeat(10);
        tryVerify(() => form.contentY > 0);
        verify(upperEdge(slider) + slider.height <= form.height);
        returnToWindow();
    }

    function test_aSectionIsReadFromItsHeadingToItsRemark() {
        const heading = section.children[0];
        compare(heading.Accessible.role, Accessible.Heading);
        compare(heading.Accessible.name, "FIRST");
        const remark = section.children[2];
        compare(remark.Accessible.name, section.footer);
        verify(remark.height > 2 * Theme.smallFontSize); // wrapped, not cut
        verify(!remark.truncated);
    }
}
