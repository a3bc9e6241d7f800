# Two quick taps are two clicks, with room between them for the desktop to tell them apart.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-double-tap
await watch 'BTN_MIDDLE release'
tell mouse 'wait 600'
finish mouse
