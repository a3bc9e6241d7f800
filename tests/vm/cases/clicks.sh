# shellcheck shell=sh disable=SC2154
# Words of the cases in which a click is held while something goes wrong.

# mirrored DEVICE: watches, plugs a Magic Mouse, starts the product and waits until it has taken the
# mouse over. A mouse is taken over a moment after its mirror image has appeared, while nothing is
# down on it; the program says so.
mirrored() {
  watch
  plug "$1" magic-mouse-2
  launch
  taken 1
}

# taken COUNT: until the product has said so often that it took a device over.
taken() { await velotap "taken over" 20 "$1"; }

# hold DEVICE: three fingers press the mouse and stay.
hold() {
  tell "$1" 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' 'repeat 3 0 0' \
    'button 1' 'frame 60'
  await watch '^button \S+ velotap/pointer .* BTN_MIDDLE press'
}

# let_go DEVICE: and leave it.
let_go() { tell "$1" 'button 0' 'frame' 'lift 1' 'lift 2' 'lift 8' 'frame 100'; }

# nothing_held: how many buttons a desktop believes to be down, once the program has ended.
nothing_held() {
  stop velotap
  figure left-down $(($(grep -c '^button .* press ' "$log/watch") - $(grep -c '^button .* release ' "$log/watch")))
  figure devices-left "$(grep -l '^velotap/' /sys/class/input/input*/phys | wc -l)"
  figure guards-left "$(cat /proc/[0-9]*/comm 2> /dev/null | grep -c '^velotap-guard$')"
}

# click DEVICE NODE: an ordinary click with one finger arrives, by the device with that path.
click() {
  tell "$1" 'touch 3 -640 -300' 'frame 50' 'button 1' 'frame 90' 'button 0' 'frame 90' 'lift 3' 'frame 50'
  await watch "^button \\S+ $2 .* BTN_LEFT release"
}
