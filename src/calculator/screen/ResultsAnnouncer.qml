import QtQuick
import QtQuick.Templates as T
import Vexilo.Calculator
import Vexilo.Controls

// Announces what has changed of the people and the results. Under sheets, dialogs and menus it keeps
// silent until they are closed: what they say themselves comes first. Where there are no results, a
// notice says so, and the zeros in their place are not spoken.
Announcer {
    id: announcer

    readonly property bool covered: T.Overlay.overlay?.visible ?? false

    function follow(view: ContentView, inputs: InputsCard, results: ResultsPanel) {
        announcer.held = Qt.binding(() => announcer.covered || !view.hasResults);
        announcer.texts = Qt.binding(() => [inputs.people, results.total, results.tip, results.share]);
    }
}
