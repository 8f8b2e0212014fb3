import QtQuick
import Vexilo.Controls

// What a row of the list shows. Anchors, not a layout: a fast scroll fills dozens of these a frame.
Item {
    id: line

    required property string amount
    required property string date
    // The room that dates get in every row, so that the amounts stand below each other.
    property real dateColumn: 0
    readonly property real dateRoom: line.stacked ? 0 : dateText.width + Theme.lineSpace
    readonly property real dateWidth: dateText.implicitWidth
    // Whether the row stands on a darker ground, on which soft text is too soft.
    property bool emphasised: false
    readonly property alias descriptionX: refText.x
    property bool markable: false
    property bool marked: false
    readonly property real markRoom: line.markable ? mark.width + Theme.lineSpace : 0
    required property string ref
    // Whether the date stands below the description instead of at the end.
    property bool stacked: false

    Loader {
        id: mark

        active: line.markable
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        source: "BillMark.qml"
        onLoaded: (item as BillMark).marked = Qt.binding(() => line.marked)
    }

    BodyText {
        id: refText

        // A loader keeps the size of what it has let go.
        anchors.left: line.markable ? mark.right : line.left
        anchors.leftMargin: line.markable ? Theme.lineSpace : 0
        anchors.right: amountText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: line.stacked ? -dateText.implicitHeight / 2 : 0
        text: line.ref
    }

    FigureText {
        id: amountText

        anchors.right: line.stacked ? line.right : dateText.left
        anchors.rightMargin: line.stacked ? 0 : Theme.lineSpace
        anchors.verticalCenter: refText.verticalCenter
        color: Theme.text
        font.bold: true
        font.pixelSize: Theme.fontSize1
        mirrored: Theme.rightToLeft
        text: line.amount
        // Short descriptions leave their room to long amounts.
        width: Math.min(implicitWidth, Math.max(line.width * 0.35, line.width - line.markRoom - refText.implicitWidth - line.dateRoom - Theme.lineSpace))
    }

    BodyText {
        id: dateText

        anchors.right: parent.right
        anchors.rightMargin: line.stacked ? line.width - line.markRoom - dateText.width : 0
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: line.stacked ? refText.implicitHeight / 2 : 0
        color: line.emphasised ? Theme.text : Theme.softText
        font.pixelSize: Theme.smallFontSize + 2
        fontSizeMode: line.stacked ? Text.HorizontalFit : Text.FixedSize
        horizontalAlignment: line.stacked ? Text.AlignLeft : Text.AlignRight
        minimumPixelSize: Math.ceil(font.pixelSize * 0.6)
        text: line.date
        width: line.stacked ? Math.min(implicitWidth, line.width - line.markRoom) : Math.max(implicitWidth, line.dateColumn)
    }
}
