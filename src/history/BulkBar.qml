import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.History

// What concerns every row: which amount they show, and the bulk deletions.
GridLayout {
    id: bar

    // Whether the buttons stand below each other, for want of room beside each other.
    readonly property bool stacked: columnButton.implicitWidth + oldButton.implicitWidth + allButton.implicitWidth > bar.width
    required property HistoryView view

    // Its page's width, whatever the buttons have or need.
    Layout.maximumWidth: Infinity
    Layout.minimumWidth: 0
    columnSpacing: 0
    columns: bar.stacked ? 1 : 5
    rowSpacing: 0

    ButtonBase {
        id: columnButton

        accessibleName: symbol.text + " " + word.text
        leftPadding: Theme.buttonPadding
        rightPadding: Theme.buttonPadding
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
        visible: !bar.stacked
    }

    IconTextButton {
        id: oldButton

        iconName: "calendar.badge.clock"
        text: qsTr("Delete old")
        onClicked: bar.view.promptToDeleteOld = true
    }

    Item {
        Layout.fillWidth: true
        visible: !bar.stacked
    }

    IconTextButton {
        id: allButton

        iconName: "trash"
        text: qsTr("Delete all")
        onClicked: bar.view.promptToDelete = true
    }
}
