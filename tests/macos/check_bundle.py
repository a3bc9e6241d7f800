#!/usr/bin/env python3
"""Reads back a bundle that was linked for macOS: check_bundle.py BUNDLE IMPORTS [MORE]

The program must hold both architectures and import from each library exactly the symbols of the
list IMPORTS (but for the C++ library, whose stub holds all); Info.plist and the resources must be what an
application of the status bar in five languages needs.

With a list MORE the program has windows, for one architecture: it may import what IMPORTS says,
must import what MORE says, and has Qt from its own Frameworks folder. Prints what is wrong and how
many checks passed; exit status 1 when one failed.
"""

import pathlib
import plistlib
import re
import subprocess
import sys

import stubs

ARCHITECTURES = ["x86_64", "arm64"]
QT = {f"@rpath/Qt{module}.framework/Versions/A/Qt{module}" for module in stubs.QT_MODULES}
FRAMEWORKS = "@executable_path/../Frameworks"
LOADED = re.compile(r"^\s+(?:name|path) (\S+) \(offset \d+\)$")
LANGUAGES = ["en", "bg", "de", "es", "fr"]
BIND = re.compile(r"^__\w+ .* (\S+)\s+(\S+?)(?: \(weak import\))?$")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def imports(binary, architecture):
    """The imported symbols by the short name of their library."""
    table = output_of("llvm-objdump-14", "--macho", f"--arch={architecture}", "--bind",
                      "--lazy-bind", str(binary))
    found = {}
    for line in table.split("\n"):
        match = BIND.match(line)
        if match:
            found.setdefault(match.group(1), set()).add(match.group(2))
    return found


def short_name(install_name):
    return pathlib.PurePosixPath(install_name).name.split(".")[0]


def check_imports(found, listed):
    for name, symbols in listed.items():
        imported = found.get(short_name(name), set())
        if name == stubs.CPP_LIBRARY:
            continue
        yield not set(symbols) - imported, f"{name}: no longer imported: " + ", ".join(
            sorted(set(symbols) - imported))
        yield not imported - set(symbols), f"{name}: not on the list: " + ", ".join(
            sorted(imported - set(symbols)))
    libraries = {short_name(name) for name in listed}
    yield not set(found) - libraries, f"libraries not on the list: {set(found) - libraries}"


def check_imports_with_windows(found, listed, more):
    """What is listed is allowed, what only windows need is there, and so is Qt."""
    allowed = {short_name(name): set(symbols) for name, symbols in listed.items()}
    qt = {short_name(name) for name in QT}
    for name, symbols in more.items():
        allowed[short_name(name)] |= set(symbols)
        missing = set(symbols) - found.get(short_name(name), set())
        yield not missing, f"{name}: no longer imported: " + ", ".join(sorted(missing))
    for name, symbols in found.items():
        if name in qt or name == short_name(stubs.CPP_LIBRARY):
            continue
        unlisted = symbols - allowed.get(name, set())
        yield not unlisted, f"{name}: not on the list: " + ", ".join(sorted(unlisted))
    for name in ("QtCore", "QtGui", "QtQml", "QtQuick"):
        yield found.get(name), f"nothing is imported from {name}"


def loaded(binary, architecture):
    """The libraries that are loaded with the program, and where it looks for those with @rpath."""
    headers = output_of("llvm-objdump-14", "--macho", f"--arch={architecture}",
                        "--private-headers", str(binary))
    return {match.group(1) for match in map(LOADED.match, headers.split("\n")) if match}


def check_loaded(found, listed, qt):
    """Libraries under the names that they have in the system and in the bundle, and no others."""
    expected = set(listed) | qt | {FRAMEWORKS, "/usr/lib/dyld"}
    yield not found - expected, f"loaded besides: {sorted(found - expected)}"
    yield not expected - found, f"no longer loaded: {sorted(expected - found)}"


def check_plist(info):
    expected = {"CFBundleIdentifier": "app.norwend.velotap", "CFBundleExecutable": "Velotap",
                "CFBundlePackageType": "APPL", "CFBundleName": "Velotap", "LSUIElement": True,
                "CFBundleIconFile": "Velotap", "CFBundleDevelopmentRegion": "en",
                "CFBundleLocalizations": LANGUAGES, "CFBundleAllowMixedLocalizations": True,
                "LSMinimumSystemVersion": "13.3", "NSPrincipalClass": "NSApplication",
                "SUFeedURL": "https://updates.example/appcast.xml", "SUPublicEDKey": "a key",
                "SUEnableAutomaticChecks": True}
    for key, value in expected.items():
        yield info.get(key) == value, f"Info.plist: {key} is {info.get(key)!r}, not {value!r}"
    for key, form in (("CFBundleShortVersionString", r"\d+\.\d+\.\d+"), ("CFBundleVersion", r"\d+"),
                      ("NSHumanReadableCopyright", "© .+")):
        text = info.get(key, "")
        yield re.fullmatch(form, text), f"Info.plist: {key} is {text!r}"
    unfilled = [key for key, value in info.items() if "${" in str(value) or "@" in str(value)]
    yield not unfilled, f"Info.plist: not filled in: {unfilled}"


def check_resources(contents):
    for language in LANGUAGES:
        table = contents / "Resources" / f"{language}.lproj" / "Localizable.strings"
        yield table.is_file() and table.stat().st_size > 0, f"no table for {language}"
    icon = contents / "Resources" / "Velotap.icns"
    data = icon.read_bytes() if icon.is_file() else b""
    whole = data[:4] == b"icns" and int.from_bytes(data[4:8], "big") == len(data)
    yield whole and b"ic09" in data, "no whole icon up to 512 points"


def check_notices(text):
    """The licences that are named must follow, each in full."""
    named = set(re.findall(r"\(([A-Z]+-\d\.\d)\)", text.split("\n===")[0]))
    titles = set(re.findall(r"^=== (\S+) ===$", text, re.MULTILINE))
    yield len(named) >= 3, f"notices: only {sorted(named)} are named"
    yield named == titles, f"notices: {sorted(named)} are named, {sorted(titles)} follow"
    for end in ("why-not-lgpl.html", "authorization for you to choose that version", "OTHER DEALINGS IN THE FONT"):
        yield end in text, f"notices: nothing says {end!r}"


def check_program(binary, text, more):
    found = output_of("llvm-lipo-14", "-archs", str(binary)).split()
    if more is None:
        yield sorted(found) == sorted(ARCHITECTURES), f"architectures: {found}"
    for architecture in found:
        listed = stubs.libraries(text, architecture)
        imported = imports(binary, architecture)
        if more is None:
            yield from check_imports(imported, listed)
        else:
            yield from check_imports_with_windows(imported, listed,
                                                  stubs.libraries(more, architecture))
        yield from check_loaded(loaded(binary, architecture), listed,
                                QT if more is not None else set())


def checks(bundle, text, more):
    contents = bundle / "Contents"
    yield from check_program(contents / "MacOS" / "Velotap", text, more)
    if more is not None:
        notices = bundle.parent / "src" / "app" / "macos" / "ThirdPartyNotices.txt"
        yield from check_notices(notices.read_text(encoding="utf-8"))
    yield from check_plist(plistlib.loads((contents / "Info.plist").read_bytes()))
    yield from check_resources(contents)


def main(arguments):
    if len(arguments) not in (2, 3):
        print(__doc__, file=sys.stderr)
        return 2
    text = stubs.text_of(arguments[1:2])
    more = stubs.text_of(arguments[2:]) if len(arguments) == 3 else None
    passed = failed = 0
    for good, complaint in checks(pathlib.Path(arguments[0]), text, more):
        if good:
            passed += 1
        else:
            failed += 1
            print(complaint)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
