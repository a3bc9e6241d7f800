// A gesture, drawn.
import QtQuick
import Velotap

Rectangle {
    id: root
    property int fingers: 3
    property string kind
    property string device
    property string name

    width: 150
    height: 104
    radius: Theme.corner
    color: Theme.sunken
    border.color: Theme.line
    border.width: Theme.hairline
    Accessible.role: Accessible.Graphic
    Accessible.name: name
    Accessible.ignored: !visible
    GesturePainting {
        anchors { fill: parent; margins: Theme.snug }
        fingers: root.fingers
        kind: root.kind
        mouse: root.device === "mouse"
        surface: Theme.card
        edge: Theme.edge
        finger: Theme.press
        accent: Theme.accent
    }
}
