// A number within limits: a track to drag, a step down and up, and the way back to the factory.
// An arrow key is one step, with Shift five.
import QtQuick
import QtQuick.Templates as T
import Velotap

Item {
    id: root
    property string title
    property string caption
    property string evidence   // what the present value makes of the last touches
    property string valueText
    property string lowText
    property string highText
    property string lessText
    property string moreText
    property string fineText     // what the buttons beside the value are for
    property string resetText
    property string resetName    // the same with what is reset
    property real from
    property real to
    property real step
    property real value
    property bool resettable: false
    // The part of the width in which the track lies, for values that stand for places above it.
    property real begins: 0
    property real ends: 1
    property bool fillsAfter: false   // the filled part is the one behind the thumb
    signal moved(real value)
    signal stepped(int steps)
    signal restored()

    width: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * Theme.medium
    height: implicitHeight
    Column {
        id: column
        x: Theme.gap
        y: Theme.medium
        width: root.width - 2 * Theme.gap
        spacing: Theme.small
        Item {
            width: parent.width
            height: Math.max(titleLabel.implicitHeight, fine.implicitHeight)
            Label {
                id: titleLabel
                anchors { left: parent.left; right: fine.left; rightMargin: Theme.medium
                          verticalCenter: parent.verticalCenter }
                text: root.title
                Accessible.ignored: true
            }
            Row {
                id: fine
                Accessible.role: Accessible.Grouping
                Accessible.name: root.fineText
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                IconButton {
                    symbol: "arrow.counterclockwise"
                    text: root.resetText
                    name: root.resetName
                    visible: root.resettable
                    onClicked: root.restored()
                }
                IconButton {
                    symbol: "minus"
                    text: root.lessText
                    enabled: root.value > root.from + root.step / 1000
                    autoRepeat: true
                    onClicked: root.stepped(-1)
                }
                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.max(64, number.implicitWidth + 2 * Theme.snug)
                    height: 26
                    radius: Theme.cornerSmall
                    color: Theme.sunken
                    border.color: Theme.line
                    border.width: Theme.hairline
                    Label {
                        id: number
                        anchors.centerIn: parent
                        text: root.valueText
                        kind: "strong"
                        wrapMode: Text.NoWrap
                        Accessible.ignored: true
                    }
                }
                IconButton {
                    symbol: "plus"
                    text: root.moreText
                    enabled: root.value < root.to - root.step / 1000
                    autoRepeat: true
                    onClicked: root.stepped(1)
                }
            }
        }
        T.Slider {
            id: slider
            // A thumb in the middle of a place needs room for its other half beyond the ends.
            readonly property real room: root.ends - root.begins < 1 ? handle.width / 2 : 0
            x: root.begins * parent.width - room
            width: (root.ends - root.begins) * parent.width + 2 * room
            height: Theme.large
            from: root.from
            to: root.to
            stepSize: root.step
            snapMode: T.Slider.SnapAlways
            value: root.value
            onMoved: root.moved(value)
            // Assistive programs write `value` itself: no signal, and the binding is gone.
            onValueChanged: if (!pressed && Math.abs(value - root.value) > root.step / 2) {
                const wish = value
                value = Qt.binding(() => root.value)
                root.moved(wish)
            }
            onPressedChanged: if (!pressed) value = Qt.binding(() => root.value)
            Accessible.name: root.title
            Accessible.ignored: !visible
            Accessible.description: root.valueText
            // The names under which Qt 6.4 looks for the limits.
            readonly property real minimumValue: from
            readonly property real maximumValue: to
            Accessible.onIncreaseAction: root.stepped(1)
            Accessible.onDecreaseAction: root.stepped(-1)
            Keys.onPressed: event => {
                const up = event.key === Qt.Key_Right || event.key === Qt.Key_Up
                const down = event.key === Qt.Key_Left || event.key === Qt.Key_Down
                if (!up && !down) return
                root.stepped((up ? 1 : -1) * (event.modifiers & Qt.ShiftModifier ? 5 : 1))
                event.accepted = true
            }
            background: Rectangle {
                y: (slider.height - height) / 2
                width: slider.width
                height: Theme.small
                radius: height / 2
                color: Theme.track
                Rectangle {
                    readonly property real middle: slider.handle.x + slider.handle.width / 2
                    x: root.fillsAfter ? middle : 0
                    width: root.fillsAfter ? parent.width - middle : middle
                    height: parent.height
                    radius: parent.radius
                    color: Theme.fill
                }
            }
            handle: Rectangle {
                x: slider.visualPosition * (slider.width - width)
                y: (slider.height - height) / 2
                width: Theme.glyphMedium
                height: width
                radius: width / 2
                color: slider.pressed ? Theme.accentSoft : Theme.knob
                border.color: Theme.edge
                border.width: Theme.hairline
                FocusRing { radius: parent.radius + gap; visible: slider.visualFocus }
            }
        }
        Item {
            x: slider.x
            width: slider.width
            height: Math.max(low.implicitHeight, high.implicitHeight)
            Caption {
                id: low
                text: root.lowText
                width: parent.width / 2 - Theme.snug
                Accessible.ignored: true
            }
            Caption {
                id: high
                anchors.right: parent.right
                horizontalAlignment: Text.AlignRight
                text: root.highText
                width: parent.width / 2 - Theme.snug
                Accessible.ignored: true
            }
        }
        Caption {
            width: parent.width
            text: root.caption
            visible: root.caption.length > 0
        }
        Row {
            width: parent.width
            spacing: Theme.small + Theme.tight
            visible: root.evidence.length > 0
            Glyph {
                id: mark
                symbol: "hand.tap"
                size: Theme.glyphSmall
                color: Theme.accent
            }
            Caption {
                width: parent.width - mark.width - parent.spacing
                text: root.evidence
            }
        }
    }
}
