import HistoryTest
import QtQuick
import QtQuick.Templates as T
import QtTest
import Vexilo.Controls
import Vexilo.History

TestCase {
    id: test

    height: 5 * Theme.listRowHeight
    name: "SavedBillsList"
    visible: true
    when: windowShown
    width: 500

    Item {
        id: elsewhere

        focus: true
    }

    SavedBillsList {
        id: list

        anchors.fill: parent
        view: World.view
    }

    function opened(bills) {
        World.open(bills);
        list.currentIndex = 0;
        list.positionViewAtBeginning();
        tryCompare(list, "count", bills);
        list.forceActiveFocus(Qt.TabFocusReason);
        list.forceLayout();
        return World.view;
    }

    function cleanup() {
        World.close();
    }

    function cleanupTestCase() {
        World.close();
    }

    function row(index) {
        tryVerify(() => list.itemAtIndex(index) !== null);
        return list.itemAtIndex(index);
    }

    // The button that a row uncovers; null while it covers it.
    function deleteButton(item) {
        for (let i = 0; i < item.children.length; ++i) {
            if (item.children[i].item?.accessibleName === "Delete")
                return item.children[i].item;
        }
        return null;
    }

    function swipe(item, distance) {
        const x = item.width / 2;
        const y = item.height / 2;
        mousePress(item, x, y);
        for (let step = 1; step <= 8; ++step)
            mouseMove(item, x + distance * step / 8, y);
        mouseRelease(item, x + distance, y);
    }

    // By a finger, from the middle of an item.
    function stroke(item, across, down) {
        const touch = touchEvent(item);
        const x = item.width / 2;
        const y = item.height / 2;
        touch.press(1, item, x, y).commit();
        for (let step = 1; step <= 8; ++step)
            touch.move(1, item, x + across * step / 8, y + down * step / 8).commit();
        touch.release(1, item, x + across, y + down).commit();
    }

    function test_returnAndEnterOpenTheCurrentRow_data() {
        return [{ tag: "return", key: Qt.Key_Return }, { tag: "enter", key: Qt.Key_Enter }];
    }

    function test_returnAndEnterOpenTheCurrentRow(data) {
        const view = opened(3);
        keyClick(Qt.Key_Down);
        keyClick(data.key);
        compare(view.chosenRow, 1);
        compare(view.detailTitle, "2");
    }

    function test_aClickOpensTheRowAndMakesItCurrent() {
        const view = opened(3);
        mouseClick(row(2));
        compare(view.chosenRow, 2);
        compare(list.currentIndex, 2);
    }

    function test_assistiveSoftwareOpensARow() {
        const view = opened(3);
        row(1).Accessible.pressAction();
        compare(view.chosenRow, 1);
        compare(row(1).Accessible.selected, true);
        compare(row(0).Accessible.selected, false);
    }

    function test_aRowIsNamedByItsThreeTexts() {
        opened(1);
        compare(row(0).Accessible.name, "1 $110.00 Sat 14 Mar 2026");
        compare(row(0).Accessible.role, Accessible.ListItem);
        compare(list.Accessible.name, "Saved Bills");
        compare(list.Accessible.role, Accessible.List);
    }

    function test_rowsShowTheOtherAmountAtOnce() {
        const view = opened(2);
        view.toggleColumn();
        compare(row(0).amount, "$55.00");
        compare(row(1).amount, "$55.00");
    }

    function test_deleteDeletesTheCurrentRow() {
        opened(3);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Delete);
        compare(World.refs, ["1", "3"]);
    }

    function test_aHeldKeyDeletesOneBill() {
        opened(5);
        World.hold(Qt.Key_Delete);
        compare(World.refs, ["2", "3", "4", "5"]);
    }

    function test_aHeldKeyMarksOnce() {
        const view = opened(2);
        view.isEditing = true;
        World.hold(Qt.Key_Return);
        compare(view.items.markedCount, 1);
    }

    function test_aHeldArrowWalksOn() {
        opened(5);
        World.hold(Qt.Key_Down);
        compare(list.currentIndex, 4);
    }

    function test_afterADeletionTheKeyboardIsStillInTheList() {
        opened(3);
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Delete);
        tryCompare(list, "currentIndex", 1);
        keyClick(Qt.Key_Delete);
        compare(World.refs, ["1"]);
        tryCompare(list, "currentIndex", 0);
        keyClick(Qt.Key_Return);
        compare(World.view.chosenRow, 0);
    }

    function test_theLastBillCanBeDeletedAndKeysThenDoNothing() {
        const view = opened(1);
        keyClick(Qt.Key_Delete);
        compare(World.refs, []);
        for (const key of [Qt.Key_Delete, Qt.Key_F2, Qt.Key_Home, Qt.Key_End, Qt.Key_PageUp, Qt.Key_PageDown, Qt.Key_Return])
            keyClick(key);
        compare(view.detail, null);
        compare(view.showRename, false);
    }

    function test_f2AsksForTheDescriptionOfTheCurrentRow() {
        const view = opened(3);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_F2);
        compare(view.showRename, true);
        compare(view.billDescription, "2");
        compare(view.chosenRow, 1);
    }

    function test_keysWalkThroughALongList() {
        opened(100);
        keyClick(Qt.Key_End);
        compare(list.currentIndex, 99);
        keyClick(Qt.Key_PageDown);
        compare(list.currentIndex, 99);
        keyClick(Qt.Key_PageUp);
        compare(list.currentIndex, 95);
        keyClick(Qt.Key_Home);
        compare(list.currentIndex, 0);
        keyClick(Qt.Key_PageUp);
        compare(list.currentIndex, 0);
        keyClick(Qt.Key_PageDown);
        compare(list.currentIndex, 4);
        keyClick(Qt.Key_Up);
        compare(list.currentIndex, 3);
    }

    function test_theCurrentRowIsAlwaysInSight() {
        opened(100);
        keyClick(Qt.Key_End);
        tryVerify(() => list.contentY + list.height >= list.contentHeight + list.originY - 1);
        keyClick(Qt.Key_Return);
        compare(World.view.detailTitle, "100");
    }

    function test_inTheEditModeReturnMarks() {
        const view = opened(3);
        view.isEditing = true;
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        compare(view.items.markedCount, 1);
        compare(row(1).marked, true);
        compare(row(1).Accessible.checkable, true);
        compare(row(1).Accessible.checked, true);
        compare(view.detail, null);
        keyClick(Qt.Key_Return);
        compare(view.items.markedCount, 0);
        compare(row(1).Accessible.checked, false);
    }

    function test_aSwipeUncoversTheDeleteButton() {
        const view = opened(3);
        const item = row(1);
        swipe(item, -item.deleteWidth);
        compare(list.swipedRow, 1);
        tryCompare(item, "aside", item.deleteWidth);
        compare(view.detail, null);
        mouseClick(deleteButton(item));
        compare(World.refs, ["1", "3"]);
        tryCompare(list, "swipedRow", -1);
    }

    function test_aFingerUncoversTheDeleteButtonAndPressesIt() {
        const view = opened(3);
        const item = row(1);
        stroke(item, -item.deleteWidth, 0);
        compare(list.swipedRow, 1);
        tryCompare(item, "aside", item.deleteWidth);
        compare(view.detail, null);
        stroke(deleteButton(item), 0, 0);
        compare(World.refs, ["1", "3"]);
    }

    function test_aStrokeThatArrivesAsASingleMoveIsASwipe() {
        const view = opened(3);
        const item = row(1);
        const y = item.height / 2;
        const start = item.width / 2;
        const touch = touchEvent(item);
        touch.press(1, item, start, y).commit();
        touch.move(1, item, start - item.deleteWidth, y).commit();
        touch.release(1, item, start - item.deleteWidth, y).commit();
        compare(list.swipedRow, 1);
        tryCompare(item, "aside", item.deleteWidth);
        compare(view.detail, null);
    }

    function test_aFingerThatScrolledBackAndGoesAsideDoesNotSwipe() {
        const view = opened(20);
        const item = row(3);
        const points = [];
        for (let step = 1; step <= 8; ++step)
            points.push([0, -10 * step]);
        for (let step = 7; step >= 0; --step)
            points.push([0, -10 * step]);
        for (let step = 1; step <= 8; ++step)
            points.push([-item.deleteWidth * step / 8, 0]);
        // Of the window: the row moves.
        const x = item.width / 2;
        const y = 3.5 * Theme.listRowHeight;
        const touch = touchEvent(test);
        touch.press(1, test, x, y).commit();
        for (const [across, down] of points) {
            touch.move(1, test, x + across, y + down).commit();
            compare(item.aside, 0);
        }
        verify(list.dragging);
        touch.release(1, test, x - item.deleteWidth, y).commit();
        compare(list.swipedRow, -1);
        compare(view.detail, null);
        tryCompare(list, "moving", false);
        // The next finger is free again.
        stroke(row(0), -item.deleteWidth, 0);
        compare(list.swipedRow, 0);
    }

    function test_aFingerOpensARow() {
        const view = opened(3);
        stroke(row(1), 0, 0);
        compare(view.chosenRow, 1);
    }

    function test_aFingerThatScrollsNeitherSwipesNorOpens() {
        const view = opened(20);
        stroke(row(3), 0, -2 * Theme.listRowHeight);
        tryVerify(() => list.contentY > 0);
        compare(list.swipedRow, -1);
        compare(view.detail, null);
        tryCompare(list, "moving", false);
    }

    function test_aShortSwipeComesBack() {
        opened(2);
        const item = row(0);
        swipe(item, -item.deleteWidth / 3);
        compare(list.swipedRow, -1);
        tryCompare(item, "aside", 0);
        compare(deleteButton(item), null);
        compare(World.refs, ["1", "2"]);
    }

    function test_aSwipeTheOtherWayDoesNothing() {
        opened(2);
        const item = row(0);
        swipe(item, item.deleteWidth);
        compare(list.swipedRow, -1);
        tryCompare(item, "aside", 0);
    }

    function test_aPressOnAnyRowPutsASwipedRowBackAndOpensNothing() {
        const view = opened(3);
        swipe(row(1), -row(1).deleteWidth);
        compare(list.swipedRow, 1);
        mouseClick(row(0));
        compare(list.swipedRow, -1);
        compare(view.detail, null);
        mouseClick(row(0));
        compare(view.chosenRow, 0);
    }

    function test_oneRowStandsAsideAtATime() {
        opened(3);
        swipe(row(1), -row(1).deleteWidth);
        swipe(row(2), -row(2).deleteWidth);
        compare(list.swipedRow, 2);
        tryCompare(row(1), "aside", 0);
    }

    function test_inTheEditModeRowsAreNotSwiped() {
        const view = opened(2);
        view.isEditing = true;
        swipe(row(0), -row(0).deleteWidth);
        compare(list.swipedRow, -1);
    }

    function test_aRowThatFadesAwayCannotBePressedAgain_data() {
        return [{ tag: "opening", isEditing: false }, { tag: "marking", isEditing: true }];
    }

    function test_aRowThatFadesAwayCannotBePressedAgain(data) {
        const view = opened(3);
        const item = row(0);
        view.isEditing = data.isEditing;
        view.deleteRow(0);
        item.Accessible.pressAction();
        compare(view.detail, null);
        compare(view.items.markedCount, 0);
        compare(World.refs, ["2", "3"]);
    }

    function test_aRowIsSeenAgainWhenItsItemIsReused() {
        opened(3);
        for (let i = 0; i < 3; ++i) {
            keyClick(Qt.Key_Delete);
            World.addBill("new " + i);
        }
        for (let i = 0; i < 3; ++i)
            tryCompare(row(i), "opacity", 1);
    }

    function test_aKeyCoversWhatThePointerUncovered_data() {
        return [{ tag: "to the next row", key: Qt.Key_Down }, { tag: "to another control", key: Qt.Key_Tab }, { tag: "into the row", key: Qt.Key_Return }];
    }

    function test_aKeyCoversWhatThePointerUncovered(data) {
        opened(2);
        swipe(row(0), -row(0).deleteWidth);
        compare(list.swipedRow, 0);
        keyClick(data.key);
        compare(list.swipedRow, -1);
        tryCompare(row(0), "aside", 0);
    }

    function test_theBarOfALongListLiesBesideTheRows() {
        opened(60);
        const bar = list.T.ScrollBar.vertical;
        tryCompare(bar, "visible", true);
        const ground = row(0).background.children[0];
        verify(ground.mapToItem(list, ground.width, 0).x <= list.width - bar.width + bar.leftPadding);
        swipe(row(0), -row(0).deleteWidth);
        tryCompare(row(0), "aside", row(0).deleteWidth);
        const button = deleteButton(row(0));
        verify(button.mapToItem(list, button.width, 0).x <= list.width - bar.width + bar.leftPadding);
    }

    // The ring would lie around the button as well, which the keyboard does not reach.
    function test_aRowThatStandsAsideHasNoRing() {
        opened(1);
        compare(row(0).background.focused, true);
        swipe(row(0), -row(0).deleteWidth);
        tryCompare(row(0), "aside", row(0).deleteWidth);
        compare(row(0).background.focused, false);
        mouseClick(row(0), 10, 10);
        tryCompare(row(0).background, "focused", true);
    }
}
