# A mouse without touches: what is played arrives in libinput, whole and in order.
watch
plug mouse plain-mouse
tell mouse 'repeat 1 0 0' 'motion 5 -3' 'frame' 'motion -2 1' 'frame' 'button 1' 'frame 60' \
  'button 0' 'frame 60' 'button 2' 'frame 60' 'button 0' 'frame 60' 'button 4' 'frame 60' \
  'button 0' 'frame 60' 'wheel 1' 'frame' 'wheel -2' 'frame'
finish mouse
await watch 'vertical=.*v120=240'
unplug mouse
await watch '^removed \S+ bench/mouse'
