import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A group of rows on a raised surface.
Rectangle {
    id: card

    default property alias rows: column.data
    // Above the first row and below the last one.
    property real verticalPadding: 0

    border.color: Theme.line
    color: Theme.card
    implicitHeight: column.implicitHeight + 2 * card.verticalPadding
    implicitWidth: column.implicitWidth
    radius: Theme.cardRadius

    ColumnLayout {
        id: column

        anchors.bottomMargin: card.verticalPadding
        anchors.fill: parent
        anchors.topMargin: card.verticalPadding
        spacing: 0
    }
}
