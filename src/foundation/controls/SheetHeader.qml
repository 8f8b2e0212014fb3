import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// The first line of a sheet or of a page in it: a title, and buttons at the end. The buttons move
// below the title where there is no room for both, and below each other where they have none.
Item {
    id: header

    default property alias buttons: buttonRow.data
    // How far the buttons reach beyond the header's end, so that the text of the last one, not its
    // edge, stands above the end of what follows. Below each other they end where the header does:
    // one may have a ground, which is seen, too.
    readonly property real overhang: buttonRow.isColumn ? 0 : Theme.buttonPadding
    // What a title gets at the least before the buttons move: one that may be cut still tells something.
    readonly property real roomForTitle: header.titleIsWhole ? header.titleWidth : Math.min(header.titleWidth, 4 * header.titleSize)
    readonly property bool stacked: header.width > 0 && header.roomForTitle + Theme.lineSpace + buttonRow.room - Theme.buttonPadding > header.width
    required property string title
    // Whether the title wraps instead of being cut at its line's end.
    property bool titleIsWhole: false
    readonly property alias titleHeight: titleText.height
    property real titleSize: Theme.fontSize3 + 4
    // In one line. The text's own implicit width is told anew whenever it gets another width, which
    // follows from this one.
    readonly property real titleWidth: Math.ceil(titleMetrics.advanceWidth)
    // Whether the title is longer than its line.
    readonly property alias truncated: titleText.truncated

    Layout.fillWidth: true
    implicitHeight: titleText.height + (header.stacked ? buttonRow.implicitHeight : 0)
    implicitWidth: header.titleWidth + Theme.lineSpace + buttonRow.implicitWidth

    TextMetrics {
        id: titleMetrics

        font: titleText.font
        text: header.title
    }

    BodyText {
        id: titleText

        Accessible.name: header.title
        Accessible.role: Accessible.Heading
        anchors.left: parent.left
        anchors.right: header.stacked ? parent.right : buttonRow.left
        anchors.rightMargin: header.stacked ? 0 : Theme.lineSpace
        font.bold: true
        font.pixelSize: header.titleSize
        fontSizeMode: header.titleIsWhole ? Text.FixedSize : Text.HorizontalFit
        height: Math.max(Theme.rowHeight, implicitHeight)
        minimumPixelSize: Math.ceil(header.titleSize * 0.8)
        text: header.title
        wrapMode: header.titleIsWhole ? Text.Wrap : Text.NoWrap
    }

    GridLayout {
        id: buttonRow

        readonly property bool isColumn: header.width > 0 && buttonRow.room > header.width + Theme.buttonPadding
        // Of all buttons beside each other.
        readonly property real room: Array.from(children).reduce((sum, button) => sum + (button.visible ? button.implicitWidth : 0), 0)

        anchors.right: parent.right
        anchors.rightMargin: -header.overhang
        anchors.verticalCenter: titleText.verticalCenter
        anchors.verticalCenterOffset: header.stacked ? (titleText.height + height) / 2 : 0
        columnSpacing: 0
        columns: buttonRow.isColumn ? 1 : -1
        // Buttons of different widths end at the same place.
        layoutDirection: buttonRow.isColumn ? Qt.RightToLeft : Qt.LeftToRight
        rowSpacing: 0
        width: Math.min(implicitWidth, header.width + header.overhang)
    }
}
