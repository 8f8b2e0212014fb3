import Vexilo.App
import Vexilo.Calculator
import Vexilo.History

// The saved bills over the calculator, from a press of History until the sheet has slid away.
HistoryScreen {
    id: sheet

    property ContentView contentView

    function show(app: VexiloApp, contentView: ContentView) {
        sheet.contentView = contentView;
        sheet.view = app.historyView;
        sheet.open();
    }

    onClosed: sheet.contentView.showHistory = false
}
