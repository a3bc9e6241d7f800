# shellcheck shell=sh disable=SC2154
# Words of the cases in which a device comes and goes many times.
. /t/cases/clicks.sh

# slight_rules, all_rules: udev has nothing to look up for a desktop, which would take ten times as
# long as everything else; and it has again.
slight_rules() {
  mkdir -p slight
  cp /lib/udev/rules.d/60-input-id.rules slight/
  mount --bind slight /lib/udev/rules.d
  udevadm control --reload
}
all_rules() {
  umount /lib/udev/rules.d
  udevadm control --reload
}

files() { find "/proc/$(pid velotap)/fd" -type l | wc -l; }
threads() { find "/proc/$(pid velotap)/task" -maxdepth 1 -mindepth 1 | wc -l; }
guards() { cat /proc/[0-9]*/comm 2> /dev/null | grep -c '^velotap-guard$' || true; }
clones() { grep -l '^velotap/clone' /sys/class/input/input*/phys 2> /dev/null | wc -l; }


# come_and_go COUNT: plugs and unplugs so many mice while the program runs and no desktop watches,
# and measures what that leaves behind. Then a desktop sees whether all is well.
come_and_go() {
  local filesBefore threadsBefore memoryBefore
  slight_rules
  trap all_rules EXIT
  launch 0
  # Whatever is made once is there from then on.
  device_cycles magic-mouse-2 20 "$log/velotap" > warm
  filesBefore=$(files) threadsBefore=$(threads) memoryBefore=$(memory "$(pid velotap)" RssAnon)
  device_cycles magic-mouse-2 "$1" "$log/velotap" > taken
  figure taken "$(cat taken)"
  figure files-grown $(($(files) - filesBefore))
  figure threads-grown $(($(threads) - threadsBefore))
  figure memory-grown-kb $(($(memory "$(pid velotap)" RssAnon) - memoryBefore))
  figure guards-there "$(guards)"
  figure clones-there "$(clones)"
  trap - EXIT
  all_rules
  watch
  plug mouse magic-mouse-2
  await watch '^added \S+ velotap/clone' 20
  tell mouse 'wait 1000'
  finish mouse
  click mouse velotap/clone
  nothing_held
  # The rest is a thousand times the same.
  tail -n 20 "$log/velotap" > end
  mv end "$log/velotap"
}
