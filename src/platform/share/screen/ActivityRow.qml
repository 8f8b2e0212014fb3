import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// A destination of the sheet. It says so while the sheet waits for it.
ButtonRow {
    id: row

    required property Activity activity
    property bool awaited: false
    readonly property string detail: row.awaited ? qsTr("Waiting…") : row.activity.detail

    accessibleName: row.detail === "" ? row.text : row.text + " " + row.detail
    text: row.activity.title

    contentItem: RowLayout {
        spacing: Theme.rowPadding - 4

        Icon {
            Layout.preferredHeight: Theme.iconSize
            Layout.preferredWidth: Theme.iconSize
            color: row.contentColor
            name: row.activity.iconName
        }

        BodyText {
            Layout.fillWidth: true
            font: row.font
            text: row.text
            wrapMode: Text.Wrap
        }

        BodyText {
            color: Theme.softText
            font: row.font
            text: row.detail
            visible: text !== ""
        }
    }
}
