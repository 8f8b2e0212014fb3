import QtQuick
import Vexilo.Controls

// A button with an icon before its text.
ButtonBase {
    id: button

    // Whether the icon points the way of reading, and so turns in a right-to-left layout.
    property bool directional: false
    required property string iconName
    // Whether only the icon is seen. Assistive software hears the text all the same.
    property bool iconOnly: false
    // What showing the text takes, beside a button that shows only its icon.
    readonly property real textRoom: content.spacing + label.implicitWidth + 2 * Theme.buttonPadding + Theme.iconSize - Theme.rowHeight

    font.pixelSize: Theme.bodyFontSize + 2
    leftPadding: button.iconOnly ? (Theme.rowHeight - Theme.iconSize) / 2 : Theme.buttonPadding
    rightPadding: button.leftPadding

    contentItem: Row {
        id: content

        spacing: Theme.lineSpace - 2

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            color: button.contentColor
            height: Theme.iconSize
            mirrored: button.directional && Theme.rightToLeft
            name: button.iconName
            width: Theme.iconSize
        }

        BodyText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            color: button.contentColor
            font: button.font
            text: button.text
            visible: !button.iconOnly
        }
    }
}
