// A place to try a middle click, and what arrived there.
import QtQuick
import Velotap

Column {
    id: root
    property var pane
    readonly property var s: pane.state
    property alias surface: surface

    width: parent ? parent.width : 0
    spacing: Theme.medium
    Label { text: root.s.instructions; width: parent.width; secondary: true }
    PracticeSurface {
        id: surface
        width: parent.width
        height: Theme.practiceHeight
        Accessible.role: Accessible.Canvas
        Accessible.name: root.s.title
        Accessible.description: root.s.outcome
        onPressedButton: button => root.pane.press(button)
        onReleasedButton: button => root.pane.release(button)
        onPlaced: facts => root.pane.place(facts)
        onGone: root.pane.leave()
        Rectangle {
            anchors.fill: parent
            radius: Theme.cornerLarge
            color: root.s.tone === "neutral" ? Theme.sunken : Theme.toneSoft(root.s.tone)
            border.color: Theme.edge
            border.width: Theme.hairline
            Column {
                anchors.centerIn: parent
                width: parent.width - 2 * Theme.gap
                spacing: Theme.snug
                Glyph {
                    anchors.horizontalCenter: parent.horizontalCenter
                    symbol: root.s.symbol
                    size: Theme.badgeLarge
                    color: root.s.tone === "neutral" ? Theme.accent : Theme.tone(root.s.tone)
                }
                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: Theme.snug
                    visible: root.s.outcome.length > 0
                    Glyph {
                        id: outcomeMark
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: root.s.outcomeSymbol
                        color: Theme.tone(root.s.tone)
                        visible: root.s.outcomeSymbol.length > 0
                    }
                    Label {
                        kind: "strong"
                        text: root.s.outcome
                        width: Math.min(implicitWidth, root.width - 2 * Theme.gap
                                        - (outcomeMark.visible ? outcomeMark.width + Theme.snug : 0))
                        horizontalAlignment: Text.AlignHCenter
                    }
                }
                Caption {
                    text: root.s.outcomeNote
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    visible: text.length > 0
                }
            }
        }
    }
    Flow {
        width: parent.width
        spacing: Theme.gap
        visible: root.s.counts.length > 0
        Repeater {
            model: root.s.counts
            Row {
                id: count
                required property var modelData
                spacing: Theme.small + Theme.tight
                Glyph {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: count.modelData.symbol
                    color: Theme.tone(count.modelData.tone)
                }
                Label { text: count.modelData.text; kind: "strong"; wrapMode: Text.NoWrap }
            }
        }
    }
    Caption { text: root.s.steps; width: parent.width }
    Caption { text: root.s.safety; width: parent.width }
}
