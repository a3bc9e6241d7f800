# Where the desktop makes nothing of three fingers that press the trackpad, the program takes the pad
# over: three fingers are a middle click, and everything else is what it was.
export XDG_CURRENT_DESKTOP=KDE XDG_SESSION_TYPE=wayland
mkdir -p config
printf '[Libinput][76][613][Magic Trackpad 2]\nClickMethod=1\n' > config/kcminputrc
watch --click-method=areas
plug pad magic-trackpad-2
play pad pad-one-finger-move
tell pad 'wait 300'
finish pad
total() { awk -v device="$1" '$1 == "motion" && $3 == device { split($0, p, "raw="); split(p[2], d, /[, ]/); x += d[1]; y += d[2] }
  END { printf "%d %d", x, y }' "$log/watch"; }
direct=$(total bench/pad)
swipe() { # what libinput makes of three fingers that swipe, and of a palm and a thumb
  play pad pad-three-finger-swipe pad-palm-and-thumb
  tell pad 'wait 300'
  finish pad
}
swipes() { awk -v device="$1" '$1 == "gesture" && $3 == device && / swipe-/ { n++ } END { print n + 0 }' "$log/watch"; }
swipe
swipesDirect=$(swipes bench/pad)
launch
await velotap 'taken over' 20
play pad pad-one-finger-move
tell pad 'wait 300'
finish pad
mirror=$(total velotap/clone)
swipe
swipesMirror=$(swipes velotap/clone)
figure swipe-events "$swipesDirect"
figure swipe-events-differently $((swipesDirect - swipesMirror))
echo "direct $direct, mirror $mirror"
figure moved "${direct% *}"
figure moved-differently $((${direct% *} - ${mirror% *}))
tell pad 'touch 5 -1010 260' 'frame 40' 'button 1' 'frame 60' 'button 0' 'frame 60' 'lift 5' 'frame 200'
await watch '^button \S+ velotap/clone .* BTN_LEFT release'
play pad pad-three-finger-click
await watch '^button \S+ velotap/pointer .* BTN_MIDDLE release'
tell pad 'wait 600'
finish pad
stop velotap
await watch '^removed \S+ velotap/clone'
tell pad 'touch 5 -1010 260' 'frame 40' 'button 1' 'frame 60' 'button 0' 'frame 60' 'lift 5' 'frame 200'
await watch '^button \S+ bench/pad .* BTN_LEFT release'
