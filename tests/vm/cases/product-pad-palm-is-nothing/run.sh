# A resting hand is no tap, however short its three contacts are together.
watch
configure '{"padTap3": true, "padTap4": true}'
plug pad magic-trackpad-2
launch
play pad pad-palm-and-thumb
tell pad 'wait 600'
play pad pad-palm-and-two-fingers
tell pad 'wait 600' 'say quiet'
finish pad
play pad pad-four-finger-tap
await watch 'BTN_MIDDLE release'
