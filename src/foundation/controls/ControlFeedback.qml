import QtQuick
import Vexilo.Controls

// Laid over a control's background while the pointer is on it or presses it.
Rectangle {
    id: feedback

    property bool down: false
    property bool hovered: false

    anchors.fill: parent
    color: feedback.down ? Theme.pressed : Theme.hovered
    visible: feedback.down || feedback.hovered
}
