# Unplugged while the program, stopped for a moment, has yet to read the release.
. /t/cases/clicks.sh
mirrored mouse
hold mouse
kill -STOP "$(pid velotap)"
tell mouse 'motion 5 5' 'frame' 'button 0' 'frame'
finish mouse
unplug mouse
kill -CONT "$(pid velotap)"
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
nothing_held
