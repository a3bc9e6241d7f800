#!/usr/bin/env python3
"""Makes stub libraries of macOS that hold just the symbols of a list: stubs.py LIST FOLDER

LIST has the install name of a library in square brackets and below it, one a line, the symbols that
the program imports from it. What is not on the list cannot be linked.
"""

import pathlib
import sys

STUB = """--- !tapi-tbd
tbd-version: 4
targets: [ arm64-macos, x86_64-macos ]
install-name: '{name}'
exports:
  - targets: [ arm64-macos, x86_64-macos ]
    symbols: [ {symbols} ]
...
"""


def libraries(text):
    """The symbols of each library, from the text of a list."""
    found, current = {}, None
    for line in text.split("\n"):
        line = line.split("#")[0].strip()
        if line.startswith("["):
            current = found.setdefault(line.strip("[]"), [])
        elif line:
            current.append(line)
    return found


def path_of(name):
    """Where the linker looks for a library."""
    path = pathlib.PurePosixPath(name.lstrip("/"))
    if ".framework" in name:
        return path.with_name(path.name + ".tbd")
    return path.with_name({"libSystem.B.dylib": "libSystem.tbd", "libc++.1.dylib": "libc++.tbd",
                           "libobjc.A.dylib": "libobjc.tbd"}[path.name])


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[1])
    for name, symbols in libraries(pathlib.Path(arguments[0]).read_text()).items():
        stub = folder / path_of(name)
        stub.parent.mkdir(parents=True, exist_ok=True)
        stub.write_text(STUB.format(name=name, symbols=", ".join(f"'{s}'" for s in symbols)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
