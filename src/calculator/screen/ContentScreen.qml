import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// The calculator: one column of cards, centred and scrolled where the window is too low.
FocusScope {
    id: screen

    required property ContentView view

    // What has the keyboard.
    readonly property Item focusItem: screen.Window.activeFocusItem

    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Theme.rightToLeft
    focus: true
    onFocusItemChanged: if (scroller.interactive && scroller.holds(screen.focusItem)) scroller.show(screen.focusItem)

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

        function holds(item: Item): bool {
            return item !== null && (item === column || scroller.holds(item.parent));
        }

        // Scrolls as little as brings an item of the column wholly into sight.
        function show(item: Item) {
            const top = item.mapToItem(column, 0, 0).y - Theme.lineSpace;
            const bottom = top + item.height + 2 * Theme.lineSpace;
            scroller.contentY = Math.max(0, Math.min(top, Math.max(scroller.contentY, bottom - scroller.height)));
        }

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: toolBar.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        contentHeight: column.height + Theme.margin
        interactive: contentHeight > height

        ColumnLayout {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.lineSpace + 6
            width: Math.min(scroller.width - 2 * Theme.margin, Theme.columnWidth)

            InputsCard {
                Layout.fillWidth: true
                view: screen.view
            }

            ResultsPanel {
                Layout.fillWidth: true
                view: screen.view
            }

            OptionsCard {
                Layout.fillWidth: true
                settings: screen.view.userSettings
            }
        }
    }

    // Most windows are high enough, and start without it.
    Loader {
        active: column.height > scroller.height
        anchors.bottom: scroller.bottom
        anchors.right: parent.right
        anchors.top: scroller.top
        source: "ContentScrollBar.qml"
        onLoaded: (item as ContentScrollBar).scroller = scroller
    }

    CalculatorDialogs {
        view: screen.view
    }
}
