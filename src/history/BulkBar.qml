import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.History

// What concerns every row: which amount they show, and the bulk deletions.
RowLayout {
    id: bar

    required property HistoryView view

    spacing: 0

    ButtonBase {
        id: columnButton

        accessibleName: symbol.text + " " + word.text
        leftPadding: Theme.lineSpace
        rightPadding: Theme.lineSpace
        onClicked: bar.view.toggleColumn()

        contentItem: Row {
            spacing: 6

            BodyText {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                color: columnButton.contentColor
                font.bold: true
                font.pixelSize: Theme.fontSize3
                text: bar.view?.currencySymbol ?? ""
            }

            BodyText {
                id: word

                anchors.verticalCenter: parent.verticalCenter
                color: columnButton.contentColor
                font.pixelSize: Theme.bodyFontSize + 2
                text: bar.view?.otherColumn ?? ""
            }
        }
    }

    Item {
        Layout.fillWidth: true
    }

    IconTextButton {
        iconName: "calendar.badge.clock"
        text: qsTr("Delete old")
        onClicked: bar.view.promptToDeleteOld = true
    }

    Item {
        Layout.fillWidth: true
    }

    IconTextButton {
        iconName: "trash"
        text: qsTr("Delete all")
        onClicked: bar.view.promptToDelete = true
    }
}
