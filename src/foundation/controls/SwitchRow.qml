import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A row of a card that is a switch as a whole: label first, switch last. The template's own switch
// leaks what assistive software is told of it when it is made while that is listening.
T.AbstractButton {
    id: row

    // What `checked` follows; the row asks for a change with switched().
    required property bool on

    signal switched(bool checked)

    function press() {
        row.toggle();
        row.switched(row.checked);
        row.checked = Qt.binding(() => row.on);
    }

    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            row.press();
    }

    Accessible.checkable: true
    Accessible.checked: row.checked
    Accessible.name: row.text
    Accessible.onPressAction: if (row.enabled) row.press()
    Accessible.onToggleAction: if (row.enabled) row.press()
    Accessible.role: Accessible.CheckBox
    Keys.onEnterPressed: event => row.pressByKey(event)
    Keys.onReturnPressed: event => row.pressByKey(event)
    Layout.fillWidth: true
    bottomPadding: Theme.lineSpace
    checkable: true
    checked: row.on
    font.pixelSize: Theme.fontSize1
    hoverEnabled: true
    implicitHeight: Math.max(Theme.rowHeight + Theme.lineSpace, label.implicitHeight + topPadding + bottomPadding)
    implicitWidth: label.implicitWidth + track.width + leftPadding + rightPadding + Theme.lineSpace
    leftPadding: Theme.rowPadding
    rightPadding: Theme.rowPadding
    topPadding: Theme.lineSpace
    onToggled: {
        row.switched(row.checked);
        row.checked = Qt.binding(() => row.on);
    }

    background: Item {
        FocusRing {
            anchors.margins: 3
            focused: row.activeFocus
            radius: Theme.cardRadius - 4
            reason: row.focusReason
        }
    }
    contentItem: BodyText {
        id: label

        font: row.font
        leftPadding: row.mirrored ? track.width + Theme.lineSpace : 0
        rightPadding: row.mirrored ? 0 : track.width + Theme.lineSpace
        text: row.text
        wrapMode: Text.Wrap
    }
    indicator: Rectangle {
        id: track

        border.color: row.checked ? Theme.onBorder : Theme.controlEdge
        color: row.checked ? Theme.on : Theme.controlFill
        height: 30
        radius: height / 2
        width: 50
        x: row.mirrored ? row.leftPadding : row.width - width - row.rightPadding
        y: (row.height - height) / 2

        ControlFeedback {
            down: row.down
            hovered: row.hovered
            radius: track.radius
        }

        Rectangle {
            border.color: Theme.controlEdge
            border.width: row.checked ? 0 : 1
            color: row.checked ? Theme.thumb : Theme.thumbOff
            height: width
            radius: width / 2
            width: track.height - 6
            x: row.checked !== row.mirrored ? track.width - width - 3 : 3
            y: 3

            Behavior on x {
                enabled: row.visible
                NumberAnimation {
                    duration: Theme.motion
                    easing.type: Easing.OutCubic
                }
            }
        }
    }
}
