# The guard of a grabbed mouse is killed while a converted click is held: the program says so, once,
# lets go of everything at once and takes the mouse anew, with a new guard.
. /t/cases/clicks.sh
guards() { grep -lx velotap-guard /proc/[0-9]*/comm 2> /dev/null | cut -d/ -f3; }
mirrored mouse
hold mouse
first=$(guards)
kill -9 "$first"
await velotap 'the guard of .* has ended'
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
let_go mouse
taken 2
figure guards "$(guards | wc -l)"
figure same-guard "$(guards | grep -cx "$first")"
click mouse velotap/clone
nothing_held
