import HistoryTest
import QtQuick
import QtTest
import Vexilo.Controls
import Vexilo.History

TestCase {
    id: test

    readonly property HistoryScreen screen: loader.item as HistoryScreen

    height: 700
    name: "HistoryScreen"
    visible: true
    when: windowShown
    width: 600

    // Made anew for each opening, as in the program.
    Loader {
        id: loader

        active: World.view !== null

        sourceComponent: HistoryScreen {
            view: World.view
        }
    }

    function opened(bills) {
        World.open(bills);
        screen.open();
        tryCompare(screen, "opened", true);
        return World.view;
    }

    function init() {
        // Nothing may be bound to the state of a screen that is closed.
        failOnWarning(/.?/);
        resize(600);
    }

    function cleanup() {
        screen.close();
        tryCompare(screen, "visible", false);
        World.close();
    }

    function resize(width) {
        const window = test.Window.window;
        window.width = width;
        tryCompare(window.contentItem, "width", width);
    }

    // What assistive software would find by that name, on the screen or in its dialogs.
    function shown(name, from) {
        if (from.visible === false)
            return null;
        if (from.Accessible && from.Accessible.name === name && !from.Accessible.ignored)
            return from;
        for (let i = 0; i < from.children.length; ++i) {
            const found = shown(name, from.children[i]);
            if (found !== null)
                return found;
        }
        return null;
    }

    function find(name) {
        let found = null;
        tryVerify(() => (found = shown(name, test.Window.window.contentItem)) !== null, 5000, name);
        return found;
    }

    function isShown(name) {
        return shown(name, test.Window.window.contentItem) !== null;
    }

    function press(name) {
        find(name).Accessible.pressAction();
    }

    function test_theListHasTheKeyboardAtFirst() {
        const view = opened(3);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        compare(view.chosenRow, 1);
    }

    function test_inANarrowWindowTheBillCoversTheListUntilBackIsPressed() {
        const view = opened(2);
        compare(screen.wide, false);
        keyClick(Qt.Key_Return);
        find("Back");
        compare(isShown("Edit"), false);
        compare(isShown("Select an item"), false);
        press("Back");
        compare(view.detail, null);
        find("Edit");
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        compare(view.chosenRow, 1);
    }

    function test_inAWideWindowTheBillStandsBesideTheList() {
        resize(1100);
        const view = opened(2);
        compare(screen.wide, true);
        find("Select an item");
        keyClick(Qt.Key_Return);
        compare(view.chosenRow, 0);
        find("Edit");
        find("Rename");
        compare(isShown("Back"), false);
        compare(isShown("Select an item"), false);
    }

    function test_theBillShowsEveryLine() {
        opened(1);
        keyClick(Qt.Key_Return);
        for (const line of ["Bill $100.00", "People 2", "Service Good", "Total $110.00", "Share per person $55.00", "Tip $5.00", "Everyone pays the tip Yes", "Tip is rounded up No", "Share is rounded up No", "Saved on: Sat 14 Mar 2026 at 12:00"])
            find(line);
    }

    function test_doneIsOnlyThereOutsideTheEditMode() {
        const view = opened(1);
        press("Edit");
        compare(view.isEditing, true);
        compare(isShown("Done"), false);
        compare(isShown("Edit"), false);
        press("Cancel");
        compare(view.isEditing, false);
        press("Done");
        tryCompare(screen, "visible", false);
    }

    function test_theMarkedBillsAreDeletedByOneButton() {
        opened(3);
        press("Edit");
        compare(find("Delete 0").enabled, false);
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Return);
        press("Delete 2");
        compare(World.refs, ["2"]);
        compare(find("Delete 0").enabled, false);
        press("Cancel");
        find("Edit");
    }

    function test_anEmptyListLeavesTheKeyboardToDone() {
        opened(0);
        verify(find("Done").activeFocus);
    }

    function test_anEmptyListSaysSoAndWhatToDo() {
        opened(0);
        compare(isShown("No saved bills yet"), true);
        compare(isShown("Bills that you save appear here."), true);
        World.addBill("first");
        tryVerify(() => !isShown("No saved bills yet"));
    }

    function test_theLastBillLeavesTheKeyboardToDone() {
        opened(1);
        keyClick(Qt.Key_Delete);
        tryVerify(() => find("Done").activeFocus);
    }

    function test_theLastMarkedBillLeavesTheKeyboardToCancel() {
        opened(1);
        press("Edit");
        keyClick(Qt.Key_Return);
        press("Delete 1");
        compare(World.refs, []);
        tryVerify(() => find("Cancel").activeFocus);
        press("Cancel");
        tryVerify(() => find("Done").activeFocus);
    }

    function test_afterMarkedBillsWereDeletedTheListHasTheKeyboard() {
        const view = opened(3);
        press("Edit");
        keyClick(Qt.Key_Return);
        find("Delete 1").forceActiveFocus();
        press("Delete 1");
        tryVerify(() => test.Window.activeFocusItem.index === 0);
        keyClick(Qt.Key_Return);
        compare(view.items.markedCount, 1);
    }

    function test_aBillThatComesDoesNotTakeTheKeyboard() {
        opened(2);
        find("Edit").forceActiveFocus();
        World.addBill("x");
        tryVerify(() => isShown("x $110.00 Sat 14 Mar 2026"));
        verify(find("Edit").activeFocus);
    }

    function test_theEditModeLeavesTheRowsAsTheyWere() {
        opened(2);
        const before = find("1 $110.00 Sat 14 Mar 2026").contentItem.children[0].descriptionX;
        press("Edit");
        verify(find("1 $110.00 Sat 14 Mar 2026").contentItem.children[0].descriptionX > before);
        press("Cancel");
        compare(find("1 $110.00 Sat 14 Mar 2026").contentItem.children[0].descriptionX, before);
    }

    function test_aWindowThatBecomesNarrowGivesTheKeyboardToThePage() {
        resize(1100);
        opened(2);
        keyClick(Qt.Key_Return);
        resize(600);
        verify(find("Back").activeFocus);
    }

    function test_aWindowThatBecomesNarrowLeavesTheKeyboardToADialog() {
        resize(1100);
        opened(2);
        keyClick(Qt.Key_F2);
        tryVerify(() => find("Description").activeFocus);
        resize(600);
        verify(find("Description").activeFocus);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !isShown("Description"));
    }

    function test_theColumnButtonNamesTheSymbolAndTheOtherColumn() {
        opened(1);
        press("$ Share");
        find("1 $55.00 Sat 14 Mar 2026");
        press("$ Total");
        find("1 $110.00 Sat 14 Mar 2026");
        find("$ Share");
    }

    function test_theBarIsThereWithoutBillsToo() {
        opened(0);
        for (const name of ["$ Share", "Delete old", "Delete all", "Edit", "Done"])
            find(name);
    }

    function test_everyBillIsDeletedAfterTheQuestion() {
        const view = opened(3);
        press("Delete all");
        compare(view.promptToDelete, true);
        press("Delete ALL bills");
        compare(World.refs, []);
        tryCompare(view, "promptToDelete", false);
    }

    function test_theSafeAnswerDeletesNothing_data() {
        return [{ tag: "all", button: "Delete all" }, { tag: "old", button: "Delete old" }];
    }

    function test_theSafeAnswerDeletesNothing(data) {
        const view = opened(2);
        press(data.button);
        find("Cancel");
        tryVerify(() => find("Cancel").activeFocus);
        keyClick(Qt.Key_Return);
        tryVerify(() => !view.promptToDelete && !view.promptToDeleteOld);
        wait(0); // a deletion of old bills would run in the next turn
        compare(World.refs, ["1", "2"]);
    }

    function test_aBillIsRenamedByKeys() {
        const view = opened(2);
        keyClick(Qt.Key_F2);
        tryVerify(() => find("Description").activeFocus);
        compare(find("Description").text, "1");
        keyClick(Qt.Key_X);
        keyClick(Qt.Key_Return);
        compare(World.refs, ["x", "2"]);
        tryCompare(view, "showRename", false);
        compare(view.detail, null); // back at the row that was renamed
    }

    function test_escapeLeavesTheDescription() {
        const view = opened(1);
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_F2);
        tryVerify(() => find("Description").activeFocus);
        keyClick(Qt.Key_X);
        keyClick(Qt.Key_Escape);
        tryCompare(view, "showRename", false);
        compare(World.refs, ["1"]);
        compare(screen.visible, true);
        view.askForDescription();
        tryVerify(() => find("Description").activeFocus);
        compare(find("Description").text, "1");
        keyClick(Qt.Key_Escape);
        tryCompare(view, "showRename", false);
    }

    function test_everyLetterBeyondTheLongestDescriptionIsPutBack() {
        const view = opened(1);
        keyClick(Qt.Key_F2);
        tryVerify(() => find("Description").activeFocus);
        const field = find("Description");
        const longest = "x".repeat(4096);
        field.text = longest;
        field.cursorPosition = 4096;
        for (let letter = 0; letter < 3; ++letter) {
            keyClick(Qt.Key_Y);
            verify(field.text === longest);
            compare(field.Accessible.description, "Description too long");
        }
        keyClick(Qt.Key_Backspace);
        compare(field.text.length, 4095);
        compare(field.Accessible.description, "");
        compare(view.billDescription, field.text);
    }

    function test_f2OnTheBillRenamesItToo() {
        const view = opened(1);
        keyClick(Qt.Key_Return);
        tryVerify(() => find("Back").activeFocus);
        keyClick(Qt.Key_F2);
        compare(view.showRename, true);
    }

    function test_usingABillClosesTheScreen() {
        opened(1);
        compare(World.settingsBill, 0);
        keyClick(Qt.Key_Return);
        press("Use");
        press("Use this bill");
        compare(World.settingsBill, 100);
        tryCompare(screen, "visible", false);
    }

    function test_aDeletedBillLeavesItsPage() {
        const view = opened(2);
        keyClick(Qt.Key_Return);
        find("Back");
        view.deleteRow(0);
        compare(view.detail, null);
        find("Edit");
        compare(isShown("Back"), false);
    }
}
