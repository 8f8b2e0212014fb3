import Vexilo.App
import Vexilo.Calculator
import Vexilo.Settings

// The settings over the calculator, from a press of Settings until the sheet has slid away.
SettingsScreen {
    id: sheet

    property ContentView contentView

    function show(app: VexiloApp, contentView: ContentView) {
        sheet.contentView = contentView;
        sheet.view = app.settingsView;
        sheet.view.appear();
        sheet.open();
    }

    onClosed: {
        sheet.view.disappear();
        sheet.contentView.showSettings = false;
    }
}
