# The click follows the lift of the last finger at once: nothing waits for a second tap. Times are
# the kernel's: of the report that lifts the finger, of the press, and of the release.
watch
plug mouse magic-mouse-2
launch
# Once unseen: a first click brings code into memory that stays there.
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
tell mouse 'wait 500'
finish mouse
start capture evdev_capture "$(node mouse)" /tmp/case/evemu
await capture '^recording$'
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release' 5 2
stop capture
first=$(sed -n 's/^first //p' "$log/capture")
lift=$(sed -n 's/^E: \([0-9.]*\) .*SYN_REPORT.*/\1/p' evemu | tail -n 1)
press=$(sed -n 's/.*BTN_MIDDLE press time=\([0-9.]*\) .*/\1/p' "$log/watch" | tail -n 1)
release=$(sed -n 's/.*BTN_MIDDLE release time=\([0-9.]*\) .*/\1/p' "$log/watch" | tail -n 1)
figure lift-to-press-us "$(awk "BEGIN { printf \"%.0f\", 1e6 * ($press - $first - $lift) }")"
figure lift-to-release-ms "$(awk "BEGIN { printf \"%.3f\", 1e3 * ($release - $first - $lift) }")"
