import QtQuick
import QtTest
import ShareTest
import Vexilo.Share

TestCase {
    id: test

    property bool sharing: false
    property list<string> order

    height: 900
    name: "ShareSheet"
    visible: true
    when: windowShown
    width: 600

    ShareSheet {
        id: sheet

        activityItem: "Everyone pays $30.00"
        isPresented: test.sharing
        onCallback: (activityType, completed, returnedItems, error) => test.order.push("callback '" + activityType + "' " + completed + " " + returnedItems.length + " '" + error + "' while " + sheet.isPresented)
        onIsPresentedChanged: test.sharing = isPresented
    }

    Connections {
        function onIsPresentedChanged() {
            test.order.push("isPresented " + sheet.isPresented);
        }

        target: sheet
    }

    function init() {
        World.start(test);
        sheet.excludedActivityTypes = [];
        sheet.activityItem = "Everyone pays $30.00";
        test.sharing = true;
        test.order = [];
        verify(World.controller !== null);
    }

    function cleanup() {
        World.dismiss();
        compare(World.controller, null);
        compare(test.sharing, false);
    }

    function test_theTextIsShared() {
        compare(World.controller.text, "Everyone pays $30.00");
        World.controller.choose(World.firstActivity());
        compare(World.clipboard, "Everyone pays $30.00");
        compare(test.order, ["callback 'copy' true 0 '' while true", "isPresented false"]);
    }

    function test_cancellingCallsTheCallbackAndThenClearsTheFlag() {
        World.controller.close();
        compare(test.order, ["callback '' false 0 '' while true", "isPresented false"]);
    }

    function test_aChangeOfTheViewLeavesThePresentedSheet() {
        sheet.activityItem = "another";
        compare(World.controller.text, "Everyone pays $30.00");
        World.controller.close();
    }

    function test_theNextPresentationHasTheTextOfItsTime() {
        World.controller.close();
        World.dismiss();
        sheet.activityItem = "another";
        test.sharing = true;
        compare(World.controller.text, "another");
        World.controller.close();
    }

    function test_excludedTypesAreNotOffered() {
        World.controller.close();
        World.dismiss();
        sheet.excludedActivityTypes = ["copy"];
        test.sharing = true;
        compare(World.countFirstGroup(), 1);
        World.controller.close();
    }

    function test_theFlagPresentsAgainAndAgain() {
        for (let time = 0; time < 2; ++time) {
            World.controller.close();
            compare(test.sharing, false);
            World.dismiss();
            test.sharing = true;
            compare(sheet.isPresented, true);
            compare(World.controller.state, UIActivityViewController.Choosing);
        }
        World.controller.close();
    }

    function test_aFlagThatIsClearedClosesTheSheet() {
        test.sharing = false;
        compare(World.controller.state, UIActivityViewController.Finished);
        compare(test.order, ["callback '' false 0 '' while true", "isPresented false"]);
        compare(sheet.isPresented, false);
    }

    function test_aFlagThatIsClearedAndSetOpensTheNextSheet() {
        test.sharing = false;
        sheet.activityItem = "another";
        test.sharing = true;
        compare(test.order, ["callback '' false 0 '' while true", "isPresented false", "isPresented true"]);

        World.dismiss();
        compare(World.controller.text, "another");
        compare(World.controller.state, UIActivityViewController.Choosing);
        World.controller.close();
    }

    function test_aFlagThatIsClearedWhileTheNextSheetWaitsPresentsNone() {
        test.sharing = false;
        test.sharing = true;
        test.sharing = false;
        compare(test.order.length, 5);

        World.dismiss();
        compare(World.controller, null);
    }
}
