# Where no login manager is, the console in front says whose the mouse is.
. /t/cases/clicks.sh
trap 'chvt 1' EXIT
chvt 1
export XDG_VTNR=1
mirrored mouse
hold mouse
chvt 2
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
let_go mouse
click mouse bench/mouse
chvt 1
taken 2
click mouse velotap/clone
nothing_held
