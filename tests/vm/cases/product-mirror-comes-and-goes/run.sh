# Plugged and unplugged again and again: nothing is left behind, and nothing grows.
watch
plug mouse magic-mouse-2
launch
await velotap 'taken over' 20
unplug mouse
await watch '^removed \S+ velotap/clone'
files() { find "/proc/$(pid velotap)/fd" -type l | wc -l; }
before=$(files)
round=0
while [ "$round" -lt 25 ]; do
  round=$((round + 1))
  plug "mouse$round" magic-mouse-2
  await velotap 'taken over' 20 $((round + 1))
  unplug "mouse$round"
  await watch '^removed \S+ velotap/clone' 20 $((round + 1))
done
figure files-grown $(($(files) - before))
figure clones-left "$(grep -l '^velotap/clone' /sys/class/input/input*/phys | wc -l)"
