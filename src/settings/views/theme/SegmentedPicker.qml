// One of a few. The choices stand side by side while their words fit, below each other when not.
import QtQuick
import QtQuick.Templates as T
import Velotap

Item {
    id: root
    property var options: []          // of { value, label }
    property string value
    property string name
    signal chosen(string value)
    readonly property real needed: {
        let sum = 2 * Theme.tight
        for (let i = 0; i < repeater.count; ++i) {
            const item = repeater.itemAt(i)
            if (item) sum += item.wanted
        }
        return sum
    }
    readonly property bool upright: needed > width
    readonly property real share: upright ? width - 2 * Theme.tight
                                          : (width - needed) / Math.max(1, repeater.count)

    function choose(index) {
        const i = (index + repeater.count) % repeater.count
        root.chosen(root.options[i].value)
        repeater.itemAt(i).forceActiveFocus(Qt.TabFocusReason)
    }

    width: parent ? parent.width : 0
    implicitWidth: needed
    implicitHeight: positioner.height + 2 * Theme.tight
    height: implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.ignored: !visible
    Rectangle {
        anchors.fill: parent
        radius: Theme.corner
        color: Theme.sunken
        border.color: Theme.line
        border.width: Theme.hairline
    }
    Flow {
        id: positioner
        x: Theme.tight
        y: Theme.tight
        width: root.width - 2 * Theme.tight + Theme.hairline
        Repeater {
            id: repeater
            model: root.options.length   // so that a segment keeps the keyboard when words change
            T.RadioButton {
                id: segment
                required property int index
                readonly property var option: root.options[index] ?? ({ value: "", label: "" })
                readonly property real wanted: label.implicitWidth + 2 * Theme.medium
                width: root.upright ? root.share : wanted + root.share
                implicitHeight: Math.max(26 * Theme.scale, label.implicitHeight + Theme.snug)
                text: option.label
                checked: root.value === option.value
                autoExclusive: false
                focusPolicy: checked || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
                onClicked: {
                    checked = Qt.binding(() => root.value === option.value)
                    root.chosen(option.value)
                }
                Keys.onRightPressed: root.choose(index + 1)
                Keys.onLeftPressed: root.choose(index - 1)
                Keys.onDownPressed: root.choose(index + 1)
                Keys.onUpPressed: root.choose(index - 1)
                Accessible.name: text
                Accessible.ignored: !visible
                Accessible.onPressAction: clicked()
                Accessible.onToggleAction: clicked()
                background: Rectangle {
                    radius: Theme.cornerSmall
                    color: segment.checked ? Theme.card : segment.hovered ? Theme.hover : Theme.clear
                    border.width: segment.checked ? Theme.hairline : 0
                    border.color: Theme.edge
                    FocusRing { gap: 0; radius: Theme.cornerSmall; visible: segment.visualFocus }
                }
                contentItem: Item {
                    Label {
                        id: label
                        anchors.verticalCenter: parent.verticalCenter
                        x: root.upright ? Theme.medium : (parent.width - width) / 2
                        text: segment.text
                        kind: segment.checked ? "strong" : "body"
                        color: segment.checked ? Theme.accent : Theme.text
                        wrapMode: Text.NoWrap
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
