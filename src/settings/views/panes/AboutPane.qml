// What this is, and where to find help.
import QtQuick
import Velotap

PaneScroll {
    id: root
    property var pane
    readonly property var s: pane.state

    Column {
        width: parent.width
        spacing: Theme.snug
        topPadding: Theme.snug
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Theme.logo
            height: Theme.logo
            radius: Theme.logoCorner
            color: Theme.fill
            Glyph { anchors.centerIn: parent; symbol: "hand.tap"; size: Theme.logoGlyph; color: Theme.fillText }
        }
        Label {
            kind: "title"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.s.name
        }
        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            secondary: true
            text: root.s.tagline
        }
        Caption { width: parent.width; horizontalAlignment: Text.AlignHCenter; text: root.s.version }
        Caption { width: parent.width; horizontalAlignment: Text.AlignHCenter; text: root.s.notice }
    }
    Section {
        Card {
            RowButton {
                symbol: "arrow.clockwise"
                title: root.s.updates
                enabled: root.s.canCheck
                opacity: enabled ? 1 : 0.6
                onClicked: root.pane.checkForUpdates()
            }
            RowButton {
                divided: true
                symbol: "envelope"
                title: root.s.contact
                onClicked: root.pane.contactSupport()
            }
            RowButton {
                divided: true
                symbol: "doc.on.doc"
                title: root.s.copyAddress
                onClicked: root.pane.copyAddress()
            }
            RowButton {
                divided: true
                symbol: "heart.text.square"
                title: root.s.snapshotTitle
                onClicked: { root.pane.openSnapshot(); snapshotSheet.open() }
            }
        }
        Note { visible: root.s.feedback.length > 0; text: root.s.feedback; tone: "accent" }
    }
    Section {
        Card {
            Repeater {
                model: root.s.links.pages
                RowButton {
                    required property var modelData
                    required property int index
                    divided: index > 0
                    symbol: modelData.symbol
                    title: modelData.label
                    onClicked: root.pane.openPage(modelData.value)
                }
            }
            RowButton {
                divided: root.s.links.pages.length > 0
                symbol: "doc.text"
                title: root.s.links.acknowledgements
                onClicked: { root.pane.openNotices(); noticesSheet.open() }
            }
        }
    }
    Sheet {
        id: snapshotSheet
        preferredWidth: Theme.sheetWide
        title: root.s.snapshot.title
        text: root.s.snapshot.privacy
        firstFocus: snapshotDone
        TextPanel { text: root.s.snapshot.text; name: root.s.snapshot.title }
        Note { visible: root.s.snapshot.feedback.length > 0; text: root.s.snapshot.feedback; tone: "accent" }
        buttons: [
            PushButton { id: snapshotDone; kind: "primary"; text: root.s.snapshot.done; onClicked: snapshotSheet.close() },
            PushButton { symbol: "doc.on.doc"; text: root.s.snapshot.copy; onClicked: root.pane.copySnapshot() },
            PushButton { symbol: "square.and.arrow.down"; text: root.s.snapshot.save; onClicked: root.pane.saveSnapshot() }
        ]
    }
    Sheet {
        id: noticesSheet
        preferredWidth: Theme.sheetWide
        title: root.s.notices.title
        text: root.s.notices.find
        firstFocus: noticesSearch
        onFindWanted: noticesSearch.forceActiveFocus(Qt.ShortcutFocusReason)
        SearchField {
            id: noticesSearch
            hint: root.s.notices.search
            clearText: root.s.notices.clear
            onEdited: query => { text = query; notices.find(query) }
            Keys.onReturnPressed: notices.findNext(text)
        }
        TextPanel { id: notices; text: root.s.notices.text; name: root.s.notices.title; tall: true }
        buttons: PushButton { kind: "primary"; text: root.s.notices.done; onClicked: noticesSheet.close() }
    }
}
