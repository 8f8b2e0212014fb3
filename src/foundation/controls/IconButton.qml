import QtQuick
import Vexilo.Controls

// A button that shows only an icon. It must be given a spoken name.
ButtonBase {
    id: button

    // Whether the icon points the way of reading, and so turns in a right-to-left layout.
    property bool directional: false
    required property string iconName

    contentItem: Item {
        implicitHeight: icon.height
        implicitWidth: icon.width

        Icon {
            id: icon

            anchors.centerIn: parent
            color: button.contentColor
            height: Theme.iconSize
            mirrored: button.directional && Theme.rightToLeft
            name: button.iconName
            width: Theme.iconSize
        }
    }
}
