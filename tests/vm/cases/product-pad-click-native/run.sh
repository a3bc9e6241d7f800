# The desktop makes a middle click of three fingers that press the trackpad: the pad stays its own,
# and the program, which sees the click, does not take the short touch for a tap besides.
watch
plug pad magic-trackpad-2
launch
tell pad 'touch 5 -1010 260' 'touch 9 -120 -80' 'touch 3 800 90' 'frame' 'repeat 3 0 0' 'button 1' \
  'frame 40' 'button 0' 'frame 20' 'lift 5' 'lift 9' 'lift 3' 'frame 100' 'wait 700'
finish pad
await watch 'BTN_MIDDLE release'
