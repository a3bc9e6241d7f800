#!/usr/bin/env python3
"""Fails when the crash handler uses anything that is not safe inside a signal handler.

handler_symbols.py NM OBJECT...   (the objects of a library; the handler's own is looked for)
"""

import re
import subprocess
import sys

SAFE = {"write", "getpid", "kill"}
# What compilers add by themselves: the address table, and the guards that sanitizers and coverage
# put into every function.
COMPILERS_OWN = re.compile(
    r"^(_GLOBAL_OFFSET_TABLE_|__stack_chk_fail|__(asan|ubsan|tsan|msan|sanitizer|gcov|llvm)_.*)$")


def undefined_symbols(nm, path):
    listing = subprocess.run([nm, "--undefined-only", "--format=posix", path], check=True,
                             capture_output=True, text=True).stdout
    return {line.split()[0] for line in listing.splitlines() if line}


def main(nm, objects):
    handlers = [path for path in objects if "/crash_marker.cpp" in path]
    if len(handlers) != 1:
        return f"expected one object of the handler, found {handlers}"
    used = undefined_symbols(nm, handlers[0])
    if not SAFE <= used:
        return f"the handler does not use {sorted(SAFE - used)}: is this its object?"
    unsafe = sorted(name for name in used - SAFE if not COMPILERS_OWN.match(name))
    return f"the handler uses {unsafe}" if unsafe else None


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
