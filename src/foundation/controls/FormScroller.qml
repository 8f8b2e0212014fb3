import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A column of sections, scrolled where it is longer than its place. It scrolls to what has the
// keyboard.
Flickable {
    id: scroller

    default property alias sections: column.data
    // Whether the pointer was moved to what is below it, and not the column scrolled below the
    // pointer: a wheel that began to scroll goes on scrolling.
    readonly property alias pointed: pointer.moved
    // Between the column and both edges; the scroll bar stands there.
    property real gutter: Theme.margin

    function scrollBy(distance: real) {
        scroller.contentY = Math.max(0, Math.min(scroller.contentHeight - scroller.height, scroller.contentY + distance));
    }

    Keys.onPressed: event => {
        event.accepted = scroller.interactive && (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown);
        if (event.accepted)
            scroller.scrollBy((scroller.height - Theme.rowHeight) * (event.key === Qt.Key_PageUp ? -1 : 1));
    }
    boundsBehavior: Flickable.StopAtBounds
    clip: contentHeight > height
    contentHeight: column.implicitHeight + Theme.margin
    interactive: contentHeight > height
    // A flick goes on for a while after the wheel that began it.
    onContentYChanged: if (!scroller.flicking) pointer.settle()

    T.ScrollBar.vertical: AppScrollBar {}

    HoverHandler {
        id: pointer

        property bool moved: true
        // Where the pointer was when the column was last scrolled.
        property point rest

        function settle() {
            moved = false;
            rest = point.scenePosition;
        }

        // A hand on the wheel does not hold the pointer quite still.
        onPointChanged: if (Math.hypot(point.scenePosition.x - rest.x, point.scenePosition.y - rest.y) > Application.styleHints.startDragDistance) moved = true
    }

    // Only what no slider took comes here.
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        blocking: false
        onWheel: pointer.settle()
    }

    FocusReveal {
        flickable: scroller
    }

    ColumnLayout {
        id: column

        spacing: Theme.margin - 6
        width: scroller.width - 2 * scroller.gutter
        x: scroller.gutter
    }
}
