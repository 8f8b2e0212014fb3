import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// The first line of a sheet or of a page in it: a title, and buttons at the end.
RowLayout {
    id: header

    default property alias buttons: buttonRow.data
    required property string title
    // Whether the title is longer than its line.
    readonly property alias truncated: titleText.truncated
    property real titleSize: Theme.fontSize3 + 4

    implicitHeight: Math.max(Theme.rowHeight, titleText.implicitHeight)
    spacing: Theme.lineSpace

    BodyText {
        id: titleText

        Accessible.name: header.title
        Accessible.role: Accessible.Heading
        Layout.fillWidth: true
        font.bold: true
        font.pixelSize: header.titleSize
        text: header.title
    }

    RowLayout {
        id: buttonRow

        spacing: 0
    }
}
