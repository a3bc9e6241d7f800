# Changes far larger than fingers make are spread over frames; the desktop believes all of it, and
# with tap-to-click on takes none of it for a tap.
. /t/cases/gestures.sh
watch --messages --tap
gestures 'magnify 3 5 8 ended' 'wait 100' 'magnify 0.3 5 8 ended' 'wait 100' 'rotate 170 6 8 ended' \
  'wait 100' 'magnify 2 300 1 ended' 'wait 100' 'magnify 1.02 1 1 cancelled' 'wait 300' \
  'magnify 1.02 1 1 ended'
