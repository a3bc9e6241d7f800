// A few sets of values to choose from, and the one that is in force.
import QtQuick
import Velotap

Item {
    id: root
    property string title
    property string caption
    property var options: []
    property string value
    signal chosen(string value)

    width: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * Theme.medium
    height: implicitHeight
    Column {
        id: column
        x: Theme.gap
        y: Theme.medium
        width: parent.width - 2 * Theme.gap
        spacing: Theme.snug
        Label { text: root.title; width: parent.width }
        SegmentedPicker {
            name: root.title
            options: root.options
            value: root.value
            onChosen: value => root.chosen(value)
        }
        Caption { text: root.caption; width: parent.width; visible: text.length > 0 }
    }
}
