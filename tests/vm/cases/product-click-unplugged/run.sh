# Unplugged with a converted click held; a mouse that comes back is taken over again.
. /t/cases/clicks.sh
mirrored mouse
hold mouse
unplug mouse
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
plug again magic-mouse-2
taken 2
click again velotap/clone
nothing_held
