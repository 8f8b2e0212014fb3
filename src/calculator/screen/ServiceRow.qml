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
        Layout.minimumWidth: Math.ceil(implicitWidth)
        Layout.topMargin: Theme.lineSpace + 3
        font.pixelSize: Theme.fontSize3
        text: qsTr("Service")
    }

    SegmentedPicker {
        Layout.fillHeight: true
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
        Layout.minimumWidth: 3 * Theme.rowHeight
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
        Layout.leftMargin: Theme.rowPadding
        Layout.maximumWidth: row.width - 2 * Theme.rowPadding
        Layout.rightMargin: Theme.rowPadding
        color: Theme.softText
        font.italic: true
        font.pixelSize: Theme.fontSize1
        horizontalAlignment: lineCount > 1 ? Text.AlignRight : Text.AlignLeft
        text: row.view.serviceText
        wrapMode: Text.Wrap
    }
}
