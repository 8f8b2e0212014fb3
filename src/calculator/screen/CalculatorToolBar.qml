import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// The program's name and the actions on the bill as a whole.
Item {
    id: bar

    readonly property int buttonCount: grid.children.length - 1
    readonly property real leastWidth: bar.buttonCount * (Theme.rowHeight + 4)
    // What the bar takes with what the last two actions are called, as tight as it can be: the name,
    // which the window's title has, too, is drawn a little smaller then, and nothing is between buttons.
    readonly property real leastRoomyWidth: 0.8 * title.implicitWidth + bar.buttonCount * Theme.rowHeight + history.textRoom + save.textRoom - Theme.buttonPadding
    // Whether there is room for that. A bar that was not laid out yet has it: in a window of the usual
    // size it would be laid out twice.
    readonly property bool roomy: bar.width === 0 || bar.width >= bar.leastRoomyWidth
    // Whether the name stands above the actions, for want of room beside them.
    readonly property bool stacked: bar.width > 0 && bar.width < title.implicitWidth / 2 + bar.leastWidth
    readonly property bool tight: bar.roomy && bar.width > 0 && bar.width < bar.leastRoomyWidth + 0.2 * title.implicitWidth + 4 * bar.buttonCount
    required property ContentView view

    implicitHeight: grid.implicitHeight + 2 * Theme.lineSpace

    GridLayout {
        id: grid

        anchors.fill: parent
        // What is seen of the last button, not its edge, stands above the end of the cards.
        anchors.rightMargin: -save.rightPadding
        columnSpacing: bar.stacked || bar.tight ? 0 : 4
        columns: bar.stacked ? bar.buttonCount : -1
        rowSpacing: 0

        BodyText {
            id: title

            Accessible.name: text
            Accessible.role: Accessible.Heading
            Layout.columnSpan: bar.stacked ? bar.buttonCount : 1
            Layout.fillWidth: true
            font.bold: true
            font.pixelSize: Theme.fontSize3
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 12
            text: bar.view.global.appName
        }

        IconButton {
            accessibleName: qsTr("Settings")
            iconName: "gearshape"
            onClicked: bar.view.showSettings = true
        }

        IconButton {
            accessibleName: qsTr("Clear")
            directional: true
            iconName: "arrow.uturn.backward"
            onClicked: bar.view.showClear = true
        }

        IconButton {
            accessibleName: qsTr("Copy")
            enabled: bar.view.hasResults
            iconName: "doc.on.doc"
            onClicked: bar.view.copy()
        }

        IconButton {
            accessibleName: qsTr("Share")
            enabled: bar.view.hasResults
            iconName: "square.and.arrow.up"
            onClicked: bar.view.shareButton()
        }

        IconTextButton {
            id: history

            directional: true
            iconName: "list.bullet.rectangle.portrait"
            iconOnly: !bar.roomy
            text: qsTr("History")
            onClicked: bar.view.showHistory = true
        }

        IconTextButton {
            id: save

            enabled: bar.view.hasResults
            iconName: "square.and.arrow.down"
            iconOnly: !bar.roomy
            text: qsTr("Save")
            onClicked: bar.view.save()
        }
    }
}
