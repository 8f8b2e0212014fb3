import QtQuick
import Vexilo.Controls

// What a row of the list shows. Anchors, not a layout: a fast scroll fills dozens of these a frame.
Item {
    id: line

    required property string amount
    required property string date
    // The room that dates get in every row, so that the amounts stand below each other.
    property real dateColumn: 0
    readonly property real dateWidth: dateText.implicitWidth
    property bool markable: false
    property bool marked: false
    required property string ref

    Loader {
        id: mark

        active: line.markable
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        source: "BillMark.qml"
        onLoaded: (item as BillMark).marked = Qt.binding(() => line.marked)
    }

    BodyText {
        anchors.left: mark.right
        anchors.leftMargin: line.markable ? Theme.lineSpace : 0
        anchors.right: amountText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        text: line.ref
    }

    FigureText {
        id: amountText

        anchors.right: dateText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.text
        font.bold: true
        font.pixelSize: Theme.fontSize1
        mirrored: Theme.rightToLeft
        text: line.amount
        width: Math.min(implicitWidth, line.width * 0.35)
    }

    BodyText {
        id: dateText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.softText
        font.pixelSize: 16
        horizontalAlignment: Text.AlignRight
        text: line.date
        width: Math.max(implicitWidth, line.dateColumn)
    }
}
