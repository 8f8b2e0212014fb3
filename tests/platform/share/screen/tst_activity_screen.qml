import QtQuick
import QtQuick.Templates as T
import QtTest
import ShareTest
import Vexilo.Controls
import Vexilo.Share

TestCase {
    id: test

    readonly property string bill: "Based on 4 people dining.\nThe bill came to $100.00\nService was Good, tip given $20.00\n"
    readonly property ActivityScreen screen: loader.item as ActivityScreen

    height: 900
    name: "ActivityScreen"
    visible: true
    when: windowShown
    width: 600

    // Made anew for each presentation, as in the program.
    Loader {
        id: loader

        active: World.controller !== null

        sourceComponent: ActivityScreen {
            controller: World.controller
            onClosed: World.dismiss()
        }
    }

    function init() {
        failOnWarning(/.?/);
        test.width = 600;
        test.height = 900;
        World.start(test);
        World.present(test.bill);
        screen.open();
        tryCompare(screen, "opened", true);
    }

    function cleanup() {
        if (screen)
            screen.close();
        tryCompare(loader, "item", null);
    }

    // What assistive software meets in that part of the screen, in its order.
    function met(from) {
        if (from.visible === false)
            return [];
        const own = from.Accessible && from.Accessible.name !== "" && !from.Accessible.ignored ? [from] : [];
        return Array.from(from.children).reduce((all, child) => all.concat(met(child)), own);
    }

    function names() {
        return met(screen.contentItem).map(item => item.Accessible.name);
    }

    function find(name) {
        const found = met(screen.contentItem).find(item => item.Accessible.name === name);
        verify(found !== undefined, name);
        return found;
    }

    function press(name) {
        find(name).Accessible.pressAction();
    }

    function expectClosedWith(outcome) {
        tryCompare(loader, "item", null);
        compare(World.outcomes, [outcome]);
    }

    function test_theSheetReadsFromTopToBottom() {
        compare(screen.title, "Share");
        compare(names(), ["Share", "Cancel", test.bill, "Copy text", "Copy share $30.00", "Show QR code"]);
    }

    function test_whatComesLateTakesItsPlace() {
        World.offerOwnActivity();
        compare(names().slice(-2), ["Show QR code", "Own activity"]);
        verify(find("Copy text").activeFocus);
    }

    function test_theFirstDestinationHasTheKeyboard() {
        verify(find("Copy text").activeFocus);
        keyClick(Qt.Key_Return);
        compare(World.clipboard, test.bill);
        expectClosedWith("copy completed");
    }

    function test_keysGoThroughTheSheet_data() {
        return [{ tag: "Tab", next: Qt.Key_Tab, previous: Qt.Key_Backtab }, { tag: "arrows", next: Qt.Key_Down, previous: Qt.Key_Up }];
    }

    function test_keysGoThroughTheSheet(data) {
        ["Copy share $30.00", "Show QR code", "Cancel", "Copy text"].forEach(name => {
            keyClick(data.next);
            verify(find(name).activeFocus, name);
        });
        ["Cancel", "Show QR code", "Copy share $30.00"].forEach(name => {
            keyClick(data.previous);
            verify(find(name).activeFocus, name);
        });
        keyClick(Qt.Key_Return);
        compare(World.clipboard, "$30.00");
        expectClosedWith("copyExcerpt completed");
    }

    function test_escapeCancels() {
        keyClick(Qt.Key_Escape);
        expectClosedWith("none");
    }

    function test_theCancelButtonCancels() {
        press("Cancel");
        expectClosedWith("none");
    }

    function test_aClickOnTheDimmedWindowCancels() {
        tryVerify(() => screen.closePolicy & T.Popup.CloseOnPressOutside, 5000, "the time of a double click is over");
        mouseClick(test, 300, 4);
        expectClosedWith("none");
    }

    function test_aClickWhileTheSheetComesDoesNot() {
        screen.close();
        tryCompare(loader, "item", null);
        World.start(test);
        World.present(test.bill);
        screen.open();
        verify(!(screen.closePolicy & T.Popup.CloseOnPressOutside));
        mouseClick(test, 300, 4);
        tryCompare(screen, "opened", true);
        compare(World.outcomes, []);
    }

    function test_aClickWhileAnActivityIsPerformedDoesNot() {
        tryVerify(() => screen.closePolicy & T.Popup.CloseOnPressOutside);
        World.offerOwnActivity();
        press("Own activity");
        mouseClick(test, 300, 4);
        compare(World.outcomes, []);
        compare(screen.opened, true);
    }

    function test_aClickOnTheSheetItselfDoesNot() {
        tryVerify(() => screen.closePolicy & T.Popup.CloseOnPressOutside);
        mouseClick(test, 300, 890);
        mouseClick(test, 300, 60);
        compare(World.outcomes, []);
        compare(screen.opened, true);
    }

    function test_theCodeTakesTheSheetsPlace() {
        press("Show QR code");
        compare(names(), ["Back", "QR code", "Done", "QR code", "Scan the code with a phone to take the text along."]);
        const code = met(screen.contentItem).filter(item => item.Accessible.name === "QR code")[1];
        compare(code.Accessible.description, test.bill);
        verify(code.width >= 520, code.width);
        compare(code.width, code.height);
        verify(find("Done").activeFocus);
        compare(World.outcomes, []);

        keyClick(Qt.Key_Return);
        expectClosedWith("qrCode completed");
    }

    function test_escapeFromTheCodeIsDone() {
        press("Show QR code");
        keyClick(Qt.Key_Escape);
        expectClosedWith("qrCode completed");
    }

    function test_anApplicationsOwnPageTakesTheSheetsPlace() {
        World.offerOwnActivityOnPage(Qt.resolvedUrl("OwnPage.qml"));
        press("Own activity");
        compare(names(), ["Back from Own activity"]);
        verify(find("Back from Own activity").visualFocus);
        keyClick(Qt.Key_Return);
        compare(World.stops, 1);
        compare(names().slice(-1), ["Own activity"]);
        press("Own activity");
        compare(names(), ["Back from Own activity"]);
        compare(World.performed.length, 2);
    }

    function test_fromTheCodeTheWayLeadsBack() {
        find("Show QR code").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        press("Back");
        verify(find("Show QR code").visualFocus);
        compare(World.outcomes, []);
        keyClick(Qt.Key_Up);
        keyClick(Qt.Key_Up);
        keyClick(Qt.Key_Return);
        expectClosedWith("copy completed");
    }

    function test_whileAnActivityIsPerformedNothingElseIsOffered() {
        World.offerOwnActivity();
        names().slice(3).forEach(name => verify(find(name).enabled, name));

        find("Own activity").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);

        const others = ["Copy text", "Copy share $30.00", "Show QR code"];
        compare(names().slice(3), [...others, "Own activity Waiting…"]);
        others.forEach(name => verify(!find(name).enabled && find(name).opacity < 1, name));
        verify(!find("Own activity Waiting…").enabled);
        compare(find("Own activity Waiting…").opacity, 1);
        press("Copy text");
        compare(World.performed, [test.bill]);
        compare(World.outcomes, []);
        keyClick(Qt.Key_Tab);
        verify(find("Cancel").activeFocus);
        keyClick(Qt.Key_Return);
        expectClosedWith("Own activity");
    }

    function test_aFailureIsToldAndThenTheSheetCloses() {
        World.offerOwnActivity();
        press("Own activity");
        compare(World.performed, [test.bill]);
        World.failOwnActivity("No room left.");

        const button = test.Window.window.activeFocusItem;
        compare(button.text, "OK");
        compare(screen.opened, true);
        compare(World.outcomes, []);
        keyClick(Qt.Key_Return);
        expectClosedWith("Own activity: No room left.");
    }

    function test_closingTheSheetStopsWhatIsPerformed() {
        World.offerOwnActivity();
        press("Own activity");
        keyClick(Qt.Key_Escape);
        expectClosedWith("Own activity");
    }

    function test_aNarrowWindowCutsNothing_data() {
        return [{ tag: "narrow", width: 360 }, { tag: "wide", width: 1200 }];
    }

    function test_aNarrowWindowCutsNothing(data) {
        test.width = data.width;
        test.Window.window.width = data.width;
        tryCompare(screen, "width", Math.min(test.Window.window.width, Theme.columnWidth + 2 * Theme.margin));
        World.offerOwnActivity();
        met(screen.contentItem).forEach(item => {
            const place = item.mapToItem(screen.contentItem, 0, 0);
            verify(place.x >= -Theme.margin && place.x + item.width <= screen.availableWidth + Theme.margin, item.Accessible.name);
        });
    }
}
