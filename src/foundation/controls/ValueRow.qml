import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A row of a card that says something: a label, and what it is at the end of the row.
Item {
    id: row

    required property string label
    property string value

    Accessible.name: row.value === "" ? row.label : row.label + " " + row.value
    Accessible.role: Accessible.StaticText
    Layout.fillWidth: true
    implicitHeight: Math.max(Theme.rowHeight + Theme.lineSpace, content.implicitHeight + 2 * Theme.lineSpace)

    RowLayout {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding
        anchors.right: parent.right
        anchors.rightMargin: Theme.rowPadding
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.lineSpace

        BodyText {
            Layout.fillWidth: true
            text: row.label
            wrapMode: Text.Wrap
        }

        BodyText {
            color: Theme.softText
            text: row.value
            visible: text !== ""
        }
    }
}
