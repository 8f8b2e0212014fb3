import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// How many share the bill.
GridLayout {
    id: row

    readonly property string spoken: label.text + " " + row.view.peopleText
    required property ContentView view

    columnSpacing: Theme.lineSpace
    columns: 3
    rowSpacing: 0

    RowLayout {
        Accessible.name: row.spoken
        Accessible.role: Accessible.StaticText
        Layout.leftMargin: Theme.rowPadding
        spacing: Theme.lineSpace + 2

        BodyText {
            id: label

            font.pixelSize: Theme.fontSize3
            text: qsTr("People")
        }

        BodyText {
            Layout.fillWidth: true
            font.bold: true
            font.pixelSize: Theme.fontSize3
            text: row.view.peopleText
        }
    }

    IconButton {
        Layout.bottomMargin: Theme.lineSpace + 3
        Layout.preferredWidth: 60
        Layout.topMargin: Theme.lineSpace + 3
        accessibleName: qsTr("Fewer people")
        autoRepeat: true
        contentColor: Theme.text
        fill: Theme.controlFill
        iconName: "minus"
        radius: height / 2
        onClicked: row.view.fewerPeople()
    }

    IconButton {
        Layout.bottomMargin: Theme.lineSpace + 3
        Layout.preferredWidth: 60
        Layout.rightMargin: Theme.rowPadding - 5
        Layout.topMargin: Theme.lineSpace + 3
        accessibleName: qsTr("More people")
        autoRepeat: true
        contentColor: Theme.text
        fill: Theme.controlFill
        iconName: "plus"
        radius: height / 2
        onClicked: row.view.morePeople()
    }

    Notice {
        Layout.alignment: Qt.AlignRight
        Layout.bottomMargin: Theme.lineSpace
        Layout.columnSpan: 3
        Layout.rightMargin: Theme.rowPadding
        text: row.view.peopleNotice
    }
}
