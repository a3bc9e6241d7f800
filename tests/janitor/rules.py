"""What must hold of every source file, as functions from text to complaints.

Each rule looks at one text and knows nothing of the tree; check_tree.py applies them.
"""

import re

# Lower rooms first: a room of the core may include itself and what stands before it here, but
# localization, input and output, which stand side by side.
CORE_ROOMS = {
    "base": {"base"},
    "platform": {"base", "platform"},
    "config": {"base", "platform", "config"},
    "localization": {"base", "platform", "config", "localization"},
    "input": {"base", "platform", "config", "input"},
    "output": {"base", "platform", "config", "output"},
    "gestures": {"base", "platform", "config", "input", "output", "gestures"},
    "control": {"base", "platform", "config", "input", "output", "gestures", "control"},
}

STANDARD_HEADERS = set("""
algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
condition_variable coroutine deque exception execution filesystem format forward_list fstream
functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list
locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack
stdexcept stop_token streambuf string string_view syncstream system_error thread tuple type_traits
typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef
cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype
""".split())

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)

# Folders whose files are named in prose. Patterns are not files, nor are names in capitals, which
# stand for one.
PATH = re.compile(
    r"(?<![\w./$}-])((?:bench|cmake|docs|fuzz|packaging|resources|scripts|src|tests)"
    r"/[\w.+/-]*[\w+/-])(?![\w*<{$])")

ELSEWHERE = re.compile(
    r"\b[Pp]art [1-6]\.[1-8]\b|\bspec\.m[d]\b|\b[Tt]he spec(?:ificatio[n])?\b|\b[Pp]er spec\b"
    r"|\b[Aa]s specified\b|\.\./share[d]\b|\b[Ii]ssue #?[0-9]+\b|[Ss]ubagen[t]|[Cc]losing not[e]"
    r"|/(?:wor[k]|far[m]|roo[t])/")

UNFINISHED = re.compile(r"\b(?:TOD[O]|FIXM[E]|XX[X]|HAC[K])\b|DISABLE[D]_|GTEST_SKI[P]")

SLEEPING = re.compile(r"\bsleep_(?:for|until)\b|\bu?sleep\(|\bnanosleep\(|\btime\.sleep\(|qWait\("
                      r"|^[ \t]*sleep [0-9]", re.MULTILINE)

# What only the theme may say: colours, type, sizes other than nothing and a single point.
VIEW_LOOKS = re.compile(
    r"#[0-9a-fA-F]{3,8}\b|\bfont\.\w+|\bcolor:\s*\"|\bQt\.(?:rgba|hsla|darker|lighter)\b"
    r"|\b(?:width|height|radius|size|spacing|pad|padding|x|y|\w+Margins?|\w+Padding):\s*[0-9]{2,}")

# Words for people come from models; names of symbols and tones have no spaces or capitals.
VIEW_WORDS = re.compile(
    r"\b(?:text|title|caption|hint|name|help|action|summary|Accessible\.(?:name|description)):\s*"
    r"\"[^\"]*[A-Za-z][^\"]*\"|\bqsTr")

# What asks the compiler for which system it compiles.
PLATFORM_CONDITION = re.compile(
    r"^[ \t]*#[ \t]*(?:el)?if.*\b(?:__APPLE__|__MACH__|__linux__|__unix__|_WIN32|__FreeBSD__"
    r"|TARGET_OS_\w+|Q_OS_\w+)\b.*$", re.MULTILINE)

MOST_LINES = 700


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def found(pattern, text, what):
    return [f"{line_of(text, m.start())}: {what}: {m.group(0).strip()}"
            for m in pattern.finditer(text)]


def forbidden_includes(room, text):
    """The core knows the standard library and the rooms below it, and nothing else."""
    complaints = []
    for match in INCLUDE.finditer(text):
        bracket, name = match.groups()
        allowed = (name in STANDARD_HEADERS if bracket == "<"
                   else name.split("/")[0] in CORE_ROOMS[room])
        if not allowed:
            complaints.append(f"{line_of(text, match.start())}: {room} may not include {name}")
    return complaints


def missing_paths(text, exists):
    """Whatever a sentence sends its reader to is there. `exists` answers for a path."""
    return [f"{line_of(text, m.start())}: there is no {m.group(1)}"
            for m in PATH.finditer(text)
            if not m.group(1).rsplit("/", 1)[1].isupper() and not exists(m.group(1))]


def comments(text, marker):
    """The text with everything but comments blanked out, so that line numbers stay true."""
    lines = []
    for line in text.split("\n"):
        start = line.find(marker)
        # An address in a string is no comment.
        lines.append(line[start:] if start >= 0 and line[start - 1:start] != ":" else "")
    return "\n".join(lines)


def pointers_elsewhere(text):
    """A reader has this tree and nothing else: no word about texts or machines outside of it."""
    return found(ELSEWHERE, text, "points to something that is not in this tree")


def unfinished(text):
    return found(UNFINISHED, text, "unfinished")


def sleeping(text):
    return found(SLEEPING, text, "a test that sleeps")


def view_looks(text):
    """A view says what a thing is; the theme says how that looks."""
    return found(VIEW_LOOKS, text, "a look that belongs into the theme")


def view_words(text):
    """Views hold no words: they would be in one language, and untested."""
    return found(VIEW_WORDS, text, "words that belong into a model")


def platform_conditions(text):
    """Systems differ behind the ports, and in which files the build takes; nowhere else."""
    return found(PLATFORM_CONDITION, text, "a system is asked for")


def bad_header(text):
    """A header begins with what it decides, and is included once."""
    complaints = []
    if not text.startswith("// "):
        complaints.append("1: a header begins with a sentence that says what it is for")
    if "\n#pragma once\n" not in text:
        complaints.append("1: no #pragma once")
    return complaints


def too_long(text):
    lines = text.count("\n")
    if lines <= MOST_LINES:
        return []
    return [f"{lines}: more than {MOST_LINES} lines are more than one purpose"]


def packages_without_reason(text):
    """Each line of the package list is a name, an optional group, and a reason."""
    return [f"{i}: no reason: {line}" for i, line in enumerate(text.split("\n"), 1)
            if line and line[0] not in "#[" and not re.search(r"\s# \S", line)]
