# A button that is down when the program starts stays the desktop's until it is released; only then
# the mouse is taken over.
. /t/cases/clicks.sh
watch
plug mouse magic-mouse-2
tell mouse 'touch 3 -640 -300' 'frame 50' 'button 1' 'frame 60'
await watch 'BTN_LEFT press'
launch
await watch '^added \S+ velotap/clone'
tell mouse 'wait 1500' 'motion 5 5' 'frame'
finish mouse
figure taken-while-down "$(grep -c 'taken over' "$log/velotap")"
tell mouse 'button 0' 'frame 60' 'lift 3' 'frame 60'
await watch '^button \S+ bench/mouse .* BTN_LEFT release'
taken 1
click mouse velotap/clone
nothing_held
