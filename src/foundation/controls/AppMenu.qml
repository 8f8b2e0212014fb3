import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A menu of the menu bar. Fill it with AppMenuItems.
T.Menu {
    id: menu

    function widestItem(): real {
        let width = 0;
        for (let i = 0; i < menu.count; ++i)
            width = Math.max(width, menu.itemAt(i).implicitWidth);
        return width;
    }

    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: Math.max(200, menu.widestItem() + leftPadding + rightPadding)
    margins: 4
    padding: 6
    // Below the title, and on along the way of reading.
    x: Theme.rightToLeft ? -width : 0

    background: Rectangle {
        border.color: Theme.line
        color: Theme.card
        radius: Theme.controlRadius
    }
    contentItem: ListView {
        currentIndex: menu.currentIndex
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
    }
}
