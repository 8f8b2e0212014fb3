import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// One field of a bill: its label, and its value at the end of the line.
Item {
    id: line

    property bool emphasised: false
    required property string label
    required property string value

    Accessible.name: line.label + " " + line.value
    Accessible.role: Accessible.StaticText
    Layout.fillWidth: true
    implicitHeight: Math.max(labelText.implicitHeight, valueText.implicitHeight) + 2 * Theme.lineSpace

    BodyText {
        id: labelText

        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding
        anchors.right: valueText.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        color: line.emphasised ? Theme.text : Theme.softText
        font.bold: line.emphasised
        font.pixelSize: line.emphasised ? Theme.fontSize1 : Theme.bodyFontSize + 2
        text: line.label
        wrapMode: Text.Wrap
    }

    FigureText {
        id: valueText

        anchors.right: parent.right
        anchors.rightMargin: Theme.rowPadding
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.text
        font.bold: line.emphasised
        font.pixelSize: labelText.font.pixelSize
        mirrored: Theme.rightToLeft
        text: line.value
        width: Math.min(implicitWidth, line.width * 0.6)
    }
}
