# A tap with three fingers on a Magic Mouse is one middle click, seen by the desktop on the program's
# own pointer.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
tell mouse 'wait 600'
finish mouse
