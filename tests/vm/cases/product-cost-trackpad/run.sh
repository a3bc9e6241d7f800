# What following a Magic Trackpad costs the program, beside the least program in the same machine.
. /t/cases/cost.sh
plug pad magic-trackpad-2
floor "$(node pad)" measure_pad
launch
measure_pad velotap
percent three-fingers-percent-of-floor velotap-three-fingers floor-three-fingers
