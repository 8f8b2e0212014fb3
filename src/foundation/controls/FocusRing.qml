import QtQuick
import Vexilo.Controls

// Drawn around what has the keyboard, unless the pointer gave it: who clicks, sees where.
Rectangle {
    id: ring

    required property bool focused
    property int reason: Qt.OtherFocusReason

    anchors.fill: parent
    anchors.margins: -border.width - 1
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    visible: ring.focused && ring.reason !== Qt.MouseFocusReason
    z: 1
}
