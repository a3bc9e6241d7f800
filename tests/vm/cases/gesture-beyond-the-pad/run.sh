# A pinch that runs out of touchpad is lifted, landed anew and goes on: the scales multiply.
. /t/cases/gestures.sh
watch --messages
gestures 'magnify 20 120 8 ended' 'wait 300' 'magnify 0.05 120 8 ended'
