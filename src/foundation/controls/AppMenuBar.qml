import QtQuick
import Vexilo.Controls

// The window's menu bar. Fill it with MenuTitles.
Item {
    id: bar

    default property alias titles: row.data

    Accessible.role: Accessible.MenuBar
    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Theme.rightToLeft
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin - Theme.lineSpace
    }
}
