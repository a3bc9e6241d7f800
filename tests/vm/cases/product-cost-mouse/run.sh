# What following a Magic Mouse costs the program, beside the least program in the same machine.
. /t/cases/cost.sh
plug mouse magic-mouse-2
floor "$(node mouse)" measure_mouse
# Where nothing but taps is asked for the mouse stays the desktop's, and costs next to nothing.
configure '{"mouseClick3": false, "mousePinchZoom": false}'
launch
measure_mouse velotap
percent three-fingers-percent-of-floor velotap-three-fingers floor-three-fingers
# Taken over, every move passes through the program.
configure '{"mouseClick3": true, "mousePinchZoom": false}'
await velotap 'taken over' 20
cp pid/velotap pid/mirrored
measure_mouse mirrored
