# With nobody at the mouse the program does nothing: no timer, no growth.
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-tap
sleep 5
before=$(wakeups "$(pid velotap)")
spent=$(nanoseconds "$(pid velotap)")
sleep 10
figure wakeups-in-10-s $(($(wakeups "$(pid velotap)") - before))
figure instructions-in-10-s $(($(nanoseconds "$(pid velotap)") - spent))
figure rss-kb "$(memory "$(pid velotap)" VmRSS)"
figure anonymous-kb "$(memory "$(pid velotap)" RssAnon)"
