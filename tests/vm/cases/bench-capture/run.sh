# What is recorded is what the kernel's driver says: contacts in slots that need not be the first
# ones, in units of the driver, and nothing left down at the end.
plug mouse magic-mouse-2
start capture evdev_capture "$(node mouse)" /tmp/case/log/evemu
await capture '^recording$'
start floor evdev_floor "$(node mouse)"
await floor '^reading$'
play mouse mouse-three-finger-tap
unplug mouse
await floor '^frames'
stop capture
