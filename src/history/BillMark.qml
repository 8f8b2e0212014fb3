import QtQuick
import Vexilo.Controls

// Whether a row is marked to be deleted.
Rectangle {
    id: mark

    property bool marked: false

    border.color: mark.marked ? Theme.onBorder : Theme.softText
    border.width: 2
    color: mark.marked ? Theme.on : "transparent"
    // Grows with the texts, but leaves most of a narrow row to them.
    height: 2 * Math.round(Math.min(Theme.iconSize + 2, 30) / 2)
    radius: height / 2
    width: height

    Icon {
        anchors.centerIn: parent
        color: Theme.onText
        height: 2 * Math.round(parent.height / 3)
        name: "checkmark"
        visible: mark.marked
        width: height
    }
}
