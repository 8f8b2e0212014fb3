import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// Where a list stands, and a handle to drag it by. Assistive software scrolls the list itself.
T.ScrollBar {
    id: bar

    Accessible.ignored: true
    implicitWidth: 14
    // Long lists keep a handle that can be hit.
    minimumSize: bar.height > 0 ? Math.min(1, Theme.rowHeight / bar.height) : 0
    padding: 3
    visible: bar.size < 1

    contentItem: Rectangle {
        color: bar.pressed || bar.hovered ? Theme.text : Theme.softText
        implicitWidth: 8
        opacity: 0.8
        radius: width / 2
    }
}
