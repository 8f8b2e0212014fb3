import QtQuick
import Vexilo.Controls

// A button with an icon before its text.
ButtonBase {
    id: button

    required property string iconName

    font.pixelSize: Theme.bodyFontSize + 2
    leftPadding: Theme.lineSpace
    rightPadding: Theme.lineSpace

    contentItem: Row {
        spacing: Theme.lineSpace - 2

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            color: button.contentColor
            height: Theme.iconSize
            name: button.iconName
            width: Theme.iconSize
        }

        BodyText {
            anchors.verticalCenter: parent.verticalCenter
            color: button.contentColor
            font: button.font
            text: button.text
        }
    }
}
