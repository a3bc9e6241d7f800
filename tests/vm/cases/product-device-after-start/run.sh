# A mouse that is switched on after the program works like one that was there before.
watch
start velotap env HOME=/tmp/case XDG_CONFIG_HOME=/tmp/case/config XDG_RUNTIME_DIR=/tmp/case \
  VELOTAP_DEBUG=1 velotap
await velotap '^\[Velotap\] ' 20
plug mouse magic-mouse-2
listening 1
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
plug second magic-mouse-2
listening 2
play second mouse-three-finger-tap
tell second 'wait 600'
finish second
