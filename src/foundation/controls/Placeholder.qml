import QtQuick
import Vexilo.Controls

// Stands where there is nothing yet: an icon, what is missing, and, where it helps, what to do.
Item {
    id: placeholder

    property string hint: ""
    readonly property bool hinted: placeholder.hint !== ""
    required property string iconName
    required property string text

    implicitHeight: column.implicitHeight

    Column {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.lineSpace

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Theme.controlFill
            height: 2.5 * Theme.rowHeight
            radius: height / 2
            // Where the room is small, it is the words'.
            visible: placeholder.height > 2 * height + words.implicitHeight + (placeholder.hinted ? help.implicitHeight : 0)
            width: height

            Icon {
                anchors.centerIn: parent
                color: Theme.softText
                height: width
                name: placeholder.iconName
                width: Math.round(parent.height * 0.42)
            }
        }

        BodyText {
            id: words

            Accessible.name: text
            Accessible.role: Accessible.StaticText
            color: placeholder.hinted ? Theme.text : Theme.softText
            font.bold: placeholder.hinted
            horizontalAlignment: Text.AlignHCenter
            text: placeholder.text
            topPadding: Theme.lineSpace
            width: parent.width
            wrapMode: Text.Wrap
        }

        BodyText {
            id: help

            Accessible.name: text
            Accessible.role: Accessible.StaticText
            color: Theme.softText
            font.pixelSize: Theme.bodyFontSize
            horizontalAlignment: Text.AlignHCenter
            text: placeholder.hint
            visible: placeholder.hinted
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
