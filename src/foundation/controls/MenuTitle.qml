import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A title of the menu bar. Its menu is made when it is first opened: few starts of the program need it.
T.AbstractButton {
    id: title

    // The file of an AppMenu.
    required property url menuSource
    // The key sequence that opens the menu: a menu bar is no stop of the Tab key.
    required property string mnemonic

    // The menu was made; what it needs can be given to it.
    signal menuLoaded(AppMenu menu)

    function openMenu() {
        loader.active = true;
        (loader.item as AppMenu).open();
    }

    Accessible.ignored: true
    bottomPadding: 6
    focusPolicy: Qt.NoFocus
    font.pixelSize: Theme.smallFontSize
    hoverEnabled: true
    implicitHeight: Math.max(Theme.rowHeight, implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.max(Theme.rowHeight, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: Theme.lineSpace
    rightPadding: Theme.lineSpace
    topPadding: 6
    onClicked: title.openMenu()

    background: Item {
        // The control itself insists on the role of a button.
        Accessible.name: title.text
        Accessible.onPressAction: title.openMenu()
        Accessible.role: Accessible.MenuItem

        ControlFeedback {
            anchors.bottomMargin: title.bottomPadding
            anchors.topMargin: title.topPadding
            down: title.down || ((loader.item as AppMenu)?.visible ?? false)
            hovered: title.hovered
            radius: 6
        }
    }
    contentItem: BodyText {
        color: title.down ? Theme.text : Theme.softText
        font: title.font
        text: title.text
    }

    Shortcut {
        sequence: title.mnemonic
        onActivated: title.openMenu()
    }

    Loader {
        id: loader

        active: false
        source: title.menuSource
        x: Theme.rightToLeft ? title.width : 0
        y: title.height
        onLoaded: title.menuLoaded(item as AppMenu)
    }
}
