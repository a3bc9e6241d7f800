# A tap with four fingers on a trackpad, where it has been switched on: the desktop makes nothing of
# it, so the click is the program's alone.
watch
configure '{"padTap4": true}'
plug pad magic-trackpad-2
launch
play pad pad-four-finger-tap
await watch 'BTN_MIDDLE release'
tell pad 'wait 600'
finish pad
