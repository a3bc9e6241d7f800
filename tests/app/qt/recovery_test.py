#!/usr/bin/env python3
"""The program with windows after a bad end.

recovery_test.py PROGRAM PROVIDER THROWING-PROVIDER. Runs below `umockdev-wrapper`.
"""

import pathlib
import signal

from desktop_case import DesktopCase

OFFER = "Velotap crashed last time"
FATAL = (signal.SIGABRT, signal.SIGSEGV, signal.SIGBUS, signal.SIGILL, signal.SIGFPE,
         signal.SIGTRAP)


class RecoveryTest(DesktopCase):
    arguments = ("program_path", "provider", "throwing")

    def setUp(self):
        self.make_devices()
        self.make_host()
        self.start({"accessibilitySetupPresented": True, "maxTapDurationMs": 321}, PATH="/nowhere")

    def end_with(self, number):
        self.watcher.items.clear()
        self.program.process.send_signal(number)
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode,
                         -number if number != signal.SIGTERM else 0)

    def reports(self):
        crashes = pathlib.Path(self.program.home.name, "state", "Velotap", "Crashes")
        return [report for report in crashes.iterdir() if report.stat().st_size]

    def answer(self, button):
        """Starts the program, which offers one report."""
        self.program.start()
        self.comes(lambda: OFFER in self.windows.titles(), "the report is offered")
        self.windows.press(button, window=OFFER)
        self.await_item()
        self.assertNotIn(OFFER, self.windows.titles(), "one offer for a launch")

    def test_every_fatal_signal_is_offered_until_it_is_deleted(self):
        for number in FATAL:
            self.await_item()
            self.end_with(number)
            self.assertEqual([report.read_text() for report in self.reports()],
                             [f"Velotap crash: signal {number:d}\n"])
            self.answer("Delete")
            self.assertEqual(self.reports(), [])
        self.end_with(signal.SIGSEGV)
        self.answer("Later")
        self.assertEqual(len(self.reports()), 1)
        self.end_with(signal.SIGTERM)
        # No program can be found that takes a letter, so the report is kept.
        self.answer("Email Report")
        self.assertEqual(len(self.reports()), 1)
        self.assertEqual(self.program.settings()["maxTapDurationMs"], 321)

    def test_a_killed_program_starts_again_and_offers_nothing(self):
        self.await_item()
        self.end_with(signal.SIGKILL)
        self.program.start()
        self.await_item()
        self.assertEqual(self.windows.titles(), [])
        self.assertEqual(self.reports(), [])
        self.assertEqual(self.program.settings()["maxTapDurationMs"], 321)

    def test_an_exception_that_nobody_catches_leaves_its_reason(self):
        self.await_item()
        self.end_with(signal.SIGTERM)
        self.program.start(self.throwing)
        self.comes(self.program.ended, "it ends")
        self.watcher.items.clear()
        self.assertEqual(self.program.process.returncode, -signal.SIGABRT)
        [report] = self.reports()
        lines = report.read_text().splitlines()
        self.assertEqual(lines[:2], ["Uncaught exception: std::runtime_error",
                                     "Reason: out of order"])
        self.assertGreater(len(lines), 3, "where it came from")
        self.answer("Delete")
        self.assertEqual(self.reports(), [])


if __name__ == "__main__":
    RecoveryTest.main()
