// A longer text to read, select and search in; not to write in.
import QtQuick
import QtQuick.Templates as T
import Velotap

Rectangle {
    id: root
    property alias text: area.text
    property string name
    property bool tall: false

    /// Selects the first place at which the text contains `words`, from the start.
    function find(words) { area.deselect(); findFrom(words, 0) }
    function findNext(words) { findFrom(words, area.selectionEnd) }
    function findFrom(words, start) {
        if (words.length === 0) return
        const all = area.text.toLowerCase()
        let at = all.indexOf(words.toLowerCase(), start)
        if (at < 0) at = all.indexOf(words.toLowerCase())
        if (at < 0) return
        area.select(at, at + words.length)
        const place = area.positionToRectangle(at)
        flick.contentY = Math.max(0, Math.min(place.y - flick.height / 3, flick.contentHeight - flick.height))
    }

    width: parent ? parent.width : 0
    // Not the text's: that is laid out some frames after it came, and a sheet does not jump.
    height: Math.round((tall ? 300 : 220) * Theme.scale)
    radius: Theme.corner
    color: Theme.sunken
    border.color: area.activeFocus ? Theme.accent : Theme.line
    border.width: area.activeFocus ? 2 : Theme.hairline
    Flickable {
        id: flick
        anchors { fill: parent; margins: Theme.small }
        contentWidth: width
        contentHeight: area.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: VScrollBar {}
        T.TextArea {
            id: area
            width: flick.width
            // The template has no height of its own, and what lies below its end is not drawn.
            height: Math.max(flick.height, contentHeight + topPadding + bottomPadding)
            padding: Theme.small
            readOnly: true
            selectByMouse: true
            persistentSelection: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            font.family: Theme.familyMono
            font.pixelSize: Theme.sizeCaption
            color: Theme.text
            selectionColor: Theme.fill
            selectedTextColor: Theme.fillText
            Accessible.name: root.name
        }
    }
}
