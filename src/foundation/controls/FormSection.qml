import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A card of rows with a heading above it and, where there is something to explain, a remark below.
ColumnLayout {
    id: section

    property string footer
    required property string header
    default property alias rows: card.rows

    spacing: Theme.lineSpace - 4

    BodyText {
        Accessible.name: text
        Accessible.role: Accessible.Heading
        Layout.fillWidth: true
        Layout.leftMargin: Theme.rowPadding
        Layout.rightMargin: Theme.rowPadding
        color: Theme.softText
        font.pixelSize: Theme.smallFontSize - 1
        text: section.header
        wrapMode: Text.Wrap
    }

    Card {
        id: card

        Layout.fillWidth: true
    }

    BodyText {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        Layout.fillWidth: true
        Layout.leftMargin: Theme.rowPadding
        Layout.rightMargin: Theme.rowPadding
        color: Theme.softText
        font.pixelSize: Theme.smallFontSize - 1
        text: section.footer
        visible: text !== ""
        wrapMode: Text.Wrap
    }
}
