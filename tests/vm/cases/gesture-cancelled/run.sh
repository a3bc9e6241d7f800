# A cancelled gesture is cancelled for the desktop too, and so is one whose end never comes. The next
# one waits its turn and is whole.
. /t/cases/gestures.sh
watch --messages
gestures 'magnify 1.3 20 8 cancelled' 'magnify 1.5 40 8 ended' 'wait 100' \
  'rotate 20 20 8 cancelled' 'wait 300' 'magnify 1.1 10 8 forgotten' 'wait 1500' 'rotate -20 20 8 ended'
