// Asks for the one permission, explains it, waits for it, and says what comes next.
import QtQuick
import Velotap

Rectangle {
    id: root
    property var pane
    readonly property var s: pane.state
    readonly property real wanted: scroll.contentHeight + footer.height

    onWantedChanged: if (pane) pane.setWanted(wanted)
    color: Theme.window
    focus: true
    PaneScroll {
        id: scroll
        anchors { top: parent.top; left: parent.left; right: parent.right; bottom: footer.top }
        spacing: Theme.gap

        Item {
            width: parent.width
            implicitHeight: Math.max(badge.height, words.implicitHeight)
            height: implicitHeight
            Rectangle {
                id: badge
                width: Theme.hero
                height: Theme.hero
                radius: Theme.cornerSheet
                color: Theme.toneSoft(root.s.granted ? "good" : "warning")
                Glyph {
                    anchors.centerIn: parent
                    symbol: root.s.symbol
                    size: Theme.glyphHero
                    color: Theme.tone(root.s.granted ? "good" : "warning")
                }
            }
            Column {
                id: words
                anchors { left: badge.right; leftMargin: Theme.gap; right: parent.right
                          verticalCenter: parent.verticalCenter }
                spacing: Theme.small
                Label { kind: "title"; text: root.s.title; width: parent.width }
                Label { text: root.s.explanation; secondary: true; width: parent.width }
            }
        }
        Section {
            title: root.s.stepsHeading
            visible: root.s.steps.length > 0
            Card {
                pad: Theme.gap
                Column {
                    width: parent.width
                    spacing: Theme.medium
                    Repeater {
                        model: root.s.steps
                        Item {
                            id: step
                            required property var modelData
                            required property int index
                            width: parent.width
                            implicitHeight: Math.max(number.height, sentence.implicitHeight)
                            height: implicitHeight
                            Rectangle {
                                id: number
                                width: Theme.large
                                height: Theme.large
                                radius: height / 2
                                color: Theme.accentSoft
                                Label {
                                    anchors.centerIn: parent
                                    kind: "strong"
                                    color: Theme.accent
                                    text: step.index + 1
                                    Accessible.ignored: true
                                }
                            }
                            Label {
                                id: sentence
                                anchors { left: number.right; leftMargin: Theme.medium; right: parent.right
                                          verticalCenter: parent.verticalCenter }
                                text: step.modelData
                            }
                        }
                    }
                    PushButton {
                        kind: "primary"
                        text: root.s.mainButton
                        visible: text.length > 0
                        onClicked: root.pane.openSettings()
                    }
                    Note {
                        visible: root.s.settingsError.length > 0
                        tone: "warning"
                        symbol: "exclamationmark.triangle"
                        text: root.s.settingsError
                    }
                }
            }
        }
        Note {
            visible: root.s.waiting.length > 0
            symbol: "arrow.clockwise"
            text: root.s.waiting
        }
        Card {
            visible: root.s.helpHeading.length > 0
            Disclosure {
                title: root.s.helpHeading
                symbol: "questionmark.circle"
                Column {
                    x: Theme.gap
                    width: parent.width - 2 * Theme.gap
                    spacing: Theme.snug
                    bottomPadding: Theme.snug
                    Repeater {
                        model: root.s.help
                        Label {
                            required property var modelData
                            width: parent.width
                            text: modelData
                            secondary: true
                        }
                    }
                    PushButton {
                        text: root.s.revealButton
                        symbol: "folder"
                        onClicked: root.pane.reveal()
                    }
                }
            }
        }
        Card {
            visible: root.s.tips.length > 0
            pad: Theme.gap
            Column {
                width: parent.width
                spacing: Theme.medium
                Repeater {
                    model: root.s.tips
                    Item {
                        id: tip
                        required property var modelData
                        width: parent.width
                        implicitHeight: tipText.implicitHeight
                        height: implicitHeight
                        Glyph { symbol: "menubar"; size: Theme.glyphMedium; color: Theme.accent }
                        Label {
                            id: tipText
                            x: Theme.glyphMedium + Theme.medium
                            width: parent.width - x
                            text: tip.modelData
                        }
                    }
                }
            }
        }
    }
    Rectangle {
        id: footer
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: footerRow.implicitHeight + 2 * Theme.medium
        color: Theme.bar
        Rectangle { width: parent.width; height: Theme.hairline; color: Theme.line }
        Item {
            id: footerRow
            anchors { left: parent.left; right: parent.right; margins: Theme.wide
                      verticalCenter: parent.verticalCenter }
            implicitHeight: Math.max(note.implicitHeight, buttons.implicitHeight)
            height: implicitHeight
            Caption {
                id: note
                anchors { left: parent.left; right: buttons.left; rightMargin: Theme.medium
                          verticalCenter: parent.verticalCenter }
                text: root.s.laterNote
            }
            Row {
                id: buttons
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                spacing: Theme.snug
                PushButton {
                    text: root.s.laterButton
                    visible: text.length > 0
                    onClicked: root.pane.later()
                }
                PushButton {
                    text: root.s.practiceButton
                    symbol: "cursorarrow.click"
                    visible: text.length > 0
                    onClicked: root.pane.practise()
                }
                PushButton {
                    kind: "primary"
                    text: root.s.continueButton
                    visible: text.length > 0
                    onClicked: root.pane.goOn()
                }
            }
        }
    }
    Shortcut { sequences: [StandardKey.Close, StandardKey.Cancel]; onActivated: root.pane.later() }
}
