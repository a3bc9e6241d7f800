# The same tap with factory settings is nothing.
watch
plug pad magic-trackpad-2
launch
play pad pad-four-finger-tap
tell pad 'wait 600'
finish pad
alive velotap
