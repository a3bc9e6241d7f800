// A remark with its mark, and what can be done about it.
import QtQuick
import Velotap

Rectangle {
    id: root
    property string symbol: "info.circle"
    property string tone: "neutral"   // neutral, accent, good, warning
    property string text
    property string action
    property string actionSymbol
    signal acted()
    readonly property bool stacked: button.visible && words.x + 160 + button.implicitWidth > width

    width: parent ? parent.width : 0
    implicitHeight: (stacked ? words.implicitHeight + Theme.snug + button.implicitHeight
                             : Math.max(words.implicitHeight, button.visible ? button.implicitHeight : 0))
                    + 2 * Theme.snug
    height: implicitHeight
    radius: Theme.corner
    color: Theme.toneSoft(tone)
    Glyph {
        x: Theme.medium
        y: words.y + Math.round((Theme.sizeCaption * 1.3 - height) / 2)
        symbol: root.symbol
        color: Theme.tone(root.tone)
    }
    Caption {
        id: words
        x: Theme.medium + Theme.glyph + Theme.snug
        y: root.stacked ? Theme.snug : Math.round((root.height - implicitHeight) / 2)
        width: root.width - x - Theme.medium
               - (button.visible && !root.stacked ? button.implicitWidth + Theme.medium : 0)
        text: root.text
        color: Theme.text
    }
    PushButton {
        id: button
        x: root.stacked ? words.x : root.width - width - Theme.snug
        y: root.stacked ? words.y + words.implicitHeight + Theme.snug
                        : Math.round((root.height - height) / 2)
        visible: root.action.length > 0
        text: root.action
        symbol: root.actionSymbol
        onClicked: root.acted()
    }
}
