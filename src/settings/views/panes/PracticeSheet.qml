// The practice place as a sheet of the settings window.
import QtQuick
import Velotap

Sheet {
    id: root
    property var pane

    preferredWidth: Theme.sheetWide
    title: pane ? pane.state.title : ""
    firstFocus: doneButton
    onClosed: if (pane) pane.reset()
    Loader {
        width: parent.width
        active: root.opened || root.visible
        sourceComponent: PracticeContent { pane: root.pane }
    }
    // The ways to what may be wrong, beside what closes the sheet and never in a row with it.
    Flow {
        x: -Theme.snug   // the words of a link stand where those above them do
        width: parent.width + 2 * Theme.snug
        Repeater {
            model: root.pane ? root.pane.state.links : []
            PushButton {
                required property var modelData
                kind: "link"
                text: modelData.title
                symbol: modelData.symbol
                onClicked: { root.close(); root.pane.open(modelData.id) }
            }
        }
    }
    buttons: [
        PushButton {
            id: doneButton
            kind: "primary"
            text: root.pane ? root.pane.state.done : ""
            onClicked: root.close()
        },
        PushButton {
            text: root.pane ? root.pane.state.again : ""
            symbol: "arrow.counterclockwise"
            enabled: root.pane ? root.pane.state.canTryAgain : false
            onClicked: root.pane.reset()
        }
    ]
}
