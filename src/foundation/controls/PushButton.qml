import QtQuick
import Vexilo.Controls

// A button with a text.
ButtonBase {
    id: button

    font.pixelSize: Theme.bodyFontSize
    leftPadding: Theme.lineSpace + 2
    rightPadding: Theme.lineSpace + 2

    contentItem: BodyText {
        color: button.contentColor
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        text: button.text
    }
}
