# To libinput a trackpad that has been taken over is the trackpad: of one and the same stream it makes
# the same taps, scrolling, swipes, movements, clicks and rejected palms. Two players begin with the
# same noise, so both hands tremble alike.
export XDG_CURRENT_DESKTOP=KDE XDG_SESSION_TYPE=wayland
mkdir -p config
printf '[Libinput][76][613][Magic Trackpad 2]\nClickMethod=1\nTapToClick=true\n' > config/kcminputrc
hand() { # hand DEVICE: with a rest after each, so that no tap becomes part of the next gesture
  for touches in pad-one-finger-move pad-one-finger-tap pad-two-finger-tap pad-two-finger-scroll \
    pad-three-finger-swipe pad-palm-and-thumb pad-palm-and-two-fingers; do
    play "$1" "$touches"
    tell "$1" 'wait 500'
    finish "$1"
  done
  tell "$1" 'touch 5 -1010 260' 'frame 40' 'button 1' 'frame 60' 'button 0' 'frame 60' 'lift 5' \
    'frame 500'
  finish "$1"
}
# story PATH: what happened, in order; how far and how often is summed up apart.
story() {
  awk -v device="$1" '$3 == device && ($1 == "button" || $1 == "gesture" || $1 == "scroll" || $1 == "motion") {
    what = $1; rest = $0; sub(/^[^"]*"[^"]*" ?/, "", rest); sub(/ ?time=.*/, "", rest)
    gsub(/(dx|dy|raw|vertical|horizontal|scale|angle)=[^ ]*/, "", rest); gsub(/ +/, " ", rest)
    print what, rest }' "$log/watch" | uniq
}
sum() { # sum PATH KIND FIELD: in hundredths
  awk -v device="$1" -v kind="$2" -v field="$3=" '$3 == device && $1 == kind {
    for (i = 4; i <= NF; i++) if (index($i, field) == 1) { v = substr($i, length(field) + 1); sub(/,.*/, "", v); s += v } }
    END { printf "%.0f", 100 * s }' "$log/watch"
}
watch --tap --click-method=areas
plug pad magic-trackpad-2
hand pad
unplug pad
launch 0
plug again magic-trackpad-2
await velotap 'taken over' 20
hand again
story bench/pad > direct
story velotap/clone > mirror
cat direct
diff direct mirror || true
figure story-lines "$(wc -l < direct)"
figure story-differences "$(diff direct mirror | grep -c '^[<>]')"
for what in 'motion raw' 'scroll vertical' 'gesture dx'; do
  # shellcheck disable=SC2086
  set -- $what "$(sum bench/pad $what)" "$(sum velotap/clone $what)"
  figure "$1-direct" "$3"
  figure "$1-off-by-permille" "$((($4 - $3) * 1000 / $3))"
done
figure beside-the-mirror "$(awk '$3 == "bench/again" && $1 != "added"' "$log/watch" | wc -l)"
