import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A column of sections, scrolled where it is longer than its place. It scrolls to what has the
// keyboard.
Flickable {
    id: scroller

    default property alias sections: column.data
    // Whether the pointer moved onto what is below it, instead of finding it there because the
    // column was scrolled: a wheel that began to scroll goes on scrolling.
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
    onContentYChanged: pointer.moved = false

    T.ScrollBar.vertical: AppScrollBar {}

    HoverHandler {
        id: pointer

        property bool moved: true
        property point last

        onPointChanged: {
            if (pointer.point.scenePosition !== pointer.last)
                pointer.moved = true;
            pointer.last = pointer.point.scenePosition;
        }
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
