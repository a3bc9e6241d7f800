"""As much of udev's rule language as our rules use, to ask what they do to a device.

An operator or key that is not known here is an error, so that a rule cannot pass by being
misunderstood. What a device is: a dictionary from a key as the rules write it ("KERNEL",
"ENV{ID_INPUT_MOUSE}", "ATTRS{id/vendor}") to its value.
"""

import fnmatch
import re

TOKEN = re.compile(r'\s*([A-Z]+(?:\{[^}]+\})?)\s*(==|!=|\+=|=)\s*"([^"]*)"\s*(?:,|$)')
MATCHED = re.compile(r"^(ACTION|SUBSYSTEM|KERNEL|ENV\{.+\}|ATTRS\{.+\})$")
ASSIGNED = {("TAG", "+="), ("OPTIONS", "+="), ("GOTO", "="), ("LABEL", "=")}


class Malformed(Exception):
    pass


def parse(text):
    """Lines as lists of (key, operator, value)."""
    rules = []
    for number, line in enumerate(text.split("\n"), 1):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        rule, position = [], 0
        while position < len(line):
            token = TOKEN.match(line, position)
            if token is None:
                raise Malformed(f"line {number}: {line[position:]}")
            key, operator, value = token.groups()
            known = (MATCHED.match(key) if operator in ("==", "!=")
                     else (key, operator) in ASSIGNED)
            if not known:
                raise Malformed(f"line {number}: {key} {operator}")
            rule.append((key, operator, value))
            position = token.end()
        rules.append(rule)
    return rules


def matches(device, key, operator, pattern):
    value = device.get(key, "")
    hit = any(fnmatch.fnmatchcase(value, alternative) for alternative in pattern.split("|"))
    return hit == (operator == "==")


def apply(rules, device):
    """The tags and options that the device gets, as "TAG uaccess"."""
    gained = set()
    target = None
    for rule in rules:
        labels = [value for key, operator, value in rule if key == "LABEL"]
        if target is not None and target not in labels:
            continue
        target = None
        conditions = [r for r in rule if r[1] in ("==", "!=")]
        if not all(matches(device, *condition) for condition in conditions):
            continue
        for key, operator, value in rule:
            if operator == "+=":
                gained.add(f"{key} {value}")
            elif key == "GOTO":
                target = value
    if target is not None:
        raise Malformed(f"no label {target}")
    return gained
