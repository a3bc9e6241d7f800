# A mouse whose battery runs out under three fingers, with its button held: nothing stays down, the
# program lives, and the mouse works again when it comes back.
watch
plug mouse magic-mouse-2
launch
tell mouse 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' 'repeat 3 0 0' \
  'button 1' 'frame 60'
finish mouse
unplug mouse
await watch '^removed \S+ bench/mouse' 15
alive velotap
presses() { grep -c "^button .* $1 " "$log/watch"; }
plug again magic-mouse-2
await velotap 'registered on 1 device' 20 2
play again mouse-three-finger-tap
tell again 'wait 600'
finish again
alive velotap
figure left-down $(($(presses press) - $(presses release)))
