# What the machine does once it is up: every case of /t/order in turn, each in a session of its own
# that is ended afterwards, its logs printed line by line with the program's name in front.
export PATH=/t/bin:$PATH LD_LIBRARY_PATH=/t/lib

# members ID: the processes of a session that still run. One that ends between being listed and being
# read is no longer one of them, and must not hide those that are listed after it.
members() {
  local stat line
  for stat in /proc/[0-9]*/stat; do
    { read -r line < "$stat"; } 2> /dev/null || continue
    # What follows the name, which may hold anything: state, parent, group, session.
    # shellcheck disable=SC2086
    set -- "$1" ${line##*) }
    if [ "$5" = "$1" ] && [ "$2" != Z ]; then
      stat=${stat#/proc/}
      echo "${stat%/stat}"
    fi
  done
}

# end_session ID: kills whatever the case left running, and waits until it is gone, with what ends
# of its own accord once the program has: a case that follows must be alone. Fails after 10 s.
end_session() {
  local tries=0 left
  while left="$(members "$1") $(pidof velotap libinput_watch hid_player)"; [ -n "${left# }" ]; do
    [ "$tries" -lt 200 ] || return 1
    # shellcheck disable=SC2046
    kill -KILL $(members "$1") 2> /dev/null
    tries=$((tries + 1))
    sleep 0.05
  done
}

while read -r name seconds; do
  rm -rf /tmp/case
  mkdir -p /tmp/case/log /tmp/case/pipe /tmp/case/pid
  dmesg -c > /dev/null
  echo "=== case $name"
  begun=$(cut -d' ' -f1 /proc/uptime)
  cd /tmp/case || exit 1
  setsid timeout -s KILL "$seconds" sh /t/case.sh "$name" > log/case 2>&1 < /dev/null
  status=$?
  if ! end_session "$(cat session)"; then
    echo "it left running: $(ps)" >> log/case
    [ "$status" -ne 0 ] || status=1
  fi
  udevadm settle -t 10
  for log in log/*; do sed "s/^/${log#log/}| /" "$log"; done
  dmesg | sed 's/^/kernel| /'
  echo "=== end $name status=$status begun=$begun ended=$(cut -d' ' -f1 /proc/uptime)"
done < /t/order
