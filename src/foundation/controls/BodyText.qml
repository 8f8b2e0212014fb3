import QtQuick
import Vexilo.Controls

// A text of the interface. What assistive software reads is said by the row or control around it.
Text {
    color: Theme.text
    elide: Text.ElideRight
    font.pixelSize: Theme.fontSize1
    horizontalAlignment: Text.AlignLeft
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
