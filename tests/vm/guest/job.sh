# What the machine does once it is up: every case of /t/order in turn, each in a session of its own
# that is ended afterwards, its logs printed line by line with the program's name in front.
export PATH=/t/bin:$PATH LD_LIBRARY_PATH=/t/lib

# end_session ID: kills whatever the case left running. The session is the sixth field of stat.
end_session() {
  awk -v session="$1" '$6 == session { print $1 }' /proc/[0-9]*/stat 2> /dev/null |
    xargs -r kill -KILL 2> /dev/null
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
  end_session "$(cat session)"
  udevadm settle -t 10
  for log in log/*; do sed "s/^/${log#log/}| /" "$log"; done
  dmesg | sed 's/^/kernel| /'
  echo "=== end $name status=$status begun=$begun ended=$(cut -d' ' -f1 /proc/uptime)"
done < /t/order
