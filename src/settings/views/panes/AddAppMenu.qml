// The ways to add applications to a list of rules, behind one button.
import QtQuick
import QtQuick.Templates as T
import Velotap

PushButton {
    id: root
    property string name   // with the list that is added to
    property string choose
    property string running
    signal chooseWanted()
    signal runningWanted()

    symbol: "plus"
    Accessible.name: name
    onClicked: {
        menu.byKeyboard = visualFocus
        menu.open()
    }

    component Entry: T.MenuItem {
        id: entry
        implicitWidth: label.implicitWidth + 2 * Theme.medium
        implicitHeight: Theme.controlHeight
        Accessible.onPressAction: clicked()   // Qt 6.4 announces it without doing it
        background: Rectangle {
            radius: Theme.cornerSmall
            color: entry.down ? Theme.press : entry.highlighted ? Theme.hover : Theme.clear
        }
        contentItem: Item {
            Label {
                id: label
                x: Theme.medium
                anchors.verticalCenter: parent.verticalCenter
                text: entry.text
                wrapMode: Text.NoWrap
                Accessible.ignored: true
            }
        }
    }
    T.Menu {
        id: menu
        property bool byKeyboard: false
        // Not before: taking the keyboard marks nothing.
        onOpened: if (byKeyboard) currentIndex = 0
        y: root.height + Theme.small
        margins: Theme.snug
        padding: Theme.small
        implicitWidth: Math.max(first.implicitWidth, second.implicitWidth) + 2 * padding
        implicitHeight: contentItem.implicitHeight + 2 * padding
        background: Rectangle {
            color: Theme.card
            radius: Theme.corner
            border.color: Theme.edge
            border.width: Theme.hairline
        }
        contentItem: ListView {
            implicitHeight: contentHeight
            model: menu.contentModel
            currentIndex: menu.currentIndex
            interactive: false
        }
        Entry { id: first; text: root.choose; onTriggered: root.chooseWanted() }
        Entry { id: second; text: root.running; onTriggered: root.runningWanted() }
    }
}
