// A switch. `on` is the truth and stays bound; the person's wish arrives as `switched`.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.Switch {
    id: root
    property bool on: false
    property string name
    property string help
    signal switched(bool wish)
    function wish(value) {
        checked = Qt.binding(() => root.on)
        root.switched(value)
    }

    implicitWidth: 38
    implicitHeight: 22
    checked: on
    onToggled: wish(checked)
    Accessible.name: name
    Accessible.ignored: !visible
    Accessible.description: help
    // Qt 6.4 announces these actions; the first would change `checked` alone, behind the back of `on`.
    Accessible.onPressAction: if (enabled) wish(!on)
    Accessible.onToggleAction: if (enabled) wish(!on)
    opacity: enabled ? 1 : 0.5
    indicator: Rectangle {
        width: root.implicitWidth
        height: root.implicitHeight
        radius: height / 2
        color: root.checked ? Theme.fill : Theme.track
        Behavior on color { enabled: !App.still; ColorAnimation { duration: Theme.quick } }
        Rectangle {
            x: Theme.tight + root.visualPosition * (parent.width - width - 2 * Theme.tight)
            y: Theme.tight
            width: parent.height - 2 * Theme.tight
            height: width
            radius: height / 2
            color: Theme.knob
            Behavior on x {
                enabled: !root.down && !App.still
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
        }
        FocusRing { radius: parent.radius + gap; visible: root.visualFocus }
    }
}
