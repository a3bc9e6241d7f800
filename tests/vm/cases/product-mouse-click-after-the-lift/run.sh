# The click follows the lift of the last finger at once: nothing waits for a second tap. The script
# says "lifted" just before the report that lifts it.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
tell mouse 'wait 500' 'touch 1 -640 -180' 'touch 2 -20 -360' 'touch 8 590 -230' 'frame' \
  'repeat 8 0 0' 'lift 1' 'lift 2' 'lift 8' 'say lifted' 'frame 300'
finish mouse
await watch 'BTN_MIDDLE release' 5 2
first=$(sed -n 's/.*BTN_MIDDLE press.* at=//p' "$log/watch" | tail -n 1)
last=$(sed -n 's/.*BTN_MIDDLE release.* at=//p' "$log/watch" | tail -n 1)
lifted=$(sed -n 's/ say lifted$//p' "$log/mouse")
figure press-after-lift-ms "$(awk "BEGIN { print 1000 * ($first - $lifted) }")"
figure click-after-lift-ms "$(awk "BEGIN { print 1000 * ($last - $lifted) }")"
