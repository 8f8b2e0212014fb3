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
        onIsPresentedChanged: {
            test.sharing = isPresented;
            test.order.push("isPresented " + isPresented);
        }
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

    function firstActivity() {
        const group = World.controller.groups[0];
        return group.data(group.index(0, 0), 256);
    }

    function test_theTextIsShared() {
        compare(World.controller.text, "Everyone pays $30.00");
        World.controller.choose(firstActivity());
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
        compare(World.controller.groups[0].rowCount(), 1);
        World.controller.close();
    }
}
