import QtQuick
import Vexilo.Controls

// What a row that is swiped aside uncovers.
PushButton {
    contentColor: Theme.onText
    fill: Theme.on
    focusPolicy: Qt.NoFocus // the keyboard has its Delete key
    font.bold: true
    text: qsTr("Delete")
}
