import QtQuick
import Vexilo.Controls

// One figure of the results: an icon, a label, and the amount at the end of the row.
Item {
    id: row

    required property string amount
    property real amountSize: Theme.fontSize3
    required property color color
    // Whether the label has no room for a word of common length beside the amount. A row that was not
    // laid out yet is not: it would be laid out twice.
    readonly property bool cramped: row.width > 0 && row.width - row.roomBeside - row.roomForIcons < 4.5 * row.labelSize
    required property string iconName
    required property string label
    property real labelSize: Theme.fontSize1
    // What an amount beside the label takes.
    readonly property real roomBeside: Math.min(amountText.implicitWidth, row.width * 0.6)
    readonly property real roomForIcons: icon.width + Theme.lineSpace + 4 + (row.roundedUp ? roundedUpIcon.width + Theme.lineSpace : 0)
    property bool roundedUp: false
    readonly property string spoken: row.label + " " + row.amount
    // Whether the amount stands below the label instead of beside it.
    property bool stacked: false

    Accessible.name: row.spoken
    Accessible.role: Accessible.StaticText
    implicitHeight: (row.stacked ? labelText.implicitHeight + amountText.implicitHeight : Math.max(labelText.implicitHeight, amountText.implicitHeight)) + 3 * Theme.lineSpace

    Icon {
        id: icon

        anchors.left: parent.left
        anchors.verticalCenter: labelText.verticalCenter
        color: row.color
        height: Theme.iconSize
        name: row.iconName
        width: Theme.iconSize
    }

    BodyText {
        id: labelText

        anchors.left: icon.right
        anchors.leftMargin: Theme.lineSpace + 4
        anchors.right: row.stacked ? parent.right : roundedUpIcon.left
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: row.stacked ? -amountText.implicitHeight / 2 : 0
        color: row.color
        font.pixelSize: row.labelSize
        text: row.label
        wrapMode: Text.Wrap
    }

    Icon {
        id: roundedUpIcon

        anchors.right: amountText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: amountText.verticalCenter
        color: row.color
        height: Theme.iconSize - 2
        name: "arrow.up.circle"
        visible: row.roundedUp
        width: Theme.iconSize - 2
    }

    FigureText {
        id: amountText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: row.stacked ? labelText.implicitHeight / 2 : 0
        color: row.color
        font.bold: true
        font.pixelSize: row.amountSize
        mirrored: Theme.rightToLeft
        text: row.amount
        width: row.stacked ? Math.min(implicitWidth, row.width - row.roomForIcons) : row.roomBeside
    }
}
