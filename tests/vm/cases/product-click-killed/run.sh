# Dies by kill -9 with a converted click held: the kernel releases the button, the grab and the
# mirror are gone, and the mouse is an ordinary mouse again.
. /t/cases/clicks.sh
mirrored mouse
hold mouse
kill -9 "$(pid velotap)"
await watch '^removed \S+ velotap/clone'
await watch 'BTN_MIDDLE release'
let_go mouse
click mouse bench/mouse
nothing_held
