pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls
import Vexilo.History

// The rows, newest first. Return opens the current one, F2 renames it, Delete deletes it. In the edit
// mode Return marks it, and Delete deletes what is marked.
ListView {
    id: list

    // What rows leave to the scroll bar, beside what they keep free by themselves.
    readonly property real barRoom: bar.visible ? bar.width - 4 : 0
    // The widest date seen so far, in points.
    property real dateColumn: 0
    // The size of text that it was seen in.
    property real dateSize: 0
    // Whether the rows have two lines, for want of room in one.
    readonly property bool stacked: list.width - list.barRoom < 21 * Theme.fontSize1
    // The row that was swiped aside; -1 while there is none.
    property int swipedRow: -1
    required property HistoryView view
    readonly property int rowsOfPage: Math.max(1, Math.floor(list.height / Theme.listRowHeight) - 1)

    function goTo(row: int) {
        list.currentIndex = Math.max(0, Math.min(row, list.count - 1));
        // It may be current already, and out of sight.
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
    }

    function makeRoomFor(dateWidth: real) {
        if (list.dateSize !== Theme.smallFontSize)
            list.dateColumn = 0;
        list.dateSize = Theme.smallFontSize;
        list.dateColumn = Math.max(list.dateColumn, dateWidth);
    }

    Accessible.name: qsTr("Saved Bills")
    Accessible.role: Accessible.List
    // A key that is held deletes once: there is no way back.
    Keys.onDeletePressed: event => {
        if (!event.isAutoRepeat)
            list.view.deleteByKey(list.currentIndex);
    }
    Keys.onPressed: event => {
        // What only the pointer uncovers does not stay in the way of the keys.
        list.swipedRow = -1;
        event.accepted = true;
        if (event.key === Qt.Key_F2)
            list.view.renameRow(list.currentIndex);
        else if (event.key === Qt.Key_Home)
            list.goTo(0);
        else if (event.key === Qt.Key_End)
            list.goTo(list.count - 1);
        else if (event.key === Qt.Key_PageUp)
            list.goTo(list.currentIndex - list.rowsOfPage);
        else if (event.key === Qt.Key_PageDown)
            list.goTo(list.currentIndex + list.rowsOfPage);
        else
            event.accepted = false;
    }
    activeFocusOnTab: list.count > 0 || list.activeFocus
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightFollowsCurrentItem: true
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    model: list.view?.items ?? null
    pixelAligned: true
    reuseItems: true
    onCountChanged: list.swipedRow = -1
    // The row that had the focus may be the one that goes.
    onCurrentItemChanged: if (list.currentItem) list.currentItem.focus = true
    onMovementStarted: list.swipedRow = -1

    Connections {
        function onIsEditingChanged() {
            list.swipedRow = -1;
        }

        target: list.view
    }

    T.ScrollBar.vertical: AppScrollBar {
        id: bar

        parent: list
    }
    delegate: SavedBillRow {
        id: row

        barRoom: list.barRoom
        dateColumn: list.dateColumn
        last: row.index === list.count - 1
        someSwiped: list.swipedRow >= 0
        stacked: list.stacked
        swiped: row.index >= 0 && list.swipedRow === row.index
        view: list.view
        width: list.width
        onDateWidthChanged: list.makeRoomFor(row.dateWidth)
        onPressed: list.currentIndex = row.index
        onSwipedAside: aside => list.swipedRow = aside ? row.index : -1
    }
    displaced: Transition {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.OutCubic
            property: "y"
        }
    }
    remove: Transition {
        NumberAnimation {
            duration: Theme.motion
            property: "opacity"
            to: 0
        }
    }
}
