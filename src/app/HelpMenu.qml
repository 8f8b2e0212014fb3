import Vexilo.App
import Vexilo.Controls

// The help that the program offers: a page on the maker's website.
AppMenu {
    id: menu

    property VexiloApp app

    AppMenuItem {
        iconName: "questionmark.circle"
        shortcutText: "F1"
        text: qsTr("Help on website")
        onTriggered: menu.app.helpOnWebsite()
    }
}
