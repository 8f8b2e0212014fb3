import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A command of a menu.
T.MenuItem {
    id: item

    property string iconName: ""
    property string shortcutText: ""

    Accessible.name: item.text
    Accessible.onPressAction: {
        item.triggered();
        item.menu.close();
    }
    Accessible.role: Accessible.MenuItem
    font.pixelSize: Theme.bodyFontSize
    implicitHeight: Math.max(Theme.rowHeight, implicitContentHeight)
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.lineSpace
    rightPadding: Theme.lineSpace

    background: Item {
        ControlFeedback {
            down: item.down
            hovered: item.highlighted
            radius: Theme.controlRadius - 4
        }
    }
    contentItem: RowLayout {
        LayoutMirroring.childrenInherit: true
        LayoutMirroring.enabled: Theme.rightToLeft
        spacing: Theme.lineSpace

        Icon {
            Layout.preferredHeight: Theme.iconSize
            Layout.preferredWidth: Theme.iconSize
            color: Theme.accentText
            name: item.iconName
        }

        BodyText {
            Layout.fillWidth: true
            font: item.font
            text: item.text
            wrapMode: Text.Wrap
        }

        BodyText {
            Layout.leftMargin: Theme.lineSpace
            color: Theme.softText
            font.pixelSize: Theme.smallFontSize
            text: item.shortcutText
        }
    }
}
