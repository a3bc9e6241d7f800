// A field to search in; Escape and the cross empty it.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.TextField {
    id: root
    property string hint
    property string name: hint
    property string clearText
    property string query
    signal edited(string query)

    width: parent ? parent.width : 0
    implicitHeight: Theme.fieldHeight
    leftPadding: Theme.gap + Theme.glyph + Theme.small
    rightPadding: 36
    verticalAlignment: TextInput.AlignVCenter
    font.family: Theme.family
    font.pixelSize: Theme.sizeBody
    color: Theme.text
    selectionColor: Theme.fill
    selectedTextColor: Theme.fillText
    selectByMouse: true
    renderType: Text.NativeRendering
    text: query
    onTextEdited: edited(text)
    Accessible.name: name
    Accessible.ignored: !visible
    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        if (text.length > 0) edited("")
        else event.accepted = false
    }
    onQueryChanged: if (text !== query) text = query
    background: Rectangle {
        radius: Theme.corner
        color: Theme.card
        border.color: root.activeFocus ? Theme.accent : Theme.edge
        border.width: root.activeFocus ? 2 : Theme.hairline
    }
    Glyph {
        x: Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        symbol: "magnifyingglass"
    }
    Label {
        x: root.leftPadding
        width: parent.width - x - Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text.length === 0
        text: root.hint
        secondary: true
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    IconButton {
        anchors { right: parent.right; rightMargin: Theme.small; verticalCenter: parent.verticalCenter }
        symbol: "xmark.circle.fill"
        text: root.clearText
        visible: root.text.length > 0
        onClicked: { root.edited(""); root.forceActiveFocus(Qt.OtherFocusReason) }
    }
}
