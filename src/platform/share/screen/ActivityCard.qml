pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// The destinations of one group. Not there while the group has none.
Card {
    id: card

    required property ActivityModel activities
    // The activity that the sheet waits for; null for none.
    property Activity awaited: null
    property bool choosable: true

    signal chosen(activity: Activity)

    Layout.fillWidth: true
    visible: rows.count > 0

    Repeater {
        id: rows

        model: card.activities

        ColumnLayout {
            id: entry

            required property Activity activity
            required property int index

            Layout.fillWidth: true
            spacing: 0

            RowSeparator {
                Layout.leftMargin: 2 * Theme.rowPadding - 4 + Theme.iconSize
                visible: entry.index > 0
            }

            ActivityRow {
                activity: entry.activity
                awaited: card.awaited === entry.activity
                enabled: card.choosable
                opacity: card.awaited === null || awaited ? 1 : Theme.disabledOpacity
                onClicked: card.chosen(entry.activity)
            }
        }
    }
}
