import QtQuick
import Vexilo.Controls
import Vexilo.History

// The saved bills: the list, and beside it, or in its place where there is no room, the page of the
// chosen bill.
Sheet {
    id: sheet

    readonly property bool hasDetail: (sheet.view?.detail ?? null) !== null
    property HistoryView view
    readonly property bool wide: sheet.availableWidth >= 40 * Theme.fontSize1

    title: qsTr("Saved Bills")
    onAboutToShow: listPage.forceActiveFocus(Qt.TabFocusReason)
    // What had the keyboard may be hidden now; a dialog over the sheet keeps it.
    onWideChanged: if (sheet.activeFocus) (sheet.wide || !sheet.hasDetail ? listPage : detailPage).forceActiveFocus(Qt.TabFocusReason)

    Connections {
        function onDismissed() {
            sheet.close();
        }

        target: sheet.view
    }

    ListPage {
        id: listPage

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.top: parent.top
        focus: sheet.wide || !sheet.hasDetail
        view: sheet.view
        visible: sheet.wide || !sheet.hasDetail
        width: sheet.wide ? Math.round(parent.width * 0.55) : parent.width
        onClosed: sheet.close()
    }

    Placeholder {
        anchors.bottom: parent.bottom
        anchors.left: listPage.right
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.top: parent.top
        iconName: "doc.text"
        text: qsTr("Select an item")
        visible: sheet.wide && !sheet.hasDetail
    }

    DetailPage {
        id: detailPage

        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.top: parent.top
        focus: !sheet.wide && sheet.hasDetail
        pushed: !sheet.wide
        view: sheet.view
        visible: sheet.hasDetail
        width: sheet.wide ? parent.width - listPage.width - Theme.margin : parent.width
    }

    HistoryDialogs {
        view: sheet.view
    }
}
