# Turns counter-clockwise are negative to the desktop; however far they go.
. /t/cases/gestures.sh
watch --messages
gestures 'rotate 90 60 8 ended' 'wait 100' 'rotate -30 30 8 ended' 'wait 100' 'rotate 540 200 8 ended'
