import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property bool option: false

    height: 200
    name: "SwitchRow"
    visible: true
    when: windowShown
    width: 400

    SwitchRow {
        id: row

        on: test.option
        text: "Round up tip"
        width: 400
        onSwitched: checked => test.option = checked
    }

    function init() {
        test.option = false;
        row.enabled = true;
        row.forceActiveFocus(Qt.TabFocusReason);
    }

    function test_theWholeRowIsTheTarget() {
        mouseClick(row, 20, row.height / 2);
        compare(test.option, true);
        mouseClick(row, 380, row.height / 2);
        compare(test.option, false);
    }

    function test_keysSwitchIt_data() {
        return [{ tag: "space", key: Qt.Key_Space }, { tag: "return", key: Qt.Key_Return }];
    }

    function test_keysSwitchIt(data) {
        keyClick(data.key);
        compare(test.option, true);
    }

    function test_assistiveSoftwareSwitchesIt() {
        row.Accessible.toggleAction();
        compare(test.option, true);
        row.Accessible.pressAction();
        compare(test.option, false);
        compare(row.Accessible.role, Accessible.CheckBox);
        compare(row.Accessible.name, "Round up tip");
    }

    function test_itFollowsItsValueAfterBeingSwitched() {
        mouseClick(row);
        compare(row.checked, true);
        test.option = false;
        compare(row.checked, false);
        test.option = true;
        compare(row.checked, true);
    }

    function test_aDisabledRowCannotBeSwitched() {
        row.enabled = false;
        row.Accessible.toggleAction();
        compare(test.option, false);
        compare(row.checked, false);
    }

    function test_aLongLabelWraps() {
        row.text = "A label that is much too long for a single line of a row that is four hundred points wide";
        verify(row.height > 60);
        row.text = "Round up tip";
    }
}
