import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// How good the service was, and the word for it.
GridLayout {
    id: row

    // Whether the choice stands below its label, for want of room beside it.
    readonly property bool stacked: row.width > 0 && label.implicitWidth + 3 * Theme.rowHeight + row.columnSpacing + 2 * Theme.rowPadding - 5 > row.width
    required property ContentView view

    // Its card's width, whatever stands in it: that decides what it does with it.
    Layout.minimumWidth: 0
    columnSpacing: Theme.lineSpace
    columns: row.stacked ? 1 : 2
    rowSpacing: Theme.lineSpace

    BodyText {
        id: label

        Layout.fillWidth: true
        Layout.leftMargin: Theme.rowPadding
        Layout.minimumWidth: Math.ceil(implicitWidth)
        Layout.topMargin: Theme.lineSpace + 3
        font.pixelSize: Theme.fontSize3
        text: qsTr("Service")
    }

    SegmentedPicker {
        Layout.alignment: Qt.AlignRight
        Layout.fillHeight: true
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
        Layout.minimumWidth: 3 * Theme.rowHeight
        Layout.rightMargin: Theme.rowPadding - 5
        Layout.topMargin: row.stacked ? 0 : Theme.lineSpace + 3
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
        Layout.columnSpan: row.columns
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
