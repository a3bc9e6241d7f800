# Runs one case: the words that cases are written in, then the case. Every word that waits, waits
# for an event with a time limit; none sleeps and hopes.
set -eu
echo $$ > session
log=/tmp/case/log

# start NAME COMMAND...: in the background, its output into the log NAME.
start() {
  local name=$1
  shift
  "$@" > "$log/$name" 2>&1 &
  echo $! > "pid/$name"
}

pid() { cat "pid/$1"; }
alive() { kill -0 "$(pid "$1")" 2> /dev/null; }

# stop NAME: asks the program to end and waits until it has.
stop() {
  kill "$(pid "$1")" 2> /dev/null || true
  wait "$(pid "$1")" 2> /dev/null || true
}

# await NAME REGEX [SECONDS [COUNT]]: until the log NAME has such a line, or that many.
await() { await_line "$log/$1" "$2" "${3-10}" "${4-1}" > /dev/null; }

# watch [OPTION...]: libinput as a desktop runs it.
watch() {
  start watch libinput_watch "$@"
  await watch '^watching$'
}

# plug NAME KIND [OPTION...]: an emulated device, until the driver, udev and (when it is watching)
# libinput know it. Its physical path is bench/NAME, its node in node/NAME. Give a device that is
# plugged in again a new name.
plug() {
  local name=$1 kind=$2
  shift 2
  mkfifo "pipe/$name"
  # Held open, so that the player does not take the end of one script for the end of all.
  sleep 100000 > "pipe/$name" &
  hid_player "$kind" "--phys=bench/$name" "$@" < "pipe/$name" > "$log/$name" 2>&1 &
  echo $! > "pid/$name"
  tell "$name" ready
  await "$name" ' ready /dev/input/event' 20
  udevadm settle -t 10
  if [ -e pid/watch ]; then await watch "^added $(basename "$(node "$name")") bench/$name "; fi
}

# node NAME: the event node of a plugged device.
node() { sed -n 's/.* ready //p' "$log/$1" | head -n 1; }

# tell NAME STATEMENT...: one statement each, carried out one after another; does not wait.
tell() {
  local name=$1
  shift
  printf '%s\n' "$@" > "pipe/$name"
}

# finish NAME: until the device has done everything that it was told.
finish() {
  finished=$((${finished-0} + 1))
  tell "$1" "say finished $finished"
  await "$1" " say finished $finished\$" 30
}

# play NAME TOUCHES...: plays files of the touches folder to their end. A lead-in gives this shell
# time to settle into waiting: on a slow machine its own work would spoil the timing.
play() {
  local name=$1 touches
  shift
  for touches; do
    finished=$((${finished-0} + 1))
    { echo 'wait 150'; cat "/t/touches/$touches.touch"; echo "say finished $finished"; } \
      > "pipe/$name"
    await "$name" " say finished $finished\$" 30
  done
}

# unplug NAME: as if the battery had run out.
unplug() { stop "$1"; }

# holds NAME NODE: whether the program has that event node open now.
holds() {
  local descriptor
  for descriptor in "/proc/$(pid "$1")/fd"/*; do
    [ "$(readlink "$descriptor")" != "$2" ] || return 0
  done
  return 1
}

# opened NAME NODE: until the program has that event node open.
opened() {
  local tries=0
  until holds "$1" "$2"; do
    tries=$((tries + 1))
    [ "$tries" -lt 200 ] || { echo "$1 does not open $2"; exit 1; }
    sleep 0.05
  done
}

# figure NAME VALUE: a measurement for the judge, and for whoever reads.
figure() { echo "figure $1 $2"; }

# configure JSON: the settings that the program finds.
configure() {
  mkdir -p /tmp/case/config/velotap
  printf '%s\n' "$1" > /tmp/case/config/velotap/app.norwend.velotap.json
}

# launch [COUNT]: the product, until its listeners are on COUNT devices (default 1).
launch() {
  start velotap env HOME=/tmp/case XDG_CONFIG_HOME=/tmp/case/config XDG_RUNTIME_DIR=/tmp/case \
    XDG_STATE_HOME=/tmp/case/state VELOTAP_DEBUG=1 velotap
  listening "${1-1}"
}

# listening COUNT: until the product has said that it listens to COUNT devices.
listening() { await velotap "^\[Velotap\] registered on $1 device" 20; }

# nanoseconds PROCESS: time on the processor so far, all threads. In a counting machine this is the
# number of instructions.
nanoseconds() { cat "/proc/$1/task/"*/schedstat | awk '{ sum += $1 } END { printf "%.0f\n", sum }'; }

# wakeups PROCESS: how often its threads went to sleep of their own accord so far.
wakeups() {
  cat "/proc/$1/task/"*/status | awk '/^voluntary_ctxt_switches/ { sum += $2 } END { print sum + 0 }'
}

# cost FIGURE FRAMES NAME PROCESS SCRIPT: what the process spends on each of so many frames, which
# the script makes the device NAME send. Once before unseen, so that nothing is done for the first
# time while it counts.
cost() {
  local before after
  cat "$5" > "pipe/$3"
  finish "$3"
  before=$(nanoseconds "$4")
  cat "$5" > "pipe/$3"
  finish "$3"
  after=$(nanoseconds "$4")
  figure "$1" $(((after - before) / $2))
}

# memory PROCESS FIELD: VmRSS or RssAnon, in kB.
memory() { awk -v field="$2:" '$1 == field { print $2 }' "/proc/$1/status"; }

# shellcheck source=/dev/null
. "/t/cases/$1/run.sh"
