import QtQuick
import Vexilo.Controls

// What lies below a row of the list: its state, the line to the next row, and the focus.
Item {
    id: ground

    property bool down: false
    property int focusReason: Qt.OtherFocusReason
    property bool focused: false
    property bool hovered: false
    // Where the line to the next row begins.
    property real indent: 0
    // Whether the row stands out for longer than a press.
    property bool raised: false
    property bool separated: true

    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: 4
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        anchors.topMargin: 4
        border.color: Theme.controlBorder
        color: Theme.controlFill
        radius: Theme.controlRadius - 2
        visible: ground.raised
    }

    ControlFeedback {
        anchors.bottomMargin: 4
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        anchors.topMargin: 4
        down: ground.down
        hovered: ground.hovered
        radius: Theme.controlRadius - 2
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: ground.indent
        anchors.right: parent.right
        color: Theme.line
        height: 1
        visible: ground.separated
    }

    FocusRing {
        anchors.bottomMargin: 4
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        anchors.topMargin: 4
        focused: ground.focused
        radius: Theme.controlRadius - 2
        reason: ground.focusReason
    }
}
