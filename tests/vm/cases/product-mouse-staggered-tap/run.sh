# Fingers that land and leave one after another within a fifth of a second are still one tap.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-staggered
await watch 'BTN_MIDDLE release'
tell mouse 'wait 600'
finish mouse
