// Every shared control in its states, to be looked at.
import QtQuick
import Velotap

Rectangle {
    color: Theme.window
    Rectangle {
        id: bar
        width: parent.width
        height: tabs.height + 14
        color: Theme.bar
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.line }
        Row {
            id: tabs
            anchors.centerIn: parent
            spacing: 4
            TabButton { text: "Allgemein"; symbol: "gearshape" }
            TabButton { text: "Gesten"; symbol: "hand.tap"; checked: true }
            TabButton { text: "Feinabstimmung"; symbol: "slider.horizontal.3" }
            TabButton { text: "Apps"; symbol: "app.badge.checkmark" }
            TabButton { text: "Über"; symbol: "info.circle" }
        }
    }
    PaneScroll {
        anchors { top: bar.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        Introduction { symbol: "hand.tap"; title: "Gestures"; text: "What the fingers do, and what becomes of it." }
        Section {
            title: "Rows"
            caption: "A caption under the heading"
            trailing: PushButton { text: "Clear" }
            Card {
                ToggleRow { title: "Launch at Login"; caption: "Starts with the session."; symbol: "power"; on: true }
                Divider {}
                ToggleRow { title: "Hide menu bar icon"; caption: "Starting Velotap again opens this window, so that it can be shown again at any time."; symbol: "menubar" }
                Divider {}
                SettingRow { title: "Listeners"; caption: "They are running"; symbol: "checkmark.circle.fill"; symbolColor: Theme.good; trailing: PushButton { text: "Try Again" } }
                Divider {}
                SettingRow { title: "Accessibility Setup is needed"; symbol: "exclamationmark.circle"; symbolColor: Theme.warning; trailing: [ PushButton { text: "Accessibility Setup with many words"; kind: "primary" }, PushButton { text: "Another one of them" } ] }
                Divider {}
                Disclosure { title: "Readiness"; summary: "Two of three are met"; symbol: "checkmark.circle"; expanded: true
                    SettingRow { title: "Inside"; trailing: Toggle { on: false; enabled: false; name: "x" } }
                }
            }
        }
        SearchField { hint: "Search settings" }
        SegmentedPicker { value: "b"; options: [ { value: "a", label: "Precise" }, { value: "b", label: "Default" }, { value: "c", label: "Relaxed" } ] }
        SegmentedPicker { value: "b"; options: [ { value: "a", label: "All rules of every kind there is" }, { value: "b", label: "Velotap off in these apps" }, { value: "c", label: "Send zoom keyboard shortcuts" } ] }
        Card {
            FineSlider { title: "Max tap duration"; valueText: "300 ms"; lowText: "Shorter taps"; highText: "Longer taps"; from: 150; to: 500; step: 10; value: 300; resettable: true; caption: "How long the fingers may stay." }
            Divider {}
            FineSlider { title: "Sensitivity"; valueText: "0.3×"; from: 0.3; to: 3; step: 0.1; value: 0.3 }
        }
        Flow {
            width: parent.width
            spacing: 8
            PushButton { text: "Normal" }
            PushButton { text: "Primary"; kind: "primary"; symbol: "arrow.clockwise" }
            PushButton { text: "Danger"; kind: "danger"; symbol: "trash" }
            PushButton { text: "Link"; kind: "link"; symbol: "slider.horizontal.3" }
            PushButton { text: "Disabled"; enabled: false }
            IconButton { symbol: "info.circle"; text: "i" }
        }
        Note { text: "Gestures are switched off."; tone: "warning"; symbol: "exclamationmark.triangle"; action: "Open System Settings" }
        Note { text: "Removed rule for Files"; tone: "accent"; action: "Undo"; actionSymbol: "arrow.uturn.backward" }
        Note { text: "Everything is at its factory value."; tone: "good"; symbol: "checkmark.seal" }
        Card { EmptyState { symbol: "magnifyingglass"; title: "No matching gestures"; text: "Try another word."; action: "Show All Gestures" } }
        Card { FilterDisclosure { title: "Filters (3)"; activeCount: 3; resetText: "Reset Filters"
            SegmentedPicker { value: "a"; options: [ { value: "a", label: "All" }, { value: "b", label: "Middle click" } ] } } }
        Card {
            Flow {
                width: parent.width; padding: 12; spacing: 10
                Repeater {
                    model: ["gearshape","hand.tap","slider.horizontal.3","app.badge.checkmark","info.circle","info.circle.fill","computermouse","computermouse.fill","exclamationmark.triangle","exclamationmark.triangle.fill","pause.fill","pause.circle","hand.raised","hand.raised.fill","checkmark.circle","checkmark.circle.fill","exclamationmark.circle","xmark.circle.fill","rectangle.and.hand.point.up.left","cable.connector","chevron.right","chevron.down","line.3.horizontal.decrease.circle","line.3.horizontal.decrease.circle.fill","magnifyingglass","minus","plus","minus.circle","plus.circle","checkmark","checkmark.seal","cursorarrow","cursorarrow.click","arrow.counterclockwise","arrow.clockwise","arrow.uturn.backward","doc.on.doc","folder","envelope","square.and.arrow.down","globe","doc.text","power","menubar","lock","trash","questionmark.circle","minus.plus.magnifyingglass","rotate.right","arrow.left.arrow.right","scope","equal.circle","leaf","heart.text.square","xmark"]
                    Glyph { required property string modelData; symbol: modelData; size: 28; color: Theme.text }
                }
            }
        }
    }
}
