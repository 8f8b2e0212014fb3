import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A value on a scale without steps: the pointer and assistive software set any value, keys and the
// wheel move it by whole ones. It must be given a spoken name.
T.Slider {
    id: slider

    required property string accessibleName
    // Whether the wheel over it is meant for it.
    property bool heedsWheel: true
    // What assistive software calls the ends of the scale.
    readonly property real maximumValue: slider.to
    readonly property real minimumValue: slider.from
    // How far the Page keys go.
    property real pageSize: 10
    // What `value` follows; the slider asks for a change with placed(). One beyond the scale is
    // drawn at its end and stays as it is until the slider is moved.
    required property real place

    signal placed(real value)

    function bounded(value: real): real {
        return Math.max(slider.from, Math.min(slider.to, value));
    }

    // A step size of the template's own would take the values between from the pointer.
    function step(distance: real) {
        slider.placed(slider.bounded(slider.value + distance));
    }

    Accessible.name: slider.accessibleName
    Accessible.onDecreaseAction: if (slider.enabled) slider.step(-1)
    Accessible.onIncreaseAction: if (slider.enabled) slider.step(1)
    Accessible.role: Accessible.Slider
    Keys.onDownPressed: slider.step(-1)
    Keys.onLeftPressed: slider.step(slider.mirrored ? 1 : -1)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_PageUp)
            slider.step(slider.pageSize);
        else if (event.key === Qt.Key_PageDown)
            slider.step(-slider.pageSize);
        else if (event.key === Qt.Key_Home)
            slider.placed(slider.from);
        else if (event.key === Qt.Key_End)
            slider.placed(slider.to);
        else
            event.accepted = false;
    }
    Keys.onRightPressed: slider.step(slider.mirrored ? -1 : 1)
    Keys.onUpPressed: slider.step(1)
    hoverEnabled: true
    implicitHeight: Theme.rowHeight
    implicitWidth: 200
    opacity: slider.enabled ? 1 : Theme.disabledOpacity
    value: slider.place
    // Whoever moves it: assistive software writes the value without a word of its own, and that of a
    // disabled slider, too.
    onValueChanged: {
        if (slider.value === slider.bounded(slider.place))
            return;
        if (slider.enabled)
            slider.placed(slider.value);
        else
            slider.value = Qt.binding(() => slider.place);
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        enabled: slider.heedsWheel
        // A touchpad's wheel turns by less than a notch at a time.
        onWheel: event => slider.step(event.angleDelta.y / (event.inverted ? -120 : 120))
    }

    background: Rectangle {
        border.color: Theme.controlEdge
        color: Theme.controlFill
        height: 6
        radius: height / 2
        width: slider.availableWidth
        x: slider.leftPadding
        y: (slider.height - height) / 2

        Rectangle {
            border.color: Theme.onBorder
            color: Theme.on
            height: parent.height
            radius: parent.radius
            width: slider.position * (parent.width - knob.width) + knob.width / 2
            x: slider.mirrored ? parent.width - width : 0
        }
    }
    handle: Rectangle {
        id: knob

        border.color: Theme.softText
        border.width: 1
        color: Theme.thumb
        height: 28
        radius: height / 2
        width: height
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: (slider.height - height) / 2

        ControlFeedback {
            color: slider.pressed ? Theme.thumbPressed : Theme.thumbHovered
            down: slider.pressed
            hovered: slider.hovered
            radius: knob.radius
        }

        FocusRing {
            focused: slider.activeFocus
            surrounded: knob.radius
            reason: slider.focusReason
        }
    }
}
