import QtQuick
import Vexilo.Controls

// Drawn around what has the keyboard, unless the pointer gave it: who clicks, sees where.
Rectangle {
    id: ring

    required property bool focused
    // What is left free between the ring and what it is around, which it would only seem to enlarge if
    // it touched it. Less than nothing draws the ring inside.
    property real gap: 2
    property int reason: Qt.OtherFocusReason

    anchors.fill: parent
    anchors.margins: -border.width - ring.gap
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    visible: ring.focused && ring.reason !== Qt.MouseFocusReason
    z: 1
}
