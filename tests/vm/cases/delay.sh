# shellcheck shell=sh disable=SC2154
# Words of the cases that measure how late a click is.

# delays FIGURE PLAYER WATCHER: from the report that presses the button to the event in a desktop's
# hands, over the clicks that both logs have: the median and the longest, in milliseconds.
delays() {
  sed -n 's/ mark click$//p' "$log/$2" > said
  sed -n 's/^button .* press .* at=//p' "$log/$3" > seen
  [ "$(wc -l < said)" -eq "$(wc -l < seen)" ] || { echo "clicks were lost"; exit 1; }
  paste said seen | awk '{ printf "%.3f\n", 1000 * ($2 - $1) }' | sort -n > delays
  figure "$1-median-ms" "$(awk '{ d[NR] = $1 } END { print d[int((NR + 1) / 2)] }' delays)"
  figure "$1-longest-ms" "$(tail -n 1 delays)"
}
