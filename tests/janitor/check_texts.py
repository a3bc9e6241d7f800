#!/usr/bin/env python3
"""Checks that the program and its tables of texts know the same keys: check_texts.py ROOT

A key that the sources look up must be in every table; a key of a table must be looked up
somewhere. texts.txt beside this script lists what looks like a key and is none, and keys whose user
is still to come. Prints one line for each complaint; exit status 1 when there is one.
"""

import pathlib
import re
import sys

LANGUAGES = ("en", "bg", "de", "es", "fr")
SOURCES = {".cpp", ".hpp", ".mm", ".qml"}

PAIR = re.compile(r'^"((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)";', re.MULTILINE)
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
# Two literals side by side are one.
SEAM = re.compile(r'"[ \t]*\n[ \t]*"')
# What takes nothing but keys.
LOOKUP = re.compile(r'\b(?:texts_?|localize_?|localizedString|counted)\(\s*"((?:[^"\\\n]|\\.)*)"')
DOTTED = re.compile(r"^[a-z]+(?:\.[A-Za-z][A-Za-z-]*)+$")
# Forms of one text: by count, and where a system needs other words.
FORMS = (".one", ".other", ".linux")
ARGUMENT = re.compile(r"%(?:\d+\$)?(?:@|l{0,2}[diu])")


def table(text):
    return dict(PAIR.findall(text))


def plain(literal):
    return literal.replace('\\"', '"').replace("\\\\", "\\")


def comments_blanked(text):
    # A "//" inside a text, as in an address, follows a colon.
    return re.sub(r"(^|[^:\"])//[^\n]*", r"\1", text, flags=re.MULTILINE)


def literals(source):
    """Everything between quotes, and what is handed to a look-up."""
    joined = SEAM.sub("", comments_blanked(source))
    return ({plain(m) for m in LITERAL.findall(joined)},
            {plain(m) for m in LOOKUP.findall(joined)})


def lists(text):
    """The lists of texts.txt: "foreign KEY" lines."""
    result = {"foreign": set()}
    for line in text.splitlines():
        if line and not line.startswith("#"):
            kind, _, key = line.partition(" ")
            result[kind].add(key)
    return result


def stem(key):
    for ending in FORMS:
        if key.endswith(ending):
            return key[:-len(ending)]
    return key


def complaints(tables, sources, listed):
    """`tables` by language, `sources` by name; all of them texts already read."""
    english = tables["en"]
    keys = set(english) | {stem(key) for key in english}
    families = {key.split(".")[0] for key in english if DOTTED.match(key)}
    found = set()
    for language, entries in tables.items():
        for key in sorted(set(english) ^ set(entries)):
            yield f"{language}: {key}: not in every table"
        for key in sorted(set(english) & set(entries)):
            if sorted(ARGUMENT.findall(entries[key])) != sorted(ARGUMENT.findall(english[key])):
                yield f"{language}: {key}: takes other arguments than in English"
    for name, source in sorted(sources.items()):
        every, looked_up = literals(source)
        found |= every
        likely = {text for text in every
                  if DOTTED.match(text) and text.split(".")[0] in families}
        for key in sorted((looked_up | likely) - keys - listed["foreign"]):
            yield f"{name}: no table has {key}"
    for key in sorted(english):
        if stem(key) not in found and key not in found:
            yield f"en: {key}: nothing looks it up"


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[0])
    tables = {language: table((root / "resources" / f"{language}.lproj" / "Localizable.strings")
                              .read_text(encoding="utf-8")) for language in LANGUAGES}
    sources = {str(path.relative_to(root)): path.read_text(encoding="utf-8")
               for path in (root / "src").rglob("*") if path.suffix in SOURCES}
    listed = lists((pathlib.Path(__file__).parent / "texts.txt").read_text(encoding="utf-8"))
    found = list(complaints(tables, sources, listed))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
