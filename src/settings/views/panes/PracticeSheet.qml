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
        },
        PushButton {
            kind: "link"
            text: root.pane ? root.pane.state.openTuning : ""
            onClicked: { root.close(); root.pane.openTuning() }
        },
        PushButton {
            kind: "link"
            text: root.pane ? root.pane.state.openGestures : ""
            onClicked: { root.close(); root.pane.openGestures() }
        },
        PushButton {
            kind: "link"
            text: root.pane ? root.pane.state.openReadiness : ""
            onClicked: { root.close(); root.pane.openReadiness() }
        }
    ]
}
