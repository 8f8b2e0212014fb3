import Vexilo.App
import Vexilo.Share

// The share sheet over the window, from its presentation until it has slid away.
ActivityScreen {
    id: sheet

    property VexiloApp app

    function show(app: VexiloApp) {
        sheet.app = app;
        sheet.controller = app.activityViewController;
        sheet.open();
    }

    onClosed: sheet.app.dismissActivityViewController()
}
