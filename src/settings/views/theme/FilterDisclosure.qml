// The filters of a pane, behind one line that says how many are in use. It opens by itself when
// some are, and never closes by itself.
import QtQuick
import Velotap

Disclosure {
    id: root
    property int activeCount: 0
    property string resetText
    default property alias filters: inner.data
    signal reset()

    quiet: true
    symbol: activeCount > 0 ? "line.3.horizontal.decrease.circle.fill"
                            : "line.3.horizontal.decrease.circle"
    symbolColor: activeCount > 0 ? Theme.accent : Theme.textSecondary
    Component.onCompleted: if (activeCount > 0) expanded = true
    content: Column {
        id: inner
        x: Theme.gap
        width: root.width - 2 * Theme.gap
        spacing: Theme.medium
        topPadding: Theme.small
        bottomPadding: Theme.snug
    }
    PushButton {
        parent: inner
        text: root.resetText
        symbol: "arrow.counterclockwise"
        visible: root.activeCount > 0
        onClicked: root.reset()
    }
}
