# The kernel's driver makes a middle button of the zone between the buttons; with one finger it is
# the left button unless the user asked for more, and then it is a converted click.
. /t/cases/clicks.sh
configure '{"mouseClick1Center": false, "mouseClick3": true}'
mirrored mouse
centre() {
  tell mouse 'touch 1 80 -300 major=96 minor=76 size=33' 'frame 60' 'button 1' 'frame 90' 'button 0' \
    'frame 90' 'lift 1' 'frame 60'
}
centre
await watch '^button \S+ velotap/clone .* BTN_LEFT release'
configure '{"mouseClick1Center": true, "mouseClick3": true}'
tell mouse 'wait 500'
finish mouse
centre
await watch '^button \S+ velotap/pointer .* BTN_MIDDLE release'
nothing_held
