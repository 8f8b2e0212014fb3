pragma ComponentBehavior: Bound

import QtQuick
import Vexilo.Controls

// A choice of one among a few, side by side. It stretches with its row instead of hugging its
// content. To assistive software it is a group of radio buttons, and the chosen one has the keyboard.
FocusScope {
    id: picker

    // The index of the chosen segment; any other number chooses none.
    required property int currentIndex
    required property string name
    // Each segment's icon and spoken name.
    required property list<SegmentedPickerItem> segments

    signal chosen(int index)

    function step(offset: int) {
        const to = Math.max(0, Math.min(picker.segments.length - 1, picker.currentIndex + offset));
        if (to !== picker.currentIndex)
            picker.chosen(to);
    }

    Accessible.name: picker.name
    Accessible.role: Accessible.Grouping
    Keys.onLeftPressed: picker.step(LayoutMirroring.enabled ? 1 : -1)
    Keys.onRightPressed: picker.step(LayoutMirroring.enabled ? -1 : 1)
    implicitHeight: Theme.rowHeight + 4
    implicitWidth: picker.segments.length * 82

    Rectangle {
        anchors.fill: parent
        border.color: Theme.controlBorder
        color: Theme.controlFill
        radius: Theme.controlRadius

        FocusRing {
            focused: picker.activeFocus
        }
    }

    Row {
        anchors.fill: parent

        Repeater {
            model: picker.segments

            Segment {
                required property SegmentedPickerItem modelData

                checked: picker.currentIndex === index
                focus: checked || (index === 0 && (picker.currentIndex < 0 || picker.currentIndex >= picker.segments.length))
                height: parent.height
                icon: modelData.icon
                name: modelData.name
                width: parent.width / picker.segments.length
                onChosen: picker.chosen(index)
            }
        }
    }
}
