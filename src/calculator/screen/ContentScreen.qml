import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// The calculator: one column of cards, centred and scrolled where the window is too low.
FocusScope {
    id: screen

    required property ContentView view

    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Theme.rightToLeft
    focus: true

    Binding {
        property: "dark"
        target: screen.view
        value: Theme.dark
    }

    Binding {
        property: "highContrast"
        target: screen.view
        value: Theme.highContrast
    }

    CalculatorToolBar {
        id: toolBar

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        view: screen.view
        width: column.width
    }

    Flickable {
        id: scroller

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: toolBar.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        contentHeight: column.height + Theme.margin
        interactive: contentHeight > height

        FocusReveal {
            flickable: scroller
        }

        ColumnLayout {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.lineSpace + 6
            width: Math.min(scroller.width - 2 * Theme.margin, Theme.columnWidth)

            InputsCard {
                id: inputs

                Layout.fillWidth: true
                view: screen.view
            }

            ResultsPanel {
                id: results

                Layout.fillWidth: true
                view: screen.view
            }

            OptionsCard {
                Layout.fillWidth: true
                settings: screen.view.userSettings
            }
        }
    }

    // Most windows are high enough and start without it. Sizes mean nothing before they are shown.
    Loader {
        active: screen.Window.visibility > 0 && column.height > scroller.height
        anchors.bottom: scroller.bottom
        anchors.right: parent.right
        anchors.top: scroller.top
        source: "ContentScrollBar.qml"
        onLoaded: (item as ContentScrollBar).scroller = scroller
    }

    // Nothing is announced of a window before it is seen.
    Loader {
        active: AssistiveSoftware.connected && screen.Window.visibility > 0
        source: "ResultsAnnouncer.qml"
        onLoaded: (item as ResultsAnnouncer).follow(screen.view, inputs, results)
    }

    CalculatorDialogs {
        view: screen.view
    }
}
