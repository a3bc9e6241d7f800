# Shared by the gesture cases: posts gestures and measures what libinput makes of them.

# gestures STATEMENT...: posts them, waits until the last one is over, and prints for each pinch that
# libinput saw the figures scale-N, angle-N (degrees in all, clockwise) and cancelled-N, and the
# figure gestures: how many there were.
gestures() {
  start poster gesture_poster appear "$@" 'wait 500'
  await poster '^done$' 40
  awk -v device=velotap/gesture '
    $1 != "gesture" || $3 != device { next }
    / pinch-begin / { n++; angle[n] = 0 }
    / pinch-update / { match($0, / angle=[-0-9.]+/); angle[n] += substr($0, RSTART + 7, RLENGTH - 7) }
    / pinch-end / {
      match($0, / scale=[0-9.]+/); scale[n] = substr($0, RSTART + 7, RLENGTH - 7)
      match($0, / cancelled=[01]/); cancelled[n] = substr($0, RSTART + 11, 1)
    }
    END {
      print "figure gestures " n + 0
      for (i = 1; i <= n; i++) {
        print "figure scale-" i " " scale[i]
        print "figure angle-" i " " angle[i]
        print "figure cancelled-" i " " cancelled[i]
      }
    }' "$log/watch"
}
