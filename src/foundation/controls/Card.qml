import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A group of rows on a raised surface.
Rectangle {
    id: card

    default property alias rows: column.data

    border.color: Theme.line
    color: Theme.card
    implicitHeight: column.implicitHeight
    implicitWidth: column.implicitWidth
    radius: Theme.cardRadius

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0
    }
}
