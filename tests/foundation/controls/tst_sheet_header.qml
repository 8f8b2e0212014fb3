import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property int presses: 0

    height: 200
    name: "SheetHeader"
    visible: true
    when: windowShown
    width: 400

    SheetHeader {
        id: header

        title: "Saved Bills"
        width: 400

        PushButton {
            id: first

            text: "Edit"
        }

        PushButton {
            id: second

            text: "Done"
            onClicked: ++test.presses
        }
    }

    IconTextButton {
        id: button

        iconName: "trash"
        text: "Delete all"
        y: 100
        onClicked: ++test.presses
    }

    function init() {
        test.presses = 0;
        button.enabled = true;
        header.title = "Saved Bills";
        header.titleIsWhole = false;
        header.width = 400;
    }

    function heading() {
        for (let i = 0; i < header.children.length; ++i) {
            if (header.children[i].Accessible.role === Accessible.Heading)
                return header.children[i];
        }
        fail("no heading");
    }

    function buttonsWidth() {
        return first.implicitWidth + second.implicitWidth;
    }

    function test_theTitleIsAHeading() {
        compare(heading().Accessible.name, "Saved Bills");
        compare(heading().text, "Saved Bills");
    }

    function test_theTextOfTheLastButtonStandsAtTheEnd() {
        const x = button => button.mapToItem(header, 0, 0).x;
        tryVerify(() => x(second) >= x(first) + first.width);
        verify(x(first) > 200);
        fuzzyCompare(x(second) + second.width - second.rightPadding, header.width, 1);
        mouseClick(second);
        compare(test.presses, 1);
    }

    function test_buttonsBelowEachOtherStayWithinTheHeader() {
        header.width = 60;
        tryVerify(() => second.y > first.y);
        const end = item => item.mapToItem(header, item.width, 0).x;
        verify(first.width !== second.width);
        fuzzyCompare(end(first), header.width, 1);
        fuzzyCompare(end(second), header.width, 1);
    }

    function test_aLongTitleLeavesTheButtonsTheirRoom() {
        header.title = "A description that is far longer than the whole width of the sheet it stands on";
        header.width = 260;
        waitForRendering(header);
        const end = first.mapToItem(header, 0, 0).x;
        verify(heading().x + heading().width <= end + 1);
        verify(second.mapToItem(header, 0, 0).x + second.width - second.rightPadding <= 261);
        verify(header.truncated);
    }

    function test_aTitleThatIsALittleTooLongIsDrawnSmallerInsteadOfCut() {
        header.title = "Dinner at Lena's";
        header.width = Math.floor(header.titleWidth * 0.9) + Theme.lineSpace + buttonsWidth() - header.overhang;
        waitForRendering(header);
        verify(heading().width < header.titleWidth);
        verify(!header.truncated);
        verify(heading().contentWidth <= heading().width);
    }

    function test_aTitleThatIsToBeSeenWholeIsNeverSmaller() {
        header.title = "Dinner at Lena's";
        header.titleIsWhole = true;
        header.width = Math.floor(header.titleWidth * 0.9);
        waitForRendering(header);
        compare(heading().fontSizeMode, Text.FixedSize);
        verify(heading().lineCount > 1);
    }

    function test_theHeaderIsARowHighEvenWithoutButtons() {
        verify(header.implicitHeight >= Theme.rowHeight);
    }

    function test_aButtonWithAnIconIsNamedByItsText() {
        compare(button.Accessible.name, "Delete all");
        compare(button.Accessible.role, Accessible.Button);
    }

    function test_aButtonWithAnIconHasRoomForBothInOrder() {
        const icon = button.contentItem.children[0];
        const label = button.contentItem.children[1];
        compare(icon.name, "trash");
        compare(label.text, "Delete all");
        verify(label.x >= icon.x + icon.width);
        verify(button.width >= icon.width + label.implicitWidth);
        verify(button.height >= 44);
    }

    function test_keysAndAssistiveSoftwarePressAButtonWithAnIcon() {
        button.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Enter);
        button.Accessible.pressAction();
        mouseClick(button);
        compare(test.presses, 5);
    }

    function test_aDisabledButtonWithAnIconIsNotPressed() {
        button.enabled = false;
        mouseClick(button);
        button.Accessible.pressAction();
        compare(test.presses, 0);
    }
}
