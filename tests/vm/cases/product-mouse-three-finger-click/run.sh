# Pressing the mouse with three fingers on it is a middle click and nothing else: no left click, and
# no second click when the fingers leave.
watch
plug mouse magic-mouse-2
launch
await watch '^added \S+ velotap/clone'
# A mouse is taken over only while nobody uses it, a moment after its mirror image has appeared.
tell mouse 'wait 1500'
play mouse mouse-three-finger-click
await watch 'BTN_MIDDLE release'
tell mouse 'wait 600'
finish mouse
