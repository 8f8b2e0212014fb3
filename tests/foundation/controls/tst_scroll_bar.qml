import QtQuick
import QtQuick.Templates as T
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    height: 400
    name: "AppScrollBar"
    visible: true
    when: windowShown
    width: 300

    Flickable {
        id: page

        anchors.fill: parent
        contentHeight: 800

        T.ScrollBar.vertical: AppScrollBar {
            id: bar
        }
    }

    function init() {
        page.contentHeight = 800;
        page.contentY = 0;
    }

    function test_itIsShownOnlyWhereThereIsMoreToSee() {
        compare(bar.visible, true);
        page.contentHeight = 400;
        tryCompare(bar, "visible", false);
        page.contentHeight = 401;
        tryCompare(bar, "visible", true);
    }

    function test_itsHandleShowsHowMuchIsSeenAndWhere() {
        fuzzyCompare(bar.size, 0.5, 0.01);
        page.contentY = 400;
        tryVerify(() => Math.abs(bar.position - 0.5) < 0.01);
    }

    function test_aLongListKeepsAHandleThatCanBeHit() {
        page.contentHeight = 4000000;
        tryVerify(() => bar.size < 0.001);
        verify(bar.contentItem.height >= Theme.rowHeight - 2 * bar.padding - 1);
    }

    function test_draggingTheHandleScrolls() {
        mousePress(bar, bar.width / 2, 20);
        mouseMove(bar, bar.width / 2, 60);
        mouseMove(bar, bar.width / 2, 120);
        mouseRelease(bar, bar.width / 2, 120);
        verify(page.contentY > 100);
        verify(page.contentY <= 400);
    }

    function test_assistiveSoftwareDoesNotMeetIt() {
        compare(bar.Accessible.ignored, true);
    }
}
