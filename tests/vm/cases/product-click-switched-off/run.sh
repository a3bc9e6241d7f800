# The master switch goes off while a converted click is held: the button goes up, and with the
# physical release the mouse goes back to the desktop. Switched on again it is taken again.
. /t/cases/clicks.sh
configure '{"enabled": true}'
mirrored mouse
hold mouse
configure '{"enabled": false}'
await velotap 'will be given back'
let_go mouse
await watch '^removed \S+ velotap/clone'
click mouse bench/mouse
configure '{"enabled": true}'
taken 2
click mouse velotap/clone
nothing_held
