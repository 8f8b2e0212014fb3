import QtQuick
import Vexilo.Calculator
import Vexilo.Controls

// Announces what has changed of the people and the results. Over the settings and the saved bills it
// keeps silent until they are closed.
Announcer {
    id: announcer

    function follow(view: ContentView, inputs: InputsCard, results: ResultsPanel) {
        announcer.held = Qt.binding(() => view.showSettings || view.showHistory);
        announcer.texts = Qt.binding(() => [inputs.people, results.total, results.tip, results.share]);
    }
}
