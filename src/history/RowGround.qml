import QtQuick
import Vexilo.Controls

// What lies below a row of the list: its state, the line to the next row, and the focus.
Item {
    id: ground

    // What the list's scroll bar takes at the row's end.
    property real barRoom: 0
    property bool down: false
    property int focusReason: Qt.OtherFocusReason
    property bool focused: false
    // Between the grounds of two rows lies twice this.
    readonly property real gap: 4
    property bool hovered: false
    // Where the line to the next row begins.
    property real indent: 0
    // Between a ground and the sides of the list.
    readonly property real inset: 5
    // Whether the row stands out for longer than a press.
    property bool raised: false
    property bool separated: true

    Item {
        anchors.bottomMargin: ground.gap
        anchors.fill: parent
        anchors.leftMargin: ground.inset
        anchors.rightMargin: ground.inset + ground.barRoom
        anchors.topMargin: ground.gap

        Rectangle {
            anchors.fill: parent
            border.color: Theme.controlBorder
            color: Theme.controlFill
            radius: Theme.controlRadius - 2
            visible: ground.raised
        }

        ControlFeedback {
            down: ground.down
            hovered: ground.hovered
            radius: Theme.controlRadius - 2
        }

        FocusRing {
            focused: ground.focused
            inside: true
            reason: ground.focusReason
            surrounded: Theme.controlRadius - 2
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: ground.indent
        anchors.right: parent.right
        // A list that scrolls brings the line past the round corners of its card.
        anchors.rightMargin: ground.barRoom > 0 ? ground.inset + ground.barRoom : 0
        color: Theme.line
        height: 1
        visible: ground.separated
    }
}
