import QtQuick
import QtTest
import Vexilo.Controls

TestCase {
    id: test

    property string people: "People 2"
    property string share: "Share $5.00"

    height: 100
    name: "Announcer"
    visible: true
    when: windowShown
    width: 100

    Announcer {
        id: announcer

        texts: [test.people, test.share]
    }

    SignalSpy {
        id: appearances

        signalName: "visibleChanged"
        target: announcer
    }

    function cleanupTestCase() {
        appearances.target = null;
    }

    function test_whatChangedAppearsOnceAsANotification() {
        compare(announcer.visible, false);
        test.share = "Share $6.00";
        test.share = "Share $7.00";
        tryCompare(announcer, "message", "Share $7.00");
        compare(announcer.visible, true);
        compare(announcer.Accessible.role, Accessible.Notification);
        compare(announcer.Accessible.name, "Share $7.00");
        compare(appearances.count, 1);

        // It appears anew for the next one, or nobody would speak it; until then it is out of date.
        test.people = "People 3";
        compare(announcer.visible, false);
        tryCompare(announcer, "message", "People 3");
        compare(announcer.visible, true);
        compare(appearances.count, 3);
    }

    function test_whatWasAnnouncedGoesWhenItIsHeld() {
        test.share = "Share $8.00";
        tryCompare(announcer, "visible", true);
        announcer.held = true;
        compare(announcer.visible, false);
        announcer.held = false;
        compare(announcer.visible, false);
    }

    function test_itIsNoStopOfTheKeyboardAndShowsNothing() {
        compare(announcer.activeFocusOnTab, false);
        compare(announcer.children.length, 0);
        verify(announcer.width <= 1 && announcer.height <= 1);
    }
}
