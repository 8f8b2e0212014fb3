import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A button of a dialog. The buttons of a dialog share its width, and are as high as the highest.
PushButton {
    id: button

    property bool destructive: false
    // Whether this is what the dialog suggests to do.
    property bool preferred: false
    // What the longest word of the text takes, which is not to be broken.
    readonly property real wordWidth: Math.ceil(words.contentWidth) + leftPadding + rightPadding

    // Two lines of text are not to touch the edges.
    bottomPadding: Theme.lineSpace - 2
    topPadding: Theme.lineSpace - 2
    Layout.fillHeight: true
    Layout.fillWidth: true
    Layout.maximumWidth: Infinity
    Layout.preferredWidth: 1
    contentColor: destructive ? Theme.onText : Theme.accentText
    fill: destructive ? Theme.on : Theme.controlFill
    font.bold: preferred || destructive
    font.pixelSize: Theme.bodyFontSize + 1
    leftPadding: 6
    rightPadding: 6
    wraps: true

    BodyText {
        id: words

        elide: Text.ElideNone
        font: button.font
        text: button.text
        visible: false
        width: 1
        wrapMode: Text.WordWrap
    }
}
