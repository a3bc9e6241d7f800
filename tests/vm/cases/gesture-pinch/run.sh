# What is asked in relative steps arrives as the desktop's scale.
. /t/cases/gestures.sh
watch --messages
gestures 'magnify 1.5 50 8 ended' 'wait 100' 'magnify 0.5 50 8 ended' 'wait 100' \
  'magnify 5 80 8 ended' 'wait 100' 'magnify 0.2 80 11 ended' 'wait 100' 'magnify 1.05 1 8 ended'
