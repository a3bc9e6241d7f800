// The surface of a mouse from left to right, and the band of it that counts as its center. A press
// takes hold of the nearer edge; with the keyboard each edge is reached by itself, and an arrow key
// moves it one step, with Shift five.
import QtQuick
import Velotap

Item {
    id: root
    property real from: 0
    property real to: 1
    property string name
    property var edges: []   // of { id, title, valueText, value, from, to }, the left one first
    property var edgeAt      // the edge that a press at a part of the width takes hold of
    signal dragged(int edge, real value)
    signal stepped(int edge, int steps)

    height: 40
    Accessible.role: Accessible.Graphic
    Accessible.name: name
    Accessible.ignored: !visible
    Rectangle {
        anchors.fill: parent
        radius: Theme.corner
        color: Theme.sunken
        border.color: Theme.edge
        border.width: Theme.hairline
    }
    Rectangle {
        x: root.from * root.width
        width: Math.max(0, root.to - root.from) * root.width
        height: parent.height
        color: Theme.fill
        Glyph {
            anchors.centerIn: parent
            symbol: "hand.tap"
            size: Theme.glyphLarge
            color: Theme.fillText
            visible: parent.width > width + Theme.snug
        }
    }
    MouseArea {
        id: mouse
        property int held: -1
        property real start
        function place(x) { return x / root.width }

        anchors.fill: parent
        cursorShape: Qt.SizeHorCursor
        preventStealing: true
        onPressed: event => {
            held = -1
            start = place(event.x)
        }
        onPositionChanged: event => {
            const now = place(event.x)
            // Where both edges lie in one place, the way that the pointer goes tells which is meant.
            if (held < 0) held = root.edgeAt(root.to > root.from ? start : now)
            root.dragged(held, now)
        }
    }
    Repeater {
        model: 2   // and not the edges, which are new with every step and would lose the keyboard
        Rectangle {
            id: edge
            required property int index
            readonly property var modelData: root.edges[index]
            x: (index === 0 ? root.from : root.to) * root.width - width / 2
            y: Theme.small
            width: Theme.small
            height: parent.height - 2 * Theme.small
            radius: width / 2
            color: Theme.knob
            border.color: Theme.edge
            border.width: Theme.hairline
            activeFocusOnTab: true
            Accessible.role: Accessible.Slider
            Accessible.name: modelData.title
            Accessible.ignored: !visible
            Accessible.description: modelData.valueText
            Accessible.focusable: true
            Accessible.onIncreaseAction: root.stepped(modelData.id, 1)
            Accessible.onDecreaseAction: root.stepped(modelData.id, -1)
            readonly property real value: modelData.value
            readonly property real minimumValue: modelData.from
            readonly property real maximumValue: modelData.to
            Keys.onPressed: event => {
                const up = event.key === Qt.Key_Right || event.key === Qt.Key_Up
                const down = event.key === Qt.Key_Left || event.key === Qt.Key_Down
                if (!up && !down) return
                root.stepped(modelData.id, (up ? 1 : -1) * (event.modifiers & Qt.ShiftModifier ? 5 : 1))
                event.accepted = true
            }
            FocusRing { radius: parent.radius + gap; visible: edge.activeFocus }
        }
    }
}
