# The program dies by kill -9 while a click is held: the kernel lets go of the button, and the mouse
# is an ordinary mouse again.
watch
plug mouse magic-mouse-2
launch
tell mouse 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' 'repeat 3 0 0' \
  'button 1' 'frame 60'
finish mouse
await watch '^button .* press'
kill -9 "$(pid velotap)"
await watch '^removed \S+ velotap/'
tell mouse 'button 0' 'lift 1' 'lift 2' 'lift 8' 'frame 100' 'motion 5 5' 'frame 100' \
  'button 2' 'frame 60' 'button 0' 'frame 60'
finish mouse
await watch '^button \S+ bench/mouse .* BTN_RIGHT release'
presses() { grep -c "^button .* $1 " "$log/watch"; }
figure left-down $(($(presses press) - $(presses release)))
