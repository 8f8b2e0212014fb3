import QtQuick
import Vexilo.Controls

// One choice of a SegmentedPicker. The one that is chosen is the picker's stop of the Tab key.
Item {
    id: segment

    required property bool checked
    required property string icon
    required property int index
    // What is drawn keeps away from the picker's edge, what can be hit does not.
    readonly property real inset: 4
    required property string name

    signal chosen

    Accessible.checkable: true
    Accessible.checked: segment.checked
    Accessible.focusable: true
    Accessible.name: segment.name
    Accessible.onPressAction: segment.chosen()
    Accessible.onToggleAction: segment.chosen()
    Accessible.role: Accessible.RadioButton
    Keys.onSpacePressed: segment.chosen()
    activeFocusOnTab: segment.focus

    Rectangle {
        anchors.fill: parent
        anchors.margins: segment.inset
        border.color: Theme.controlEdge
        color: Theme.knob
        radius: Theme.controlRadius - 2
        visible: segment.checked
    }

    ControlFeedback {
        anchors.margins: segment.inset
        down: tap.pressed
        hovered: hover.hovered && !segment.checked
        radius: Theme.controlRadius - 2
    }

    Icon {
        anchors.centerIn: parent
        color: segment.checked ? Theme.knobIcon : Theme.softText
        height: Theme.iconSize
        name: segment.icon
        width: Theme.iconSize
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: segment.chosen()
    }
}
