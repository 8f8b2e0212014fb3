import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// The program's name and the actions on the bill as a whole.
Item {
    id: bar

    required property ContentView view

    implicitHeight: row.implicitHeight + 2 * Theme.lineSpace

    RowLayout {
        id: row

        anchors.fill: parent
        spacing: 4

        BodyText {
            Accessible.name: text
            Accessible.role: Accessible.Heading
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

        IconButton {
            accessibleName: qsTr("History")
            directional: true
            iconName: "list.bullet.rectangle.portrait"
            onClicked: bar.view.showHistory = true
        }

        IconButton {
            accessibleName: qsTr("Save")
            enabled: bar.view.hasResults
            iconName: "square.and.arrow.down"
            onClicked: bar.view.save()
        }
    }
}
