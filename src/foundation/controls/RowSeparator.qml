import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// The line between two rows of a card, indented on the side where reading starts.
Rectangle {
    Layout.fillWidth: true
    Layout.leftMargin: Theme.rowPadding
    Layout.rightMargin: 1
    color: Theme.line
    implicitHeight: 1
}
