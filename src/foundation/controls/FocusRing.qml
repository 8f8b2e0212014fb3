import QtQuick
import Vexilo.Controls

// Drawn around what has the keyboard, unless the pointer gave it: who clicks, sees where. A gap keeps
// it from what it is around, which it would only seem to enlarge if it touched it.
Rectangle {
    id: ring

    required property bool focused
    // Whether it is drawn within the edges, for what shows none of its own.
    property bool inside: false
    readonly property real gap: ring.inside ? -border.width : 2
    property int reason: Qt.OtherFocusReason
    // The radius of the corners of what it is around.
    property real surrounded: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -border.width - ring.gap
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    radius: ring.surrounded + ring.gap + border.width
    visible: ring.focused && ring.reason !== Qt.MouseFocusReason
    z: 1
}
