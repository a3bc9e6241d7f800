// A line of a card: a mark, a title with its sentence, and a control at the end. When the control
// leaves too little room for the words it moves below them.
import QtQuick
import Velotap

Item {
    id: root
    property string title
    property string caption
    property string symbol
    property color symbolColor: Theme.textSecondary
    property bool wordsIgnored: false   // the control already says them to assistive programs
    property alias trailing: trail.data
    default property alias below: under.data

    readonly property int inset: Theme.gap
    readonly property int wordsLeft: symbol.length > 0 ? inset + Theme.glyphMedium + Theme.medium : inset
    readonly property bool stacked: trail.implicitWidth > 0
        && width - wordsLeft - inset - trail.implicitWidth - Theme.medium < width * 0.36

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.rowHeight, column.implicitHeight + 2 * Theme.medium)
    height: implicitHeight

    Glyph {
        x: root.inset
        anchors.top: parent.top
        anchors.topMargin: column.y + words.y + Math.round((titleLabel.implicitHeight - height) / 2)
        symbol: root.symbol
        size: Theme.glyphMedium
        color: root.symbolColor
        visible: root.symbol.length > 0
    }
    Column {
        id: column
        x: root.wordsLeft
        width: root.width - root.wordsLeft - root.inset
        y: Math.round((root.height - implicitHeight) / 2)
        spacing: Theme.snug
        Item {
            width: parent.width
            implicitHeight: root.stacked ? words.implicitHeight + Theme.snug + trail.implicitHeight
                                         : Math.max(words.implicitHeight, trail.implicitHeight)
            height: implicitHeight
            Column {
                id: words
                width: root.stacked || trail.implicitWidth === 0
                       ? parent.width : parent.width - trail.implicitWidth - Theme.medium
                y: root.stacked ? 0 : Math.round((parent.height - implicitHeight) / 2)
                spacing: Theme.tight
                Label {
                    id: titleLabel
                    text: root.title
                    width: parent.width
                    opacity: root.enabled ? 1 : 0.6
                    silent: root.wordsIgnored
                }
                Caption {
                    text: root.caption
                    width: parent.width
                    visible: root.caption.length > 0
                    silent: root.wordsIgnored
                }
            }
            Row {
                id: trail
                x: root.stacked ? 0 : parent.width - width
                y: root.stacked ? parent.height - height : Math.round((parent.height - height) / 2)
                spacing: Theme.snug
            }
        }
        Column {
            id: under
            width: parent.width
            spacing: Theme.snug   // always visible: hidden, it would not hear that something in it shows
        }
    }
}
