import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Settings

// The preferences, as a form. Every change is stored as it is made.
Sheet {
    id: sheet

    property SettingsView view

    title: qsTr("Settings")
    width: parent ? Math.min(parent.width, Theme.columnWidth + 2 * Theme.margin) : 0
    onAboutToShow: done.forceActiveFocus(Qt.TabFocusReason)

    SheetHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        title: sheet.title
        titleIsWhole: true

        PushButton {
            id: done

            focus: true
            font.bold: true
            font.pixelSize: Theme.fontSize1
            text: qsTr("Done")
            onClicked: sheet.close()
        }
    }

    Rectangle {
        anchors.bottom: form.top
        anchors.left: form.left
        anchors.right: form.right
        color: Theme.line
        height: 1
        visible: form.contentY > 0
    }

    FormScroller {
        id: form

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: -gutter
        anchors.right: parent.right
        anchors.rightMargin: -gutter
        anchors.top: header.bottom
        anchors.topMargin: Theme.lineSpace

        GeneralSection {
            Layout.fillWidth: true
            view: sheet.view
        }

        PercentageSection {
            Layout.fillWidth: true
            footer: qsTr("Specify what percentage of the bill the tip should be for a good service.")
            header: qsTr("GOOD SERVICE")
            heedsWheel: form.pointed
            name: qsTr("Good")
            percentage: sheet.view?.goodText ?? ""
            place: sheet.view?.sGood ?? 0
            onPlaced: value => sheet.view.sGood = value
        }

        PercentageSection {
            Layout.fillWidth: true
            footer: qsTr("Specify what percentage of the bill the tip should be for an excellent service.")
            header: qsTr("EXCELLENT SERVICE")
            heedsWheel: form.pointed
            name: qsTr("Excellent")
            percentage: sheet.view?.excellentText ?? ""
            place: sheet.view?.sExcellent ?? 0
            onPlaced: value => sheet.view.sExcellent = value
        }

        ThemeSection {
            Layout.fillWidth: true
            view: sheet.view
        }

        AboutSection {
            Layout.fillWidth: true
            view: sheet.view
        }
    }
}
