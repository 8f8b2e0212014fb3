import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A button with a text. In a layout that has no room for it, its text is drawn smaller or takes more
// lines.
ButtonBase {
    id: button

    // Whether a text that is wider than the button takes more lines.
    property bool wraps: false

    Layout.fillWidth: true
    Layout.maximumWidth: Math.ceil(implicitWidth)
    font.pixelSize: Theme.bodyFontSize
    leftPadding: Theme.buttonPadding
    rightPadding: Theme.buttonPadding

    contentItem: BodyText {
        color: button.contentColor
        font: button.font
        fontSizeMode: button.wraps ? Text.FixedSize : Text.HorizontalFit
        horizontalAlignment: Text.AlignHCenter
        minimumPixelSize: Math.ceil(font.pixelSize * 0.6)
        text: button.text
        wrapMode: button.wraps ? Text.Wrap : Text.NoWrap
    }
}
