# How much later the pointer moves when its events pass through the mirror, over 300 frames: from the
# sending of a report to its arrival in a desktop's hands. And what a passed frame costs in calls of
# the system: reads and writes, and the one that waits.
pushes() { # pushes DEVICE
  { n=0; while [ $n -lt 300 ]; do n=$((n + 1)); echo 'motion 3 1'; echo 'mark m'; echo 'frame 11'; done; } > script
  cat script > "pipe/$1"
  finish "$1"
}
lateness() { # lateness FIGURE DEVICE: the moves that this watch has seen, against what was sent
  sed -n 's/ mark m$//p' "$log/$2" > said
  sed -n 's/^motion .* at=//p' "$log/watch" > seen
  [ "$(wc -l < said)" -eq "$(wc -l < seen)" ] || { echo "moves were lost"; exit 1; }
  paste said seen | awk '{ printf "%.3f\n", 1000 * ($2 - $1) }' | sort -n > delays
  figure "$1-median-ms" "$(awk '{ d[NR] = $1 } END { print d[int((NR + 1) / 2)] }' delays)"
  figure "$1-p99-ms" "$(awk '{ d[NR] = $1 } END { print d[int(NR * 0.99)] }' delays)"
}
calls() { awk '/^sysc[rw]/ { sum += $2 } END { print sum }' "/proc/$(pid velotap)/io"; }
watch
plug direct magic-mouse-2
pushes direct
await watch '^motion' 10 300
lateness direct direct
unplug direct
stop watch

watch
plug mouse magic-mouse-2
launch
await velotap 'taken over' 20
before=$(calls)
pushes mouse
await watch '^motion' 10 300
figure reads-and-writes-per-100-frames $((($(calls) - before) / 3))
lateness mirror mouse
figure added-p99-ms "$(awk '$2 == "direct-p99-ms" { d = $3 } $2 == "mirror-p99-ms" { p = $3 }
  END { printf "%.3f", p - d }' "$log/case")"
