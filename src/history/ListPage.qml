import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.History

// The list of the saved bills between its header and the bar of what concerns all of them.
FocusScope {
    id: page

    // The keyboard goes to a button where there is no row to have it.
    readonly property bool empty: list.count === 0
    readonly property bool isEditing: page.view?.isEditing ?? false
    required property HistoryView view

    signal closed

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.lineSpace

        SheetHeader {
            Layout.fillWidth: true
            title: qsTr("Saved Bills")
            titleIsWhole: true

            PushButton {
                contentColor: Theme.onText
                enabled: page.view?.items.markedCount > 0
                fill: Theme.on
                font.bold: true
                font.pixelSize: Theme.fontSize1
                text: qsTr("Delete %1").arg(page.view?.items.markedCount ?? 0)
                visible: page.isEditing
                onClicked: {
                    list.forceActiveFocus(Qt.TabFocusReason);
                    page.view.deleteMarked();
                }
            }

            PushButton {
                focus: page.empty && page.isEditing
                font.pixelSize: Theme.fontSize1
                text: page.isEditing ? qsTr("Cancel") : qsTr("Edit")
                onClicked: page.view.isEditing = !page.view.isEditing
            }

            PushButton {
                focus: page.empty && !page.isEditing
                font.bold: true
                font.pixelSize: Theme.fontSize1
                text: qsTr("Done")
                visible: !page.isEditing
                onClicked: page.closed()
            }
        }

        Rectangle {
            Layout.fillHeight: true
            Layout.fillWidth: true
            border.color: Theme.line
            color: Theme.card
            radius: Theme.cardRadius

            SavedBillsList {
                id: list

                anchors.fill: parent
                anchors.bottomMargin: 6
                anchors.leftMargin: 1 // within the card's border
                anchors.rightMargin: 1
                anchors.topMargin: 6
                focus: !page.empty
                view: page.view
            }

            Placeholder {
                anchors.fill: parent
                anchors.leftMargin: Theme.rowPadding
                anchors.rightMargin: Theme.rowPadding
                hint: qsTr("Bills that you save appear here.")
                iconName: "list.bullet.rectangle.portrait"
                text: qsTr("No saved bills yet")
                visible: page.empty
            }
        }

        BulkBar {
            Layout.bottomMargin: Theme.lineSpace
            Layout.fillWidth: true
            // What is seen of the outer buttons, not their edges, stands below the edges of the list.
            Layout.leftMargin: -Theme.buttonPadding
            Layout.rightMargin: -Theme.buttonPadding
            view: page.view
        }
    }
}
