# The main thread does not run for five seconds: clicks pass unchanged, the pointer moves, and what
# was held goes up with the finger. Afterwards clicks are converted again.
. /t/cases/clicks.sh
mirrored mouse
hold mouse
start stuck stop_thread "$(pid velotap)" 5000
await stuck '^stopped$'
let_go mouse
await watch 'BTN_MIDDLE release' 3
tell mouse 'motion 7 3' 'frame'
click mouse velotap/clone
tell mouse 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' 'repeat 3 0 0' \
  'button 1' 'frame 400' 'button 0' 'frame' 'lift 1' 'lift 2' 'lift 8' 'frame 100'
await watch '^button \S+ velotap/clone .* BTN_LEFT release' 3 2
figure still-stuck "$(grep -c '^resumed$' "$log/stuck" | tr '01' '10')"
await stuck '^resumed$'
tell mouse 'wait 300'
finish mouse
tell mouse 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' 'repeat 3 0 0' \
  'button 1' 'frame 60' 'button 0' 'frame' 'lift 1' 'lift 2' 'lift 8' 'frame 100'
await watch '^button \S+ velotap/pointer .* BTN_MIDDLE release' 5 2
nothing_held
