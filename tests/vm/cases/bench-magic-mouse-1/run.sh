# The desktop alone takes a Magic Mouse for a pointer without gestures. Its driver meanwhile turns
# the same touches into wheel steps.
watch
plug mouse magic-mouse-1
tell mouse 'motion 7 -4' 'frame' 'motion 1 1' 'frame' 'button 1' 'frame 60' 'button 0' 'frame 60' \
  'button 2' 'frame 60' 'button 0' 'frame 60'
finish mouse
await watch 'BTN_RIGHT release'
tell mouse 'say tap'
play mouse mouse-three-finger-tap
tell mouse 'say scroll'
play mouse mouse-one-finger-scroll
await watch '^scroll '
