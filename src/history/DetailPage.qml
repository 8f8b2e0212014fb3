import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls
import Vexilo.History

// The chosen bill: its description, what can be done with it, and its lines.
FocusScope {
    id: page

    // Whether the page covers the list, and so needs a way back.
    required property bool pushed
    required property HistoryView view

    Keys.onPressed: event => {
        event.accepted = page.pushed && event.matches(StandardKey.Back);
        if (event.accepted)
            page.view.unchoose();
        else if (event.key === Qt.Key_F2)
            page.view.askForDescription();
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.lineSpace

        // Anchors, not a layout: that would not move the title when the button comes into sight while
        // the width changes.
        Item {
            Layout.fillWidth: true
            implicitHeight: header.height

            IconButton {
                id: back

                accessibleName: qsTr("Back")
                anchors.left: parent.left
                anchors.leftMargin: -Theme.lineSpace
                anchors.verticalCenter: header.top
                anchors.verticalCenterOffset: header.titleHeight / 2
                directional: true
                focus: page.pushed
                iconName: "chevron.left"
                visible: page.pushed
                onClicked: page.view.unchoose()
            }

            SheetHeader {
                id: header

                anchors.left: page.pushed ? back.right : parent.left
                anchors.leftMargin: page.pushed ? Theme.lineSpace : 0
                anchors.right: parent.right
                title: page.view?.detailTitle ?? ""
                titleSize: Theme.fontSize3

                IconButton {
                    accessibleName: qsTr("Rename")
                    focus: !page.pushed
                    iconName: "pencil"
                    onClicked: page.view.askForDescription()
                }

                PushButton {
                    font.bold: true
                    font.pixelSize: Theme.fontSize1
                    text: qsTr("Use")
                    onClicked: page.view.showUseThisBill = true
                }
            }
        }

        Flickable {
            Layout.fillHeight: true
            Layout.fillWidth: true
            boundsBehavior: Flickable.StopAtBounds
            clip: contentHeight > height
            contentHeight: column.implicitHeight + Theme.margin
            interactive: contentHeight > height

            T.ScrollBar.vertical: AppScrollBar {}

            ColumnLayout {
                id: column

                spacing: Theme.lineSpace + 2
                width: parent.width

                // All of a description that the header has no room for.
                BodyText {
                    Layout.fillWidth: true
                    color: Theme.softText
                    font.pixelSize: Theme.bodyFontSize
                    text: header.title
                    visible: header.truncated
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                }

                DetailLines {
                    Layout.fillWidth: true
                    detail: page.view?.detail ?? null
                }
            }
        }
    }
}
