import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls
import Vexilo.History

// One saved bill: description, amount and day. Swiped towards its start it uncovers a delete button.
T.ItemDelegate {
    id: row

    required property string amount
    // What the list's scroll bar takes at the row's end.
    property real barRoom: 0
    readonly property bool chosen: row.index >= 0 && (row.view?.chosenRow ?? -1) === row.index
    required property string date
    property alias dateColumn: line.dateColumn
    readonly property alias dateWidth: line.dateWidth
    readonly property real deleteWidth: Math.max(2 * Theme.rowHeight + 2 * Theme.lineSpace, 6 * Theme.fontSize1)
    required property int index
    readonly property bool isEditing: row.view?.isEditing ?? false
    property bool last: false
    readonly property bool listScrolls: row.ListView.view?.dragging ?? false
    required property bool marked
    required property string ref
    // As in the rows of other cards, within whose border the list stands.
    readonly property real sidePadding: Theme.rowPadding - 1
    // Whether the day stands below the description.
    property bool stacked: false
    // Whether this row, or some row of the list, stands aside with its delete button uncovered.
    property bool someSwiped: false
    property bool swiped: false
    required property HistoryView view
    // How far the row is moved aside, in points.
    property real aside: swipe.active ? swipe.distance : row.swiped ? row.deleteWidth : 0

    signal swipedAside(aside: bool)

    // The pointer first closes whichever row is swiped aside.
    function click() {
        if (row.someSwiped)
            row.swipedAside(false);
        else
            row.view.pressRow(row.index);
    }

    // How far the row stands aside once the pointer was moved by so much.
    function asideBy(across: real): real {
        const before = row.swiped ? row.deleteWidth : 0;
        return Math.max(0, Math.min(row.deleteWidth, before + (Theme.rightToLeft ? across : -across)));
    }

    function pressByKey(event: KeyEvent) {
        if (event.isAutoRepeat)
            return;
        row.swipedAside(false);
        row.view.pressRow(row.index);
    }

    Accessible.checkable: row.isEditing
    Accessible.checked: row.marked
    Accessible.focusable: true
    Accessible.name: row.ref + " " + row.amount + " " + row.date
    Accessible.onPressAction: row.view.pressRow(row.index)
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: row.chosen
    Keys.onEnterPressed: event => row.pressByKey(event)
    Keys.onReturnPressed: event => row.pressByKey(event)
    Keys.onSpacePressed: event => row.pressByKey(event)
    // The list only stops painting a row that it keeps for later; assistive software would meet it.
    ListView.onPooled: {
        row.opacity = 1;
        row.visible = false;
    }
    ListView.onReused: {
        row.opacity = 1;
        row.visible = true;
    }
    activeFocusOnTab: false
    focusPolicy: Qt.ClickFocus
    height: Theme.listRowHeight
    hoverEnabled: true
    leftPadding: row.sidePadding + (Theme.rightToLeft ? row.barRoom : 0)
    rightPadding: row.sidePadding + (Theme.rightToLeft ? 0 : row.barRoom)
    onClicked: row.click()

    Behavior on aside {
        enabled: !swipe.active
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.OutCubic
        }
    }
    background: RowGround {
        id: ground

        barRoom: row.barRoom
        down: row.down
        focusReason: row.focusReason
        focused: row.activeFocus && row.aside === 0
        hovered: row.hovered
        indent: row.sidePadding
        raised: row.chosen || row.marked
        separated: !row.last
    }
    contentItem: Item {
        clip: row.aside > 0

        BillLine {
            id: line

            amount: row.amount
            date: row.date
            emphasised: row.chosen || row.marked || row.down
            height: parent.height
            marked: row.marked
            markable: row.isEditing
            ref: row.ref
            stacked: row.stacked
            width: parent.width
            x: Theme.rightToLeft ? row.aside : -row.aside
        }
    }

    // Made only for a row that is swiped: a fast scroll has no time to make one for each.
    Loader {
        id: deleteLoader

        active: row.aside > 0
        anchors.bottom: parent.bottom
        anchors.bottomMargin: ground.gap
        anchors.right: parent.right
        anchors.rightMargin: ground.inset + row.barRoom
        anchors.top: parent.top
        anchors.topMargin: ground.gap
        opacity: row.aside / row.deleteWidth
        source: "SwipedDelete.qml"
        width: row.deleteWidth - 2 * Theme.lineSpace
    }

    Connections {
        function onClicked() {
            row.view.deleteRow(row.index);
        }

        target: deleteLoader.item as SwipedDelete
    }

    DragHandler {
        id: swipe

        // How far the pointer has brought the row aside; where it was let go, once it was.
        property real distance: 0

        enabled: !row.isEditing
        // While it could take a finger over, the list would not scroll by that finger. Who may take
        // it over only later does not know where it was pressed, so the other one tells. A list that
        // scrolls keeps its finger.
        grabPermissions: PointerHandler.ApprovesTakeOverByAnything | (pointer.sideways && !row.listScrolls ? PointerHandler.CanTakeOverFromItems | PointerHandler.CanTakeOverFromHandlersOfDifferentType : 0)
        target: null
        yAxis.enabled: false
        onActiveChanged: if (!swipe.active) row.swipedAside(swipe.distance > row.deleteWidth / 2)
    }

    // Where the pointer goes, before it is known what for. The last handler is the first to be told of
    // a move, and the other one needs to know of it: a quick stroke may be a single move. It is also
    // the first to forget where the pointer was when that is let go.
    PointHandler {
        id: pointer

        readonly property real across: point.scenePosition.x - point.scenePressPosition.x
        readonly property bool sideways: Math.abs(pointer.across) > Math.abs(point.scenePosition.y - point.scenePressPosition.y)

        grabPermissions: PointerHandler.ApprovesTakeOverByAnything
        onAcrossChanged: if (pointer.active) swipe.distance = row.asideBy(pointer.across)
    }
}
