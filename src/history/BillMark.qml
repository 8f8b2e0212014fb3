import QtQuick
import Vexilo.Controls

// Whether a row is marked to be deleted.
Rectangle {
    id: mark

    property bool marked: false

    border.color: mark.marked ? Theme.onBorder : Theme.softText
    border.width: 2
    color: mark.marked ? Theme.on : "transparent"
    height: 24
    radius: height / 2
    width: height

    Icon {
        anchors.centerIn: parent
        color: Theme.onText
        height: 16
        name: "checkmark"
        visible: mark.marked
        width: 16
    }
}
