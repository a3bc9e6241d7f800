// The surface of a mouse from left to right, and the band of it that counts as its center. Each
// edge can be dragged; the sliders beside it are for the keyboard.
import QtQuick
import Velotap

Item {
    id: root
    property real from: 0
    property real to: 1
    property string name
    signal dragged(string edge, real value)

    height: 40
    Accessible.role: Accessible.Graphic
    Accessible.name: name
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
    Repeater {
        model: ["left", "right"]
        MouseArea {
            required property string modelData
            x: (modelData === "left" ? root.from : root.to) * root.width - width / 2
            width: Theme.glyphMedium
            height: root.height
            cursorShape: Qt.SizeHorCursor
            preventStealing: true
            onPositionChanged: mouse => root.dragged(modelData, mapToItem(root, mouse.x, 0).x / root.width)
            Rectangle {
                anchors.centerIn: parent
                width: Theme.small
                height: parent.height - 2 * Theme.small
                radius: width / 2
                color: Theme.knob
                border.color: Theme.edge
                border.width: Theme.hairline
            }
        }
    }
}
