#!/usr/bin/env python3
"""Makes stub libraries of macOS that hold just the symbols of lists: stubs.py FOLDER LIST...

A LIST has the install name of a library in square brackets and below it, one a line, the symbols that
the program imports from it, with an architecture behind those that only one needs. What is not on
the list cannot be linked. The stub of the C++ library
is made of all that the installed one exports, under the names that it has on macOS; so are those of Qt,
which lie in FOLDER/qt.
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
QT_FOLDER = pathlib.Path("/usr/lib/x86_64-linux-gnu")
QT_MODULES = ["Core", "Gui", "Network", "OpenGL", "Qml", "QmlModels", "Quick", "Svg"]
INSTALLED = ["/usr/lib/llvm-14/lib/libc++.so.1", "/usr/lib/llvm-14/lib/libc++abi.so.1"]


def text_of(lists):
    return "\n".join(pathlib.Path(each).read_text(encoding="utf-8") for each in lists)


def libraries(text, architecture=None):
    """The symbols of each library, from the text of lists; for one architecture or all."""
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


def exported(*installed):
    """What libraries of this system export, under the names that it has on macOS."""
    output = subprocess.run(["llvm-nm-14", "-D", "--defined-only", "-j", *installed], check=True,
                            capture_output=True, text=True).stdout
    # A tag of the other C++ library, for functions that return its strings.
    return sorted({"_" + line.split("@")[0].replace("B5cxx11", "") for line in output.split("\n")
                   if line and not line.endswith(":")})


def qt_libraries():
    """Qt's libraries by the names that its frameworks have in a bundle; none without Qt."""
    for module in QT_MODULES:
        for library in QT_FOLDER.glob(f"libQt6{module}.so.6"):
            yield f"@rpath/Qt{module}.framework/Versions/A/Qt{module}", exported(str(library))


def write(stub, name, symbols):
    stub.parent.mkdir(parents=True, exist_ok=True)
    stub.write_text(STUB.format(name=name, symbols=", ".join(f"'{s}'" for s in symbols)),
                    encoding="utf-8")


def main(arguments):
    if len(arguments) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    found = libraries(text_of(arguments[1:]))
    found[CPP_LIBRARY] = exported(*INSTALLED) + found.get(CPP_LIBRARY, [])
    for name, symbols in found.items():
        write(folder / path_of(name), name, symbols)
    for name, symbols in qt_libraries():
        write(folder / "qt" / (pathlib.PurePosixPath(name).name + ".tbd"), name, symbols)
    (folder / "System/Library/Frameworks/OpenGL.framework/Headers").mkdir(parents=True,
                                                                          exist_ok=True)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
