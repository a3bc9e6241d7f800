#!/usr/bin/env python3
"""Judges what the bench's machine printed, by the `expect` file of each case.

  judge.py plan CASES-FOLDER NAME...     NAME MACHINE SECONDS NEED... for each case, one a line
  judge.py verdict CASES-FOLDER [--skip=NAME:WHY]... LOG... -- NAME...

A line of an `expect` file is one of

  needs PROGRAM [TEXT]               the case is skipped where it has not been built, or does not
                                     contain TEXT: the name of a part that it may lack
  machine counting|plain             which machine; default counting: its clock counts instructions,
                                     so how busy the host is changes nothing; plain has two
                                     processors and the host's clock
  seconds N                          how long the case may take inside it; default 60
  exactly N PROGRAM: REGEX           that many lines of PROGRAM's log match; `none` is `exactly 0`
  at-least N PROGRAM: REGEX
  at-most N PROGRAM: REGEX
  order PROGRAM: REGEX -> REGEX...   such lines follow one another in that log
  sum N PROGRAM: REGEX               the numbers that the groups of REGEX capture add up to N
  within MS PROGRAM: REGEX -> PROGRAM: REGEX
                                     between the first such lines at most MS milliseconds pass
  figure NAME <= N                   a measurement of the case; also >=

`{name}` stands for a name of the `names` file of the folder. `#` at the start is a comment. A case
also fails when its script did, when it left a warning in the kernel's log, and when it expects
nothing. Prints PASS, FAIL or SKIP for each case, its figures, and a last line with the sums.
"""

import operator
import pathlib
import re
import sys

COMPARISONS = {"exactly": operator.eq, "at-least": operator.ge, "at-most": operator.le}
KERNEL_FAULT = re.compile(r"\b(WARNING|BUG|Oops|Call Trace|general protection fault)\b")
TIMES = (re.compile(r"\bat=([\d.]+)"), re.compile(r"^([\d.]+) "))


class Malformed(Exception):
    """An `expect` file that says something the judge does not understand."""


class Expectations:
    """One `expect` file: the directives, and the checks still as text."""

    def __init__(self, folder, name):
        self.name = name
        self.machine = "counting"
        self.seconds = 60
        self.needs = []
        self.checks = []
        names = read_names(folder)
        path = folder / name / "expect"
        for number, line in enumerate(path.read_text().splitlines(), 1):
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            word, _, rest = line.partition(" ")
            if word == "needs":
                program, _, text = substitute(rest, names).partition(" ")
                self.needs.append(f"{program}:{text}")
            elif word == "machine" and rest in ("plain", "counting"):
                self.machine = rest
            elif word == "seconds":
                self.seconds = int(rest)
            else:
                self.checks.append((f"{path}:{number}", line, substitute(rest, names)))


def read_names(folder):
    """The NAME=REGEX lines of the `names` file; a folder need not have one."""
    path = folder / "names"
    lines = path.read_text().splitlines() if path.exists() else []
    return dict(line.split("=", 1) for line in lines if line and not line.startswith("#"))


def substitute(text, names):
    for name, value in names.items():
        text = text.replace("{" + name + "}", value)
    return text


class CaseLog:
    """What one case printed: lines by program, and how its script ended."""

    def __init__(self):
        self.lines = {}
        self.status = None

    def of(self, program):
        return self.lines.get(program, [])

    def figures(self):
        words = (line.split() for line in self.of("case"))
        return {w[1]: float(w[2]) for w in words if len(w) == 3 and w[0] == "figure"}


def parse_log(text):
    """Case name -> CaseLog, in the order of the log."""
    cases = {}
    current = None
    for line in text.splitlines():
        words = line.split()
        if line.startswith("=== case ") and len(words) == 3:
            current = cases.setdefault(words[2], CaseLog())
        elif line.startswith("=== end ") and current is not None:
            current.status = int(words[3].removeprefix("status="))
            current = None
        elif current is not None and "| " in line:
            program, _, rest = line.partition("| ")
            current.lines.setdefault(program, []).append(rest)
    return cases


def target(text, where):
    """'PROGRAM: REGEX' as a pair."""
    program, colon, regex = text.partition(": ")
    if not colon or " " in program:
        raise Malformed(f"{where}: no 'PROGRAM: REGEX' in '{text}'")
    try:
        return program, re.compile(regex)
    except re.error as error:
        raise Malformed(f"{where}: {regex}: {error}") from error


def matches(log, text, where):
    program, regex = target(text, where)
    return [match for match in map(regex.search, log.of(program)) if match]


def check_count(log, verb, rest, where):
    number, _, rest = rest.partition(" ")
    found = len(matches(log, rest, where))
    if COMPARISONS[verb](found, int(number)):
        return None
    return f"{found} lines instead of {verb.replace('-', ' ')} {number} are like {rest}"


def check_order(log, rest, where):
    program, _, patterns = rest.partition(": ")
    lines = iter(log.of(program))
    for pattern in patterns.split(" -> "):
        regex = target(f"{program}: {pattern}", where)[1]
        if not any(regex.search(line) for line in lines):
            return f"{program} does not reach {pattern} in the order {patterns}"
    return None


def check_sum(log, rest, where):
    number, _, rest = rest.partition(" ")
    total = sum(float(group) for match in matches(log, rest, where) for group in match.groups())
    if abs(total - float(number)) < 0.005:
        return None
    return f"the sum is {total:g}, not {number}, of {rest}"


def time_of_first(log, text, where):
    for match in matches(log, text, where):
        for pattern in TIMES:
            time = pattern.search(match.string)
            if time:
                return float(time.group(1))
    return None


def check_within(log, rest, where):
    limit, _, rest = rest.partition(" ")
    earlier, arrow, later = rest.partition(" -> ")
    if not arrow:
        raise Malformed(f"{where}: no '->'")
    times = [time_of_first(log, text, where) for text in (earlier, later)]
    if None in times:
        return f"no line with a time is like {earlier if times[0] is None else later}"
    milliseconds = (times[1] - times[0]) * 1000
    log.lines.setdefault("case", []).append(f"figure between-ms {milliseconds:.1f}")
    if 0 <= milliseconds <= float(limit):
        return None
    return f"{milliseconds:.1f} ms instead of at most {limit} between {rest}"


def check_figure(log, rest, where):
    words = rest.split()
    if len(words) != 3 or words[1] not in ("<=", ">="):
        raise Malformed(f"{where}: figure NAME <= NUMBER")
    value = log.figures().get(words[0])
    if value is None:
        return f"the figure {words[0]} is missing"
    compare = operator.le if words[1] == "<=" else operator.ge
    return None if compare(value, float(words[2])) else f"{words[0]} is {value:g}, not {rest}"


def check(log, line, rest, where):
    """Why the check fails, or None."""
    verb = line.split()[0]
    if verb == "none":
        return check_count(log, "exactly", "0 " + rest, where)
    if verb in COMPARISONS:
        return check_count(log, verb, rest, where)
    single = {"order": check_order, "sum": check_sum, "within": check_within,
              "figure": check_figure}
    if verb not in single:
        raise Malformed(f"{where}: unknown: {line}")
    return single[verb](log, rest, where)


def judge(expectations, log):
    """The reasons against the case; an empty list when it passes."""
    if log is None:
        return ["the machine ended before this case began"]
    if log.status is None:
        return ["the machine ended during this case"]
    reasons = []
    if log.status != 0:
        last = (log.of("case") or ["nothing"])[-1]
        reasons.append(f"its script ended with status {log.status} after: {last}")
    if not expectations.checks:
        reasons.append("it expects nothing")
    for where, line, rest in expectations.checks:
        reason = check(log, line, rest, where)
        if reason:
            reasons.append(reason)
    faults = [line for line in log.of("kernel") if KERNEL_FAULT.search(line)]
    return reasons + [f"kernel: {line}" for line in faults[:3]]


def plan(folder, names):
    for name in names:
        case = Expectations(folder, name)
        print(" ".join([name, case.machine, str(case.seconds), *case.needs]))
    return 0


def verdict(folder, arguments):
    divider = arguments.index("--")
    skipped = dict(a.removeprefix("--skip=").split(":", 1) for a in arguments[:divider]
                   if a.startswith("--skip="))
    cases = {}
    for path in (a for a in arguments[:divider] if not a.startswith("--skip=")):
        cases.update(parse_log(pathlib.Path(path).read_text(errors="replace")))
    passed = failed = 0
    for name in arguments[divider + 1:]:
        if name in skipped:
            print(f"SKIP {name}: {skipped[name]}")
            continue
        log = cases.get(name)
        reasons = judge(Expectations(folder, name), log)
        if reasons:
            failed += 1
            print(f"FAIL {name}: {reasons[0]}")
            for reason in reasons[1:]:
                print(f"     {reason}")
        else:
            passed += 1
            print(f"PASS {name}")
        for figure, value in (log.figures() if log else {}).items():
            print(f"     {figure} {value:g}")
    tail = f", {len(skipped)} skipped" if skipped else ""
    print(f"{passed} passed, {failed} failed{tail}")
    return 1 if failed else 0


def main(arguments):
    try:
        if len(arguments) >= 2 and arguments[0] == "plan":
            return plan(pathlib.Path(arguments[1]), arguments[2:])
        if len(arguments) >= 3 and arguments[0] == "verdict" and "--" in arguments:
            return verdict(pathlib.Path(arguments[1]), arguments[2:])
    except (Malformed, OSError, ValueError) as error:
        print(f"judge.py: {error}", file=sys.stderr)
        return 2
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
