# A program of another kind holds the mouse: that is named, once, and no mirror appears. When that
# program lets go, the mouse is taken over without anybody's doing.
. /t/cases/clicks.sh
watch
plug mouse magic-mouse-2
start foreign evdev_capture --grab "$(node mouse)" /tmp/case/taken
await foreign '^recording$'
launch
await velotap 'another program holds Magic Mouse 2 .*EBUSY'
tell mouse 'wait 5000'
finish mouse
figure mirrors-while-held "$(grep -c 'added .* velotap/clone' "$log/watch")"
stop foreign
taken 1
click mouse velotap/clone
nothing_held
