#!/usr/bin/env python3
"""Makes stub libraries of macOS that hold just the symbols of a list: stubs.py LIST FOLDER

LIST has the install name of a library in square brackets and below it, one a line, the symbols that
the program imports from it, with an architecture behind those that only one needs. What is not on
the list cannot be linked. The stub of the C++ library
is made of all that the installed one exports, under the names that it has on macOS.
"""

import pathlib
import subprocess
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

CPP_LIBRARY = "/usr/lib/libc++.1.dylib"
INSTALLED = ["/usr/lib/llvm-14/lib/libc++.so.1", "/usr/lib/llvm-14/lib/libc++abi.so.1"]


def libraries(text, architecture=None):
    """The symbols of each library, from the text of a list; for one architecture or all."""
    found, current = {}, None
    for line in text.split("\n"):
        line = line.split("#")[0].strip()
        if line.startswith("["):
            current = found.setdefault(line.strip("[]"), [])
        elif line:
            symbol, *only = line.split()
            if architecture is None or not only or only == [architecture]:
                current.append(symbol)
    return found


def path_of(name):
    """Where the linker looks for a library with this install name."""
    path = pathlib.PurePosixPath(name.lstrip("/"))
    if path.parent.parent.name == "Versions":  # X.framework/Versions/A/X
        return path.parent.parent.parent / (path.name + ".tbd")
    return path.with_name(path.name.split(".")[0] + ".tbd")


def cpp_symbols():
    output = subprocess.run(["llvm-nm-14", "-D", "--defined-only", "-j", *INSTALLED], check=True,
                            capture_output=True, text=True).stdout
    return sorted({"_" + line.split("@")[0] for line in output.split("\n")
                   if line and not line.endswith(":")})


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[1])
    found = libraries(pathlib.Path(arguments[0]).read_text(encoding="utf-8"))
    found[CPP_LIBRARY] = cpp_symbols() + found.get(CPP_LIBRARY, [])
    for name, symbols in found.items():
        stub = folder / path_of(name)
        stub.parent.mkdir(parents=True, exist_ok=True)
        stub.write_text(STUB.format(name=name, symbols=", ".join(f"'{s}'" for s in symbols)),
                        encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
