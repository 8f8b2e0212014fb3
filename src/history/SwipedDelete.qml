import Vexilo.Controls

// What a row that is swiped aside uncovers.
PushButton {
    contentColor: "white"
    fill: Theme.on
    font.bold: true
    text: qsTr("Delete")
}
