import QtQuick
import QtQuick.Templates as T
import Vexilo.App
import Vexilo.Calculator
import Vexilo.Controls

// The one window: the menu bar over the calculator. A plain Window would not give the keyboard back to
// the calculator when a dialog or a menu closes.
T.ApplicationWindow {
    id: window

    required property VexiloApp app
    required property ContentView contentView

    color: Theme.page
    height: 880
    title: contentView.global.appName
    width: 540

    Shortcut {
        context: Qt.ApplicationShortcut // with a sheet or a dialog open, too
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }

    Shortcut {
        sequence: "F1"
        onActivated: window.app.helpOnWebsite()
    }

    Shortcut {
        sequence: "Ctrl+C"
        onActivated: window.contentView.copy()
    }

    Shortcut {
        sequence: "Ctrl+S"
        onActivated: window.contentView.save()
    }

    Shortcut {
        sequence: "Ctrl+H"
        onActivated: window.contentView.showHistory = true
    }

    Shortcut {
        sequence: "Ctrl+,"
        onActivated: window.contentView.showSettings = true
    }

    Shortcut {
        sequence: "F10"
        onActivated: help.openMenu()
    }

    menuBar: AppMenuBar {
        MenuTitle {
            id: help

            menuSource: Qt.resolvedUrl("HelpMenu.qml")
            mnemonic: "Alt+H"
            text: qsTr("Help")
            onMenuLoaded: menu => (menu as HelpMenu).app = window.app
        }
    }

    ContentScreen {
        anchors.fill: parent
        view: window.contentView
    }

    Loader {
        active: window.app.settingsView !== null
        source: "SettingsSheet.qml"
        onLoaded: (item as SettingsSheet).show(window.app, window.contentView)
    }

    Loader {
        active: window.app.historyView !== null
        source: "HistorySheet.qml"
        onLoaded: (item as HistorySheet).show(window.app, window.contentView)
    }

    Loader {
        active: window.app.activityViewController !== null
        source: "ActivitySheet.qml"
        onLoaded: (item as ActivitySheet).show(window.app)
    }
}
