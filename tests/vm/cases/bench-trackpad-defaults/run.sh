# As it comes: a tap with three fingers is nothing, pressing the pad with three fingers on it is a
# middle click already.
watch
plug pad magic-trackpad-2
play pad pad-three-finger-tap
tell pad 'wait 400' 'say tapped'
play pad pad-three-finger-click
await watch 'BTN_MIDDLE release'
