#!/usr/bin/env python3
"""The software that the notices name, against what is used: notices_test.py PROGRAM NOTICES"""

import os
import pathlib
import re
import subprocess
import sys
import unittest

# What every program of the system runs on.
RUNTIME = ("libc.so", "libm.so", "libgcc_s.so", "libstdc++.so", "ld-linux", "libasan.so",
           "libubsan.so")
# Opened where the usual one is missing; both are the same interface.
STAND_INS = ("libelogind.so", "libbasu.so")
LIBRARY = re.compile(rb"lib[A-Za-z0-9_+-]+\.so\.[0-9]+")


def libraries(program):
    """Linked or named to be opened: both stand in the program by their file names."""
    names = {name.decode() for name in LIBRARY.findall(pathlib.Path(program).read_bytes())}
    return sorted(name for name in names if not name.startswith(RUNTIME + STAND_INS))


def path_of(library):
    cache = subprocess.run(["/sbin/ldconfig", "-p"], capture_output=True, text=True, check=True)
    for line in cache.stdout.splitlines():
        if line.split() and line.split()[0] == library:
            return os.path.realpath(line.split("=> ")[1])
    raise AssertionError(f"{library} is not on this system")


def package_of(library):
    """The package that brings it; merged folders are known by either name."""
    path = path_of(library)
    for candidate in (path, path.removeprefix("/usr"), "/usr" + path):
        found = subprocess.run(["dpkg-query", "-S", candidate], capture_output=True, text=True,
                               check=False)
        if found.returncode == 0:
            return found.stdout.split(":")[0]
    raise AssertionError(f"no package brings {path}")


class NoticesTest(unittest.TestCase):
    program = ""
    notices = ""

    def named(self):
        text = pathlib.Path(self.notices).read_text(encoding="utf-8")
        headings = re.findall(r"^=== (.*) ===$", text, re.MULTILINE)
        return {package for heading in headings for package in heading.split(", ")}

    def test_every_library_is_named(self):
        found = libraries(self.program)
        self.assertIn("libQt6Quick.so.6", found)
        self.assertIn("libsystemd.so.0", found, "what is opened at run time counts as well")
        packages = {package_of(library) for library in found}
        self.assertEqual(packages - self.named(), set())

    def test_what_it_carries_is_named(self):
        self.assertLessEqual({"fonts-inter", "nlohmann-json3-dev"}, self.named())

    def test_each_heading_is_followed_by_terms(self):
        text = pathlib.Path(self.notices).read_text(encoding="utf-8")
        for part in re.split(r"^=== .* ===$", text, flags=re.MULTILINE)[1:]:
            self.assertGreater(len(part.strip()), 100)
            self.assertRegex(part, "(?i)licen[cs]e")


if __name__ == "__main__":
    NoticesTest.program, NoticesTest.notices = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
