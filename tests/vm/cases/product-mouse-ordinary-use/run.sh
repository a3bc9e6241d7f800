# Moving, clicking and scrolling with one finger is what it was without the program, whichever device
# it comes from now.
watch
plug mouse magic-mouse-2
launch
await watch '^added \S+ velotap/clone'
tell mouse 'wait 1500' 'say begin'
play mouse mouse-move-and-scroll
tell mouse 'touch 1 -300 -300' 'frame' 'button 1' 'frame 90' 'button 0' 'frame 90' 'lift 1' \
  'frame' 'touch 1 600 -300' 'frame 90' 'button 2' 'frame 90' 'button 0' 'frame 90' 'lift 1' 'frame' \
  'frame 300'
finish mouse
await watch 'BTN_RIGHT release'
