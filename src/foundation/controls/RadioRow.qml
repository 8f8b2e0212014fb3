import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A row of a RadioGroup: the whole of it is the target, and the chosen one has a check mark.
Item {
    id: row

    required property bool checked
    required property int index
    property string text

    signal chosen
    signal stepped(int offset)

    function chooseByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            row.chosen();
    }

    Accessible.checkable: true
    Accessible.checked: row.checked
    Accessible.focusable: true
    Accessible.name: row.text
    Accessible.onPressAction: if (row.enabled) row.chosen()
    Accessible.onToggleAction: if (row.enabled) row.chosen()
    Accessible.role: Accessible.RadioButton
    Keys.onDownPressed: row.stepped(1)
    Keys.onEnterPressed: event => row.chooseByKey(event)
    Keys.onReturnPressed: event => row.chooseByKey(event)
    Keys.onSpacePressed: event => row.chooseByKey(event)
    Keys.onUpPressed: row.stepped(-1)
    Layout.fillWidth: true
    activeFocusOnTab: row.focus
    implicitHeight: Math.max(Theme.rowHeight + Theme.lineSpace, label.implicitHeight + 2 * Theme.lineSpace)

    RowSeparator {
        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding
        anchors.right: parent.right
        anchors.rightMargin: 1
        visible: row.index > 0
    }

    ControlFeedback {
        anchors.margins: 3
        down: tap.pressed
        hovered: hover.hovered
        radius: Theme.cardRadius - 4
    }

    FocusRing {
        anchors.margins: 3
        focused: row.activeFocus
        radius: Theme.cardRadius - 4
    }

    BodyText {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding
        anchors.right: mark.left
        anchors.rightMargin: Theme.lineSpace
        anchors.verticalCenter: parent.verticalCenter
        text: row.text
        wrapMode: Text.Wrap
    }

    Icon {
        id: mark

        anchors.right: parent.right
        anchors.rightMargin: Theme.rowPadding
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.accentText
        height: Math.round(Theme.iconSize * 14 / 22)
        name: "checkmark"
        visible: row.checked
        width: height
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: row.chosen()
    }
}
