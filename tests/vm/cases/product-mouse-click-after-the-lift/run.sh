# The click follows the lift of the last finger at once: nothing waits for a second tap. From the
# sending of the report that lifts the finger to the kernel's time of the press and of the release.
watch
plug mouse magic-mouse-2
launch
# Once unseen: a first click brings code into memory that stays there.
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
tell mouse 'wait 500' 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' \
  'repeat 8 0 0' 'lift 1' 'frame' 'lift 2' 'frame' 'lift 8' 'mark lift' 'frame 300'
finish mouse
await watch 'BTN_MIDDLE release' 5 2
lift=$(sed -n 's/ mark lift$//p' "$log/mouse")
press=$(sed -n 's/.*BTN_MIDDLE press time=\([0-9.]*\) .*/\1/p' "$log/watch" | tail -n 1)
release=$(sed -n 's/.*BTN_MIDDLE release time=\([0-9.]*\) .*/\1/p' "$log/watch" | tail -n 1)
figure lift-to-press-us "$(awk "BEGIN { printf \"%.0f\", 1e6 * ($press - $lift) }")"
figure lift-to-release-ms "$(awk "BEGIN { printf \"%.3f\", 1e3 * ($release - $lift) }")"
