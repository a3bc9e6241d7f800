# The same tap with factory settings is nothing. The stroke that follows shows that frames arrive.
watch
plug pad magic-trackpad-2
launch
play pad pad-four-finger-tap
tell pad 'wait 600'
play pad pad-one-finger-move
await watch '^motion'
alive velotap
