# How much later a click is that passes through the program.
. /t/cases/delay.sh
watch
plug direct magic-mouse-2
play direct clicks-50
await watch 'BTN_LEFT release' 10 50
delays direct direct watch
unplug direct
stop watch

watch
plug mouse magic-mouse-2
launch
await watch '^added \S+ velotap/clone'
tell mouse 'wait 1500'
play mouse clicks-50
await watch 'BTN_LEFT release' 10 50
delays passed mouse watch
figure added-longest-ms "$(awk '$2 == "direct-longest-ms" { d = $3 } $2 == "passed-longest-ms" { p = $3 }
  END { printf "%.3f", p - d }' "$log/case")"
