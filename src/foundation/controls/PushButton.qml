import QtQuick
import Vexilo.Controls

// A button with a text.
ButtonBase {
    id: button

    // Whether a text that is wider than the button takes more lines.
    property bool wraps: false

    font.pixelSize: Theme.bodyFontSize
    leftPadding: Theme.lineSpace + 2
    rightPadding: Theme.lineSpace + 2

    contentItem: BodyText {
        color: button.contentColor
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        text: button.text
        wrapMode: button.wraps ? Text.Wrap : Text.NoWrap
    }
}
