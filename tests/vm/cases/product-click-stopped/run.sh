# Stopped with a converted click held: once the mouse has something to say that nobody hears, the
# button is released and the mouse is the desktop's; resumed, the program takes it over again.
. /t/cases/clicks.sh
mirrored mouse
hold mouse
kill -STOP "$(pid velotap)"
let_go mouse
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
click mouse bench/mouse
kill -CONT "$(pid velotap)"
taken 2
click mouse velotap/clone
nothing_held
