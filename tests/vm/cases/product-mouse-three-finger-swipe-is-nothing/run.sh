# Three fingers that move are not a tap. The tap that follows shows that the program was listening.
watch
plug mouse magic-mouse-2
launch
play mouse mouse-three-finger-swipe
tell mouse 'wait 600' 'say quiet'
finish mouse
play mouse mouse-three-finger-tap
await watch 'BTN_MIDDLE release'
