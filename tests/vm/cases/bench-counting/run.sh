# The machine counts what it says it counts: a loop of twenty million instructions, and, of the same
# process, nothing while it waits.
mkfifo pipe/work
known_work 20 < pipe/work > "$log/work" &
echo $! > pid/work
exec 3> pipe/work
await work '^waiting$'
rest=$(nanoseconds "$(pid work)")
sleep 2
before=$(nanoseconds "$(pid work)")
echo >&3
await work '^done$'
after=$(nanoseconds "$(pid work)")
figure resting $((before - rest))
figure working $((after - before))
