# What following a Magic Trackpad costs the least program, and libinput's own tool.
. /t/cases/cost.sh
plug pad magic-trackpad-2
floor "$(node pad)" measure_pad
start libinput libinput-debug-events --quiet
opened libinput "$(node pad)"
measure_pad libinput
