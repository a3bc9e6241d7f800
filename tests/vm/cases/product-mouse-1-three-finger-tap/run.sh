# The first Magic Mouse speaks another report; the tap is the same.
watch
plug mouse magic-mouse-1
launch
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
