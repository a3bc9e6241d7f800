#!/usr/bin/env python3
"""The judge's own tests: each kind of check passes when it should and fails when it should."""

import io
import pathlib
import sys
import tempfile
import unittest
from contextlib import redirect_stderr, redirect_stdout

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import judge  # noqa: E402

LOG = """SeaBIOS
=== guest up 3.2
=== case tap
play| 10.000000 say lifted
case| figure rss-kb 1200
watch| button event5 velotap/pointer "P" BTN_MIDDLE press time=10.010 at=10.012
watch| button event5 velotap/pointer "P" BTN_MIDDLE release time=10.060 at=10.061
watch| motion event5 velotap/pointer "P" raw=1.50,-2
watch| motion event5 velotap/pointer "P" raw=2.50,4
=== end tap status=0 begun=3 ended=4
=== case broken
case| await_line: no line like 'x'
=== end broken status=1 begun=4 ended=5
=== case crash
kernel| [    5.1] WARNING: CPU: 0 PID: 1 at drivers/hid/hid-core.c:1
=== end crash status=0 begun=5 ended=6
=== case cut-off
watch| watching
"""


class JudgeTest(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self.temporary.name)
        self.addCleanup(self.temporary.cleanup)
        (self.folder / "names").write_text("# comment\npointer=velotap/pointer\n")
        self.logs = judge.parse_log(LOG)

    def reasons(self, expect, name="tap"):
        (self.folder / name).mkdir(exist_ok=True)
        (self.folder / name / "expect").write_text(expect)
        return judge.judge(judge.Expectations(self.folder, name), self.logs.get(name))

    def passes(self, expect):
        self.assertEqual(self.reasons(expect), [])

    def fails(self, expect):
        self.assertEqual(len(self.reasons(expect)), 1, expect)

    def test_counts(self):
        self.passes("exactly 2 watch: ^motion")
        self.fails("exactly 1 watch: ^motion")
        self.fails("exactly 3 watch: ^motion")
        self.passes("at-least 2 watch: ^motion")
        self.fails("at-least 3 watch: ^motion")
        self.passes("at-most 2 watch: ^motion")
        self.fails("at-most 1 watch: ^motion")
        self.passes("none watch: ^scroll")
        self.fails("none watch: ^motion")
        self.passes("none other: ^motion")

    def test_names_are_substituted(self):
        self.passes("exactly 1 watch: ^button \\S+ {pointer} .* press")

    def test_order(self):
        self.passes("order watch: press -> release -> motion")
        self.fails("order watch: release -> press")
        self.fails("order watch: press -> press")

    def test_sum(self):
        self.passes("sum 4 watch: raw=([^,]+),")
        self.passes("sum 2 watch: raw=[^,]+,(\\S+)")
        self.fails("sum 4.01 watch: raw=([^,]+),")

    def test_within(self):
        self.passes("within 12.1 play: lifted -> watch: press")
        self.fails("within 11.9 play: lifted -> watch: press")
        self.fails("within 100 watch: press -> play: lifted")
        self.fails("within 100 play: lifted -> watch: no such line")

    def test_figures(self):
        self.passes("figure rss-kb <= 1200")
        self.fails("figure rss-kb <= 1199")
        self.passes("figure rss-kb >= 1200")
        self.fails("figure rss-kb >= 1201")
        self.fails("figure cpu <= 5")

    def test_a_case_must_expect_something(self):
        self.assertEqual(self.reasons("needs velotap\n# nothing"), ["it expects nothing"])

    def test_what_went_wrong_in_the_machine_fails_a_case(self):
        met = "none watch: ^scroll"
        self.assertIn("status 1", self.reasons(met, "broken")[0])
        self.assertIn("WARNING", self.reasons(met, "crash")[0])
        self.assertIn("ended during", self.reasons(met, "cut-off")[0])
        self.assertIn("before this case", self.reasons(met, "never-begun")[0])

    def test_needs_are_programs_and_their_parts(self):
        (self.folder / "tap").mkdir()
        (self.folder / "tap" / "expect").write_text("needs lab\nneeds velotap {pointer}\n")
        out = io.StringIO()
        with redirect_stdout(out):
            self.assertEqual(judge.main(["plan", str(self.folder), "tap"]), 0)
        self.assertEqual(out.getvalue(), "tap counting 60 lab: velotap:velotap/pointer\n")

    def test_malformed_expectations_are_refused(self):
        for line in ("perhaps 1 watch: x", "exactly one watch: x", "exactly 1 watch x",
                     "exactly 1 watch: (", "within 5 watch: x", "figure x < 5",
                     "machine fast"):
            with self.assertRaises((judge.Malformed, ValueError), msg=line):
                self.reasons(line)

    def test_the_last_line_has_the_sums(self):
        self.reasons("exactly 2 watch: ^motion")
        self.reasons("none watch: ^scroll", "broken")
        self.reasons("none watch: ^scroll", "later")
        log = self.folder / "log"
        log.write_text(LOG)
        out = io.StringIO()
        with redirect_stdout(out):
            status = judge.main(["verdict", str(self.folder), "--skip=later:not built", str(log),
                                 "--", "tap", "broken", "later"])
        self.assertEqual(status, 1)
        lines = out.getvalue().splitlines()
        self.assertEqual(lines[0], "PASS tap")
        self.assertTrue(lines[2].startswith("FAIL broken: "))
        self.assertEqual(lines[-2:], ["SKIP later: not built", "1 passed, 1 failed, 1 skipped"])

    def test_bad_usage(self):
        with redirect_stderr(io.StringIO()):
            self.assertEqual(judge.main([]), 2)
            self.assertEqual(judge.main(["plan", str(self.folder), "no-such-case"]), 2)


if __name__ == "__main__":
    unittest.main()
