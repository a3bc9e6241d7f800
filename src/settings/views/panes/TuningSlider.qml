// One value of the tuning, divided from the row above.
import QtQuick
import Velotap

Item {
    id: root
    required property var row
    required property int index
    property var pane

    width: parent ? parent.width : 0
    implicitHeight: slider.implicitHeight
    height: implicitHeight
    Divider {}
    FineSlider {
        id: slider
        title: root.row.title
        caption: root.row.caption
        evidence: root.row.evidence
        valueText: root.row.valueText
        lowText: root.row.low
        highText: root.row.high
        lessText: root.row.less
        moreText: root.row.more
        fineText: root.row.fine
        resetText: root.row.reset
        resetName: root.row.resetNamed
        from: root.row.from
        to: root.row.to
        step: root.row.step
        begins: root.row.begins
        ends: root.row.ends
        fillsAfter: root.row.fillsAfter
        value: root.row.value
        resettable: root.row.resettable
        onMoved: value => root.pane.move(root.row.id, value)
        onStepped: steps => root.pane.step(root.row.id, steps)
        onRestored: root.pane.resetValue(root.row.id)
    }
}
