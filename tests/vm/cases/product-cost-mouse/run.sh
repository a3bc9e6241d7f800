# What following a Magic Mouse costs the program, beside the least program in the same machine.
. /t/cases/cost.sh
plug mouse magic-mouse-2
floor "$(node mouse)" measure_mouse
launch
measure_mouse velotap
percent three-fingers-percent-of-floor velotap-three-fingers floor-three-fingers
