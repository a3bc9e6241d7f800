// What a pane is for.
import QtQuick
import Velotap

Item {
    id: root
    property string symbol
    property string title
    property string text

    width: parent ? parent.width : 0
    implicitHeight: Math.max(badge.height, words.implicitHeight)
    height: implicitHeight
    Accessible.role: Accessible.Heading
    Accessible.name: title
    Accessible.ignored: !visible
    Accessible.description: text
    Rectangle {
        id: badge
        width: Theme.badgeLarge
        height: Theme.badgeLarge
        radius: Theme.cornerLarge
        color: Theme.accentSoft
        Glyph { anchors.centerIn: parent; symbol: root.symbol; color: Theme.accent; size: Theme.glyphLarge }
    }
    Column {
        id: words
        anchors { left: badge.right; leftMargin: Theme.medium; right: parent.right
                  verticalCenter: parent.verticalCenter }
        spacing: Theme.tight
        Label { kind: "title"; text: root.title; width: parent.width; Accessible.ignored: true }
        Label { text: root.text; secondary: true; width: parent.width; Accessible.ignored: true }
    }
}
