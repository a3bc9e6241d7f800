#!/usr/bin/env python3
"""The guard's code calls the system and nothing else.

  guard_calls_test.py NM LIBRARY

It runs in a forked child of a process with several threads, where whatever takes a lock may wait
for ever. So what its object file calls is held against a list: functions that are safe in a signal
handler, system calls that the C library merely passes on, and what the compiler itself puts in.
"""

import subprocess
import sys

SAFE = {"_exit", "clock_gettime", "poll", "setsid", "write"}
PASSED_ON = {"close_range", "ioctl", "prctl"}
COMPILERS_OWN = {
    "_GLOBAL_OFFSET_TABLE_",
    "__errno_location",
    "__gxx_personality_v0",
    "__stack_chk_fail",
    "_Unwind_Resume",
    "__cxa_begin_catch",
    "_ZSt9terminatev",
    "memcpy",
    "memmove",
    "memset",
}
OBJECT = "guard_process.cpp.o"


def calls(nm, library):
    """What the guard's object file takes from elsewhere."""
    printed = subprocess.run(
        [nm, "--undefined-only", "-A", library], check=True, capture_output=True, text=True
    ).stdout
    return {line.split()[-1] for line in printed.splitlines() if f":{OBJECT}:" in line}


def main():
    found = calls(*sys.argv[1:])
    missing = {"_exit", "poll", "write"} - found
    if missing:
        print(f"{OBJECT} does not call {', '.join(sorted(missing))}: is it the right file?")
        return 1
    unsafe = found - SAFE - PASSED_ON - COMPILERS_OWN
    for name in sorted(unsafe):
        print(f"{OBJECT} calls {name}, which a forked child may not")
    return 1 if unsafe else 0


if __name__ == "__main__":
    sys.exit(main())
