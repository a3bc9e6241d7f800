# Two fingers that part on the mouse zoom: the desktop sees a pinch of the program's touchpad, which
# begins, grows and ends.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-pinch-out
tell mouse 'wait 1000'
finish mouse
