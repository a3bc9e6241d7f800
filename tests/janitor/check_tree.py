#!/usr/bin/env python3
"""Applies the rules of rules.py to the tree: check_tree.py ROOT RULE

Prints FILE:LINE: what is wrong for each complaint; exit status 1 when there is one. Without a rule
it lists their names.
"""

import pathlib
import subprocess
import sys

import rules

PROSE = {".md"}
CODE = {".cpp", ".hpp", ".mm"}
HASH = {".cmake", ".py", ".sh", ".txt"}


def files_of(root):
    """What git knows or could know, so that a file is checked before it is committed."""
    listing = subprocess.run(
        ["git", "-c", "safe.directory=*", "-C", root, "ls-files", "-z", "--cached", "--others",
         "--exclude-standard"], check=True, capture_output=True, text=True).stdout
    for name in filter(None, listing.split("\0")):
        path = root / name
        if path.is_file() and not path.is_symlink():
            try:
                yield pathlib.PurePosixPath(name), path.read_text(encoding="utf-8")
            except UnicodeDecodeError:
                continue  # a recording or a database, not a text


def is_script(text):
    return text.startswith("#!")


def includes(root, path, text):
    parts = path.parts
    if path.suffix in CODE and parts[0] == "src" and parts[1] in rules.CORE_ROOMS:
        return rules.forbidden_includes(parts[1], text)
    return []


def paths(root, path, text):
    def exists(name):
        # Prose may name a source without its ending, or a program that the build makes of it.
        return (root / name).exists() or any((root / (name + s)).exists() for s in CODE)

    if path.suffix in PROSE:
        return rules.missing_paths(text, exists)
    if path.suffix in CODE:
        return rules.missing_paths(rules.comments(text, "//"), exists)
    if path.suffix in HASH or is_script(text):
        return rules.missing_paths(rules.comments(text, "#"), exists)
    return []


def pointers(root, path, text):
    return rules.pointers_elsewhere(text)


def unfinished(root, path, text):
    return rules.unfinished(text)


def sleeping(root, path, text):
    # In the virtual machine a hand moves at its own pace, which only passing time can give.
    if path.parts[0] != "tests" or path.parts[1] == "vm":
        return []
    return rules.sleeping(text)


def platforms(root, path, text):
    if path.suffix not in CODE or path.parts[0] != "src" or path.parts[1] == "adapters":
        return []
    return rules.platform_conditions(text)


def headers(root, path, text):
    return rules.bad_header(text) if path.suffix == ".hpp" else []


def lengths(root, path, text):
    return rules.too_long(text) if path.suffix in CODE | {".py"} else []


def packages(root, path, text):
    return rules.packages_without_reason(text) if path == pathlib.PurePosixPath(
        "scripts/packages") else []


def views(root, path, text):
    if path.suffix != ".qml" or path.parts[0] != "src":
        return []
    looks = [] if "theme" in path.parts else rules.view_looks(text)
    return looks + rules.view_words(text)


RULES = {"includes": includes, "paths": paths, "platforms": platforms,
         "pointers": pointers, "unfinished": unfinished,
         "sleeping": sleeping, "headers": headers, "lengths": lengths, "packages": packages,
         "views": views}


def main(arguments):
    if len(arguments) != 2 or arguments[1] not in RULES:
        print(__doc__ + "\n" + "\n".join(RULES), file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[0])
    complaints = 0
    files = 0
    for path, text in files_of(root):
        files += 1
        for complaint in RULES[arguments[1]](root, path, text):
            print(f"{path}:{complaint}")
            complaints += 1
    if files == 0:
        print(f"no files under {root}: is it a git checkout?", file=sys.stderr)
        return 2
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
