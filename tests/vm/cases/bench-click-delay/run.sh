# How late a click is that nothing but the kernel and libinput handle.
. /t/cases/delay.sh
watch
plug mouse magic-mouse-2
play mouse clicks-50
await watch 'BTN_LEFT release' 10 50
delays direct mouse watch
