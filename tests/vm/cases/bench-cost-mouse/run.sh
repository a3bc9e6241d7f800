# What following a Magic Mouse costs the least program, and libinput's own tool.
. /t/cases/cost.sh
plug mouse magic-mouse-2
floor "$(node mouse)" measure_mouse
start libinput libinput-debug-events --quiet
opened libinput "$(node mouse)"
measure_mouse libinput
