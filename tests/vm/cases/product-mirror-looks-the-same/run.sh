# To libinput the mirror of a mouse is the mouse: same name, capabilities and options.
watch
plug mouse magic-mouse-2
options() {
  libinput list-devices | awk -v node="/dev/input/$(basename "$1")" '
    BEGIN { RS = ""; FS = "\n" } $0 ~ node "(\n|$)" { print }' | grep -v '^Kernel:\|^Group:\|^Size:'
}
options "$(node mouse)" > direct
launch
await velotap 'taken over' 20
clone=$(sed -n 's/^added \(event[0-9]*\) velotap\/clone .*/\1/p' "$log/watch")
options "/dev/input/$clone" > mirror
cat direct
diff direct mirror || true
figure options "$(wc -l < direct)"
figure differences "$(diff direct mirror | grep -c '^[<>]')"
