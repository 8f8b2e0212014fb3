import QtQuick
import QtTest
import SettingsTest
import Vexilo.Controls
import Vexilo.Settings

TestCase {
    id: test

    readonly property SettingsScreen screen: loader.item as SettingsScreen

    height: 900
    name: "SettingsScreen"
    visible: true
    when: windowShown
    width: 600

    // Made anew for each opening, as in the program.
    Loader {
        id: loader

        active: World.view !== null

        sourceComponent: SettingsScreen {
            view: World.view
        }
    }

    function open(good, excellent) {
        World.open(good, excellent);
        screen.open();
        tryCompare(screen, "opened", true);
    }

    function init() {
        // Nothing may be bound to the state of a screen that is closed.
        failOnWarning(/.?/);
        open(5, 10);
    }

    function cleanup() {
        screen.close();
        tryCompare(screen, "visible", false);
        World.close();
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

    function test_theFormReadsFromTopToBottom() {
        const version = World.view.version;
        compare(names(), ["Settings", "Done", "GENERAL", "Sync with iCloud", "Currency symbol $", "Highlight sums", "GOOD SERVICE", "Good", "5", "Specify what percentage of the bill the tip should be for a good service.", "EXCELLENT SERVICE", "Excellent", "10", "Specify what percentage of the bill the tip should be for an excellent service.", "THEME", "Theme", "System", "Dark", "Light", "ABOUT", World.view.copyright, "Version " + version, "Help"]);
    }

    function test_theSwitchesSwitch() {
        press("Currency symbol $");
        compare(World.showCurrency, false);
        press("Highlight sums");
        compare(World.highlightSums, false);
        compare(find("Highlight sums").checked, false);
    }

    function test_theSlidersStoreWholePercent_data() {
        return [{ tag: "good", name: "Good", stored: "serviceGood", other: "serviceExcellent" }, { tag: "excellent", name: "Excellent", stored: "serviceExcellent", other: "serviceGood" }];
    }

    function test_theSlidersStoreWholePercent(data) {
        const before = World[data.other];
        find(data.name).value = 37.9;
        compare(World[data.stored], 37);
        compare(World[data.other], before);
        verify(names().includes("37"));
    }

    function test_aStoredZeroIsRepairedOnOpening() {
        cleanup();
        open(0, 0);
        compare(World.serviceGood, 5);
        compare(World.serviceExcellent, 10);
        compare(find("Good").value, 5);
        compare(find("Excellent").value, 10);
    }

    function test_aPercentageBeyondTheScaleStaysUntilTheSliderIsMoved() {
        cleanup();
        open(250, 10);
        compare(find("Good").value, 100);
        compare(World.serviceGood, 250);
        find("Good").Accessible.decreaseAction();
        compare(World.serviceGood, 99);
    }

    function test_aThemeIsChosenByItsRow() {
        const rows = ["System", "Dark", "Light"];
        const themes = [0, 2, 1];
        [1, 2, 0].forEach(chosen => {
            mouseClick(find(rows[chosen]), 5);
            compare(World.theme, themes[chosen]);
            rows.forEach((name, index) => compare(find(name).Accessible.checked, index === chosen, name));
        });
    }

    function test_theTabKeyGoesFromTopToBottomAndRound() {
        const stops = ["Done", "Sync with iCloud", "Currency symbol $", "Highlight sums", "Good", "Excellent", "System", "Help", "Done"];
        stops.forEach(name => {
            compare(test.Window.window.activeFocusItem.Accessible.name, name);
            keyClick(Qt.Key_Tab);
        });
    }

    function test_whatHasTheKeyboardIsInSight() {
        const window = test.Window.window;
        const height = window.height;
        window.height = 320;
        tryCompare(window.contentItem, "height", 320);
        for (let stop = 0; stop < 9; ++stop) {
            const item = window.activeFocusItem;
            const top = item.mapToItem(window.contentItem, 0, 0).y;
            verify(top >= 0 && top + item.height <= 320, item.Accessible.name);
            keyClick(Qt.Key_Tab);
        }
        window.height = height;
        tryCompare(window.contentItem, "height", height);
    }

    function test_itIsAColumnOfAtMost640Points() {
        const window = test.Window.window;
        const width = window.width;
        window.width = 1400;
        tryCompare(window.contentItem, "width", 1400);
        compare(find("Highlight sums").width, 640);
        fuzzyCompare(find("Highlight sums").mapToItem(window.contentItem, 320, 0).x, 700, 1);
        window.width = width;
        tryCompare(window.contentItem, "width", width);
    }

    function test_doneAndEscapeClose_data() {
        return [{ tag: "Done", close: () => press("Done") }, { tag: "Escape", close: () => keyClick(Qt.Key_Escape) }];
    }

    function test_doneAndEscapeClose(data) {
        data.close();
        tryCompare(screen, "visible", false);
    }
}
