# What a mirror says of itself is what its device says: name, ids, properties, and the codes of every
# type of event, axes with their ranges. The mirror of a mouse lacks what a desktop has no use for in a
# mouse: contacts, and the numbers of the scanned buttons.
export XDG_CURRENT_DESKTOP=KDE XDG_SESSION_TYPE=wayland
mkdir -p config
printf '[Libinput][76][613][Magic Trackpad 2]\nClickMethod=1\n' > config/kcminputrc
watch
plug mouse magic-mouse-2
plug pad magic-trackpad-2
launch 2
await velotap 'taken over' 20 2
udevadm settle -t 10
describe() { # describe NODE FILE
  start "capture-$2" evdev_capture "$1" "/tmp/case/$2.evemu"
  await "capture-$2" '^recording$'
  stop "capture-$2"
  grep '^[NIPBA]:' "/tmp/case/$2.evemu" > "$2.said"
  cat "$2.said"
}
mirror_of() { # mirror_of NODE: the node of the other device with the same name
  local name input
  name=$(cat "/sys/class/input/$(basename "$1")/device/name")
  for input in /sys/class/input/input*; do
    if [ "$(cat "$input/name")" = "$name" ] && grep -q '^velotap/clone' "$input/phys"; then
      echo "/dev/input/$(basename "$(echo "$input"/event*)")"
    fi
  done
}
for device in mouse pad; do
  describe "$(node $device)" "$device"
  describe "$(mirror_of "$(node $device)")" "$device-mirror"
done
figure pad-lines "$(wc -l < pad.said)"
figure pad-differences "$(diff pad.said pad-mirror.said | grep -c '^[<>]')"
# Types 00 (which there are), 03 (contacts) and 04 (scan codes), and the ranges.
told() { grep -v '^B: 0[034]\|^A:' "$1.said"; }
told mouse > mouse.told
told mouse-mirror > mouse-mirror.told
figure mouse-lines "$(wc -l < mouse.told)"
figure mouse-differences "$(diff mouse.told mouse-mirror.told | grep -c '^[<>]')"
figure mouse-mirror-ranges "$(grep -c '^A:' mouse-mirror.said)"
