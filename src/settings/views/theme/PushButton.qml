// A button: plain, the main one of its place, one that destroys, or a quiet link. Where it is made
// narrower than its words they wrap.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.Button {
    id: root
    property string kind: "normal"   // normal, primary, danger, link
    property string symbol
    property string help
    readonly property color ink: !enabled ? Theme.textSecondary
        : kind === "primary" ? Theme.fillText : kind === "danger" ? Theme.danger
        : kind === "link" ? Theme.accent : Theme.text

    readonly property int inset: kind === "link" ? Theme.snug : 14
    readonly property int wordsLeft: symbol.length > 0 ? Theme.glyphSmall + row.spacing : 0

    implicitWidth: Math.max(kind === "link" ? 0 : 72,
                            Math.ceil(words.advanceWidth) + wordsLeft + 2 * inset)
    implicitHeight: Math.max(Theme.controlHeight, label.implicitHeight + Theme.snug)
    opacity: enabled ? 1 : 0.6
    Accessible.name: text
    Accessible.ignored: !visible
    Accessible.description: help
    Accessible.onPressAction: if (enabled) clicked()   // Qt 6.4 announces it without doing it
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    background: Rectangle {
        radius: Theme.corner
        color: root.kind === "primary" ? (root.down ? Qt.darker(Theme.fill, 1.12) : Theme.fill)
             : root.down ? Theme.press : root.hovered ? Theme.hover
             : root.kind === "link" ? Theme.clear : Theme.button
        border.width: root.kind === "primary" || root.kind === "link" ? 0 : Theme.hairline
        border.color: Theme.buttonLine
        FocusRing { visible: root.visualFocus }
    }
    TextMetrics { id: words; font: label.font; text: root.text }
    contentItem: Item {
        Row {
            id: row
            anchors.centerIn: parent
            spacing: Theme.small + Theme.tight
            Glyph {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol.length > 0
                symbol: root.symbol
                size: Theme.glyphSmall
                color: root.ink
            }
            Label {
                id: label
                kind: "strong"
                text: root.text
                color: root.ink
                width: root.width < root.implicitWidth ? root.width - root.wordsLeft - 2 * root.inset
                                                       : implicitWidth
                Accessible.ignored: true
            }
        }
    }
}
