// How things stand: a mark in its tone, a title with a sentence, and what mends it. The button moves
// below the words when it leaves too little room for them.
import QtQuick
import Velotap

Item {
    id: root
    property string symbol
    property string tone: "neutral"
    property string title
    property string text
    property string action
    signal acted()
    readonly property int wordsLeft: Theme.gap + Theme.badge + Theme.medium
    readonly property bool stacked: button.visible
        && width - wordsLeft - button.implicitWidth - Theme.medium - Theme.gap < Theme.wordsWidth

    width: parent ? parent.width : 0
    implicitHeight: (stacked ? words.implicitHeight + Theme.medium + button.implicitHeight
                             : Math.max(badge.height, words.implicitHeight)) + 2 * Theme.gap
    height: implicitHeight
    Rectangle {
        id: badge
        x: Theme.gap
        y: root.stacked ? Theme.gap : Math.round((root.height - height) / 2)
        width: Theme.badge
        height: Theme.badge
        radius: Theme.corner
        color: Theme.tint(root.tone)
        Glyph {
            anchors.centerIn: parent
            symbol: root.symbol
            color: Theme.tone(root.tone)
            size: Theme.glyphLarge
        }
    }
    Column {
        id: words
        x: root.wordsLeft
        y: root.stacked ? Theme.gap : Math.round((root.height - implicitHeight) / 2)
        width: root.width - x - Theme.gap
               - (button.visible && !root.stacked ? button.implicitWidth + Theme.medium : 0)
        spacing: Theme.tight
        Label { kind: "headline"; text: root.title; width: parent.width }
        Label { text: root.text; secondary: true; width: parent.width }
    }
    PushButton {
        id: button
        x: root.stacked ? root.wordsLeft : root.width - width - Theme.gap
        y: root.stacked ? words.y + words.implicitHeight + Theme.medium
                        : Math.round((root.height - height) / 2)
        kind: "primary"
        text: root.action
        visible: text.length > 0
        onClicked: root.acted()
    }
}
