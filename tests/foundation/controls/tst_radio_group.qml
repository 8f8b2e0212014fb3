import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property var chosen: []
    property int theme: 0

    height: 300
    name: "RadioGroup"
    visible: true
    when: windowShown
    width: 400

    Item {
        id: before

        activeFocusOnTab: true
        height: 1
        width: 1
    }

    RadioGroup {
        id: group

        choices: [
            RadioChoice {
                text: "System"
                value: 0
            },
            RadioChoice {
                text: "Dark"
                value: 2
            },
            RadioChoice {
                text: "Light"
                value: 1
            }
        ]
        currentValue: test.theme
        name: "Theme"
        width: 400
        y: 10
        onChosen: value => {
            test.theme = value;
            test.chosen.push(value);
        }
    }

    Item {
        id: after

        activeFocusOnTab: true
        height: 1
        width: 1
        y: 290
    }

    function rows() {
        return Array.from(group.children[0].children).filter(row => row.Accessible.role === Accessible.RadioButton);
    }

    function init() {
        group.enabled = true;
        test.theme = 0;
        test.chosen = [];
        before.forceActiveFocus();
    }

    function test_aPressAnywhereInARowChoosesIt_data() {
        return [{ tag: "at the text", x: 30 }, { tag: "in the middle", x: 200 }, { tag: "at the end", x: 395 }];
    }

    function test_aPressAnywhereInARowChoosesIt(data) {
        mouseClick(rows()[1], data.x);
        compare(test.theme, 2);
        mouseClick(rows()[2], data.x);
        compare(test.theme, 1);
        compare(rows().map(row => row.checked), [false, false, true]);
    }

    function test_theChosenRowCanBeChosenAgain() {
        mouseClick(rows()[0]);
        compare(test.chosen, [0]);
    }

    function test_theGroupIsOneStopOfTheTabKey() {
        test.theme = 2;
        keyClick(Qt.Key_Tab);
        verify(rows()[1].activeFocus);
        keyClick(Qt.Key_Tab);
        verify(after.activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(rows()[1].activeFocus);
    }

    function test_arrowsChooseTheNextRowAndStopAtTheEnds() {
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Up);
        compare(test.theme, 0);
        keyClick(Qt.Key_Down);
        compare(test.theme, 2);
        verify(rows()[1].activeFocus);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        compare(test.theme, 1);
        verify(rows()[2].activeFocus);
        compare(test.chosen, [2, 1]);
    }

    function test_spaceAndReturnChooseTheRow() {
        test.theme = -1;
        keyClick(Qt.Key_Tab);
        verify(rows()[0].activeFocus); // with no row chosen, the first one has the keyboard
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Return);
        compare(test.chosen, [0, 0]);
    }

    function test_assistiveSoftwareMeetsRadioButtonsInAGroup() {
        compare(group.Accessible.role, Accessible.Grouping);
        compare(group.Accessible.name, "Theme");
        compare(rows().map(row => row.Accessible.name), ["System", "Dark", "Light"]);
        compare(rows().map(row => row.Accessible.checked), [true, false, false]);
        rows()[2].Accessible.pressAction();
        compare(test.theme, 1);
        rows()[1].Accessible.toggleAction();
        compare(test.theme, 2);
    }

    function test_aDisabledGroupCannotBeChanged() {
        group.enabled = false;
        rows()[2].Accessible.pressAction();
        rows()[2].Accessible.toggleAction();
        mouseClick(rows()[2]);
        compare(test.theme, 0);
    }

    function test_everyRowCanBeHitByAFinger() {
        rows().forEach(row => verify(row.height >= 44));
    }
}
