import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A short remark that takes no room while there is nothing to say, and is spoken when it appears.
BodyText {
    Accessible.name: text
    Accessible.role: Accessible.Notification
    Layout.fillWidth: true
    Layout.maximumWidth: implicitWidth
    color: Theme.invalid
    font.pixelSize: Theme.smallFontSize
    visible: text !== ""
    wrapMode: Text.Wrap
}
