# What the kernel's driver takes for scrolling while fingers swipe and pinch reaches nobody; before,
# without the program, it does.
watch
plug direct magic-mouse-2
play direct mouse-three-finger-swipe mouse-pinch-out
tell direct 'wait 300'
finish direct
unplug direct
await watch '^removed \S+ bench/direct'
figure scrolls-without "$(grep -c '^scroll' "$log/watch")"
plug mouse magic-mouse-2
launch
await velotap 'taken over' 20
before=$(grep -c '^scroll' "$log/watch")
play mouse mouse-three-finger-swipe mouse-pinch-out
tell mouse 'wait 300'
finish mouse
figure leaked-scrolls $(($(grep -c '^scroll' "$log/watch") - before))
play mouse mouse-one-finger-scroll
finish mouse
figure one-finger-scrolls $(($(grep -c '^scroll' "$log/watch") - before))
