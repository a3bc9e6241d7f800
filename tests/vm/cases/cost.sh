# shellcheck shell=sh disable=SC2154
# Words of the cases that count instructions a frame, user and kernel together. Every program is
# shown the same frames: three fingers that move a little, then what costs least.
frames=/t/touches/frames-400.touch
motion=/t/touches/motion-400.touch

# measure_mouse NAME: three fingers, then one finger at rest while the mouse moves the pointer.
measure_mouse() {
  play mouse mouse-three-finger-rest
  cost "$1-three-fingers" 400 mouse "$(pid "$1")" "$frames"
  tell mouse 'lift 8' 'lift 2' 'frame' 'frame'
  finish mouse
  cost "$1-pointer" 400 mouse "$(pid "$1")" "$motion"
  tell mouse 'lift 1' 'frame' 'frame'
  finish mouse
}

# measure_pad NAME: three fingers, then one finger that moves.
measure_pad() {
  play pad pad-three-finger-rest
  cost "$1-three-fingers" 400 pad "$(pid "$1")" "$frames"
  tell pad 'lift 3' 'lift 9' 'frame' 'frame'
  finish pad
  cost "$1-one-finger" 400 pad "$(pid "$1")" "$frames"
  tell pad 'lift 5' 'frame' 'frame'
  finish pad
}

# floor NODE MEASURE: what the least program costs.
floor() {
  start floor evdev_floor "$1"
  await floor '^reading$'
  "$2" floor
  stop floor
}

# percent FIGURE PART WHOLE: of two figures of this case, as a figure of its own.
percent() {
  figure "$1" "$(awk -v part="figure $2" -v whole="figure $3" '
    index($0, part " ") == 1 { p = $3 }
    index($0, whole " ") == 1 { w = $3 }
    END { printf "%.0f", 100 * p / w }' "$log/case")"
}
