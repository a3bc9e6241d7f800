#!/usr/bin/env python3
"""Reads back a bundle that was linked for macOS: check_bundle.py BUNDLE IMPORTS

The program must hold both architectures and import from each library exactly the symbols of the
list IMPORTS (but for the C++ library, whose stub holds all); Info.plist and the resources must be what an
application of the status bar in five languages needs. Prints what is wrong and how many checks
passed; exit status 1 when one failed.
"""

import pathlib
import plistlib
import re
import subprocess
import sys

import stubs

ARCHITECTURES = ["x86_64", "arm64"]
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


def checks(bundle, text):
    contents = bundle / "Contents"
    binary = contents / "MacOS" / "Velotap"
    found = output_of("llvm-lipo-14", "-archs", str(binary)).split()
    yield sorted(found) == sorted(ARCHITECTURES), f"architectures: {found}"
    for architecture in ARCHITECTURES:
        yield from check_imports(imports(binary, architecture),
                                 stubs.libraries(text, architecture))
    yield from check_plist(plistlib.loads((contents / "Info.plist").read_bytes()))
    yield from check_resources(contents)


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    text = pathlib.Path(arguments[1]).read_text(encoding="utf-8")
    passed = failed = 0
    for good, complaint in checks(pathlib.Path(arguments[0]), text):
        if good:
            passed += 1
        else:
            failed += 1
            print(complaint)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
