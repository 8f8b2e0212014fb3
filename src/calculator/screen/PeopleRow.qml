import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// How many share the bill.
GridLayout {
    id: row

    readonly property string spoken: label.text + " " + row.view.peopleText
    readonly property real roomForTexts: label.implicitWidth + texts.columnSpacing + count.implicitWidth
    // Whether the buttons stand below the count, for want of room beside it.
    readonly property bool stacked: row.width > 0 && row.roomForTexts + buttons.implicitWidth + row.columnSpacing + 2 * Theme.rowPadding - 5 > row.width
    required property ContentView view

    // Its card's width, whatever stands in it: that decides what it does with it.
    Layout.minimumWidth: 0
    columnSpacing: Theme.lineSpace
    columns: row.stacked ? 1 : 2
    rowSpacing: 0

    GridLayout {
        id: texts

        Accessible.name: row.spoken
        Accessible.role: Accessible.StaticText
        Layout.leftMargin: Theme.rowPadding
        Layout.minimumWidth: 0
        Layout.rightMargin: row.stacked ? Theme.rowPadding : 0
        Layout.topMargin: row.stacked ? Theme.lineSpace + 3 : 0
        columnSpacing: Theme.lineSpace + 2
        columns: row.stacked && row.roomForTexts > row.width - 2 * Theme.rowPadding ? 1 : 2
        rowSpacing: 0

        BodyText {
            id: label

            Layout.minimumWidth: Math.ceil(implicitWidth)
            font.pixelSize: Theme.fontSize3
            text: qsTr("People")
        }

        // A count of any length is told whole, if need be in smaller figures.
        BodyText {
            id: count

            Layout.fillWidth: true
            font.bold: true
            font.pixelSize: Theme.fontSize3
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 12
            text: row.view.peopleText
        }
    }

    RowLayout {
        id: buttons

        Layout.alignment: Qt.AlignRight
        Layout.bottomMargin: Theme.lineSpace + 3
        Layout.fillWidth: false
        Layout.rightMargin: Theme.rowPadding - 5
        Layout.topMargin: Theme.lineSpace + 3
        spacing: Theme.lineSpace

        IconButton {
            Layout.preferredWidth: 60
            accessibleName: qsTr("Fewer people")
            autoRepeat: true
            contentColor: Theme.text
            fill: Theme.controlFill
            iconName: "minus"
            radius: height / 2
            onClicked: row.view.fewerPeople()
        }

        IconButton {
            Layout.preferredWidth: 60
            accessibleName: qsTr("More people")
            autoRepeat: true
            contentColor: Theme.text
            fill: Theme.controlFill
            iconName: "plus"
            radius: height / 2
            onClicked: row.view.morePeople()
        }
    }

    Notice {
        Layout.alignment: Qt.AlignRight
        Layout.bottomMargin: Theme.lineSpace
        Layout.columnSpan: row.columns
        Layout.rightMargin: Theme.rowPadding
        text: row.view.peopleNotice
    }
}
