import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// A destination of the sheet.
ButtonRow {
    id: row

    required property Activity activity

    accessibleName: row.activity.detail === "" ? row.text : row.text + " " + row.activity.detail
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
            text: row.activity.detail
            visible: text !== ""
        }
    }
}
