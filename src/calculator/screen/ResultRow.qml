import QtQuick
import Vexilo.Controls

// One figure of the results: an icon, a label, and the amount at the end of the row.
Item {
    id: row

    required property string amount
    property real amountSize: Theme.fontSize3
    required property color color
    required property string iconName
    required property string label
    property real labelSize: Theme.fontSize1
    property bool roundedUp: false

    Accessible.name: row.label + " " + row.amount
    Accessible.role: Accessible.StaticText
    implicitHeight: Math.max(labelText.implicitHeight, amountText.implicitHeight) + 3 * Theme.lineSpace

    Icon {
        id: icon

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        color: row.color
        name: row.iconName
    }

    BodyText {
        id: labelText

        anchors.left: icon.right
        anchors.leftMargin: Theme.lineSpace + 4
        anchors.right: roundedUpIcon.left
        anchors.verticalCenter: parent.verticalCenter
        color: row.color
        font.pixelSize: row.labelSize
        text: row.label
        wrapMode: Text.Wrap
    }

    Icon {
        id: roundedUpIcon

        anchors.right: amountText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        color: row.color
        height: 20
        name: "arrow.up.circle"
        visible: row.roundedUp
        width: 20
    }

    FigureText {
        id: amountText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: row.color
        font.bold: true
        font.pixelSize: row.amountSize
        mirrored: Theme.rightToLeft
        text: row.amount
        width: Math.min(implicitWidth, row.width * 0.6)
    }
}
