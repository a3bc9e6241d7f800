# A second instance finds the mouse held: it says so, once, makes nothing of it, and the first goes
# on working.
. /t/cases/clicks.sh
mirrored mouse
mkdir second
start second env HOME=/tmp/case/second XDG_CONFIG_HOME=/tmp/case/second XDG_RUNTIME_DIR=/tmp/case/second \
  XDG_STATE_HOME=/tmp/case/second VELOTAP_DEBUG=1 velotap
await second 'another program holds Magic Mouse 2 .*EBUSY' 20
hold mouse
let_go mouse
await watch '^button \S+ velotap/pointer .* BTN_MIDDLE release'
click mouse velotap/clone
stop second
nothing_held
