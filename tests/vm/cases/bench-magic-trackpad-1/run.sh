# With tap-to-click the desktop makes a middle click of three fingers, and nothing of four.
watch --tap
plug pad magic-trackpad-1
play pad pad-three-finger-tap
await watch 'BTN_MIDDLE release'
tell pad 'wait 600'
play pad pad-four-finger-tap
tell pad 'wait 600'
play pad pad-one-finger-move
await watch '^motion'
