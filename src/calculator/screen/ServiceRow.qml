import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// How good the service was, and the word for it.
GridLayout {
    id: row

    required property ContentView view

    columnSpacing: Theme.lineSpace
    columns: 2
    rowSpacing: Theme.lineSpace

    BodyText {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.rowPadding
        Layout.topMargin: Theme.lineSpace + 3
        font.pixelSize: Theme.fontSize3
        text: qsTr("Service")
    }

    SegmentedPicker {
        Layout.fillHeight: true
        Layout.rightMargin: Theme.rowPadding - 5
        Layout.topMargin: Theme.lineSpace + 3
        currentIndex: row.view.serviceSegment
        name: qsTr("Service")
        segments: [
            SegmentedPickerItem {
                icon: "hand.thumbsdown.fill"
                name: qsTr("Poor")
            },
            SegmentedPickerItem {
                icon: "hand.thumbsup"
                name: qsTr("Good")
            },
            SegmentedPickerItem {
                icon: "trophy"
                name: qsTr("Excellent")
            }
        ]
        onChosen: index => row.view.serviceSegment = index
    }

    BodyText {
        Layout.alignment: Qt.AlignRight
        Layout.bottomMargin: Theme.lineSpace + 3
        Layout.columnSpan: 2
        Layout.rightMargin: Theme.rowPadding
        color: Theme.softText
        font.italic: true
        font.pixelSize: Theme.fontSize1
        text: row.view.serviceText
    }
}
