pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A choice of one among a few, as rows of a card. The chosen row is the group's stop of the Tab key.
FocusScope {
    id: group

    required property list<RadioChoice> choices
    // The number of the chosen row; a negative one chooses none.
    required property int currentValue
    required property string name

    signal chosen(int value)

    function choose(index: int) {
        if (index >= 0 && index < group.choices.length)
            group.chosen(group.choices[index].value);
    }

    Accessible.name: group.name
    Accessible.role: Accessible.Grouping
    Layout.fillWidth: true
    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        Repeater {
            model: group.choices

            RadioRow {
                required property RadioChoice modelData

                checked: group.currentValue === modelData.value
                focus: checked || (index === 0 && group.currentValue < 0)
                text: modelData.text
                onChosen: group.chosen(modelData.value)
                onStepped: offset => group.choose(index + offset)
            }
        }
    }
}
