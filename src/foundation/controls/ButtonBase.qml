import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// What every push button of the program shares: its ground, its states, its keys, and how assistive
// software presses it. Buttons add what they show as their contentItem.
T.Button {
    id: button

    // What assistive software calls the button.
    property string accessibleName: button.text
    property color contentColor: Theme.accentText
    property color fill: "transparent"
    property real radius: Theme.controlRadius
    readonly property bool filled: button.fill.a > 0

    // A key that is held presses once, unless the button is made to repeat.
    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat || button.autoRepeat)
            button.clicked();
    }

    Accessible.name: button.accessibleName
    Accessible.onPressAction: if (button.enabled) button.clicked()
    Accessible.role: Accessible.Button
    Keys.onEnterPressed: event => button.pressByKey(event)
    Keys.onReturnPressed: event => button.pressByKey(event)
    hoverEnabled: true
    implicitHeight: Math.max(Theme.rowHeight, implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.max(Theme.rowHeight, implicitContentWidth + leftPadding + rightPadding)
    opacity: button.enabled ? 1 : Theme.disabledOpacity

    background: Rectangle {
        border.color: button.filled ? Theme.controlBorder : "transparent"
        color: button.fill
        radius: button.radius

        ControlFeedback {
            down: button.down
            hovered: button.hovered
            radius: button.radius
        }

        FocusRing {
            focused: button.activeFocus
            inside: !button.filled
            reason: button.focusReason
            surrounded: button.radius
        }
    }
}
