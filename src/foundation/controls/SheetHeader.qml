import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// The first line of a sheet or of a page in it: a title, and buttons at the end. The buttons of a
// title that must be read whole move below it where there is no room for both.
Item {
    id: header

    default property alias buttons: buttonRow.data
    readonly property bool stacked: header.titleIsWhole && titleText.implicitWidth + Theme.lineSpace + buttonRow.implicitWidth > header.width
    required property string title
    // Whether the title wraps instead of being cut at its line's end.
    property bool titleIsWhole: false
    property real titleSize: Theme.fontSize3 + 4
    // Whether the title is longer than its line.
    readonly property alias truncated: titleText.truncated

    Layout.fillWidth: true
    implicitHeight: titleText.height + (header.stacked ? buttonRow.implicitHeight : 0)
    implicitWidth: titleText.implicitWidth + Theme.lineSpace + buttonRow.implicitWidth

    BodyText {
        id: titleText

        Accessible.name: header.title
        Accessible.role: Accessible.Heading
        anchors.left: parent.left
        anchors.right: header.stacked ? parent.right : buttonRow.left
        anchors.rightMargin: header.stacked ? 0 : Theme.lineSpace
        font.bold: true
        font.pixelSize: header.titleSize
        height: Math.max(Theme.rowHeight, implicitHeight)
        text: header.title
        wrapMode: header.titleIsWhole ? Text.Wrap : Text.NoWrap
    }

    RowLayout {
        id: buttonRow

        anchors.right: parent.right
        anchors.verticalCenter: titleText.verticalCenter
        anchors.verticalCenterOffset: header.stacked ? (titleText.height + height) / 2 : 0
        spacing: 0
    }
}
