# The other program goes on and on: after a while the mouse is no longer asked for, and the program
# rests. A change of the settings has it asked for again.
. /t/cases/clicks.sh
watch
configure '{"enabled": true}'
plug mouse magic-mouse-2
start foreign evdev_capture --grab "$(node mouse)" /tmp/case/taken
await foreign '^recording$'
launch
await velotap 'another program holds Magic Mouse 2 .*EBUSY'
before=$(wakeups "$(pid velotap)")
sleep 150
figure wakeups-while-asking $(($(wakeups "$(pid velotap)") - before))
before=$(wakeups "$(pid velotap)")
sleep 100
figure wakeups-afterwards $(($(wakeups "$(pid velotap)") - before))
stop foreign
configure '{"enabled": false}'
while holds velotap "$(node mouse)"; do sleep 0.05; done
configure '{"enabled": true}'
taken 1
click mouse velotap/clone
nothing_held
