import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// The line between two rows of a card, indented on the side where reading starts.
Rectangle {
    Layout.fillWidth: true
    Layout.leftMargin: LayoutMirroring.enabled ? 1 : Theme.rowPadding
    Layout.rightMargin: LayoutMirroring.enabled ? Theme.rowPadding : 1
    color: Theme.line
    implicitHeight: 1
}
