# shellcheck shell=bash
# Shared by the scripts of the virtual-machine bench: where things are, and how one boot is made.
# To be sourced; sets no shell option of its own.

vm_source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
repository=$(cd "$vm_source/../.." && pwd)
# The packages take 75 MB and are the same for every checkout, so their place can be moved.
vm_cache=${VELOTAP_VM_CACHE:-$repository/build/vm}

# One virtual nanosecond for each instruction, and no waiting for the host's clock: such a machine
# counts instructions, and its time does not depend on how busy the host is.
# shellcheck disable=SC2034
counting_machine=(-smp 1 -icount 'shift=0,sleep=off')

fail() {
  echo "${0##*/}: $*" >&2
  exit 1
}

# need COMMAND PACKAGE: stops with the name of the package that is missing.
need() {
  command -v "$1" > /dev/null || fail "$1 is missing; install the Debian package $2"
}

# pack_archive FOLDER FILE: a compressed initramfs archive of everything in FOLDER. Owners and
# order are fixed so that the same content gives the same file.
pack_archive() {
  (cd "$1" && find . -mindepth 1 | LC_ALL=C sort | cpio -o -H newc -R 0:0 --reproducible --quiet) |
    gzip -n -3 > "$2"
}

# copy_libraries FOLDER PROGRAM...: what the dynamic linker would load for these programs, except
# the linker itself, which the image has at its own path.
copy_libraries() {
  local folder=$1 library
  shift
  for library in $(for program in "$@"; do ldd "$program" 2> /dev/null || true; done |
    grep -oE '/[^ ]+\.so[^ ]*' | sort -u); do
    [[ $library == *ld-linux* ]] || cp -Ln "$library" "$folder/"
  done
}

# prepare BUILD-TREE: everything that a boot needs is there, or a message says what is not.
prepare() {
  need python3 python3
  need qemu-system-x86_64 qemu-system-x86
  [[ -x $1/bin/vm/hid_player ]] ||
    fail "no programs in $1/bin/vm: build the target vm-bench, or name another tree with --build"
  "$vm_source/build-image"
}

# stage_guest FOLDER BUILD-TREE: what the machine gets beside the base image and the cases: the
# programs with their libraries, the guest's scripts, the touches.
stage_guest() {
  local stage=$1 build=$2 program library
  mkdir -p "$stage"/{bin,lib}
  cp "$build"/bin/vm/* "$stage/bin/"
  for program in velotap velotap-lab; do
    [[ ! -x $build/bin/$program ]] || cp "$build/bin/$program" "$stage/bin/"
  done
  for library in "$build"/lib/libvelotap-*.so; do
    [[ ! -e $library ]] || cp "$library" "$stage/lib/"
  done
  # What a program looks for while it runs: the login manager's library.
  library=$(ldconfig -p | sed -n 's/.*libsystemd\.so\.0 .*x86-64.* => //p' | head -n 1)
  [[ -z $library ]] || cp -L "$library" "$stage/lib/"
  copy_libraries "$stage/lib" "$stage"/bin/* "$stage"/lib/*
  cp "$vm_source"/guest/{job,case}.sh "$stage/"
  cp -r "$vm_source/touches" "$stage/"
}

# boot FOLDER LOG SECONDS [QEMU-OPTION...]: runs the machine with the base image and what is in
# FOLDER, until it switches itself off. Returns 124 when the time was up. The machine does not
# outlive the shell that waits for it.
boot() {
  local folder=$1 log=$2 seconds=$3 status=0
  shift 3
  pack_archive "$folder" "$log.archive"
  cat "$vm_cache/base.gz" "$log.archive" > "$log.initrd"
  setpriv --pdeathsig TERM timeout --kill-after=5 "$seconds" \
    qemu-system-x86_64 -accel tcg -machine q35 -cpu max -m 700 -nic none -nographic -no-reboot \
    -kernel "$vm_cache/vmlinuz" -initrd "$log.initrd" \
    -append "console=ttyS0 quiet loglevel=3 panic=-1 rdinit=/init" "$@" \
    < /dev/null > "$log.raw" 2>&1 || status=$?
  tr -d '\r' < "$log.raw" > "$log"
  rm -f "$log.raw" "$log.archive" "$log.initrd"
  return "$status"
}
