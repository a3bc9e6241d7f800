#!/usr/bin/env python3
"""The program on a disk without room: full_disk_test.py PROGRAM PROVIDER THROWING-PROVIDER

Whatever it would write, it goes on, the next start works, nothing that was kept is lost, and
nothing is offered twice. Runs below `umockdev-wrapper`.
"""

import pathlib
import signal

from desktop_case import DISABLED, DesktopCase
from desktop_panels import hand, visible_windows
from desktop_session import until
from small_disk import small_disk

OFFER = "Velotap crashed last time"
LOGIN_FAILED = "Could not update Launch at Login"
KEPT = {"accessibilitySetupPresented": True, "maxTapDurationMs": 321,
        "lowercaseIdentityMigrationCompleted": True}


class FullDiskTest(DesktopCase):
    arguments = ("program_path", "provider", "throwing")

    def setUp(self):
        self.disk = self.enterContext(small_disk())
        self.make_devices(plugged=1)
        self.make_host()

    def launch(self, settings):
        self.start(settings, folder=self.disk.folder)
        self.item = self.await_item()

    def fill(self):
        self.disk.fill(self.program)

    def empty(self):
        self.disk.empty(self.program)

    def end(self, number=signal.SIGTERM):
        self.watcher.items.clear()
        self.program.process.send_signal(number)
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode,
                         0 if number == signal.SIGTERM else -number)

    def start_again(self, offered=None):
        self.program.start()
        if offered:
            self.comes(lambda: OFFER in self.windows.titles(), "the report is offered")
            self.windows.press(offered, window=OFFER)
        self.item = self.await_item()
        self.assertNotIn(OFFER, self.windows.titles())

    def state(self, name):
        return pathlib.Path(self.program.home.name, "state", name)

    def reports(self):
        return [report for report in self.state("Velotap/Crashes").iterdir()
                if report.stat().st_size]

    def leftovers(self):
        """Of files that were begun and not finished."""
        names = [path.name for path in pathlib.Path(self.program.home.name).rglob("*")]
        return [name for name in names
                if "unfinished" in name or "tmp" in name or name.endswith("~")]

    def test_settings_and_login_item(self):
        self.launch(KEPT)
        self.fill()
        self.item.activate()
        self.comes(lambda: self.item.label() == DISABLED, "the switch is in force")
        self.comes(lambda: str(self.program.settings_file) in self.program.told(), "it is told of")
        self.assertEqual(self.program.settings(), KEPT)
        self.item.row("Launch at Login").choose()
        self.comes(lambda: LOGIN_FAILED in self.windows.titles(), "it says what failed")
        self.windows.press("OK", window=LOGIN_FAILED)
        self.assertFalse(self.item.row("Launch at Login").checked)
        self.assertEqual(self.leftovers(), [])

        self.end()
        self.start_again()
        self.assertEqual(self.program.settings(), KEPT)
        self.empty()
        self.item.activate()
        self.comes(lambda: self.setting("enabled") is False, "there is room again")
        self.assertEqual(self.program.settings(), {**KEPT, "enabled": False})
        self.item.row("Launch at Login").choose()
        self.comes(lambda: self.item.row("Launch at Login").checked, "for this too")

    def test_places_of_windows(self):
        self.launch(KEPT)
        self.open_and_close_settings()
        place = self.state("velotap/windows.ini")
        self.comes(place.exists, "the window's place is kept")
        before = place.read_bytes()
        self.assertGreater(len(before), 0)
        self.fill()
        self.open_and_close_settings(width=900)
        self.end()
        self.assertEqual(place.read_bytes(), before)
        self.start_again()
        self.empty()
        self.open_and_close_settings(width=950)
        self.end()
        self.assertNotEqual(place.read_bytes(), before, "it would have been written")
        self.assertEqual(self.leftovers(), [])

    def open_and_close_settings(self, width=None):
        self.item.row("Settings…").choose()
        self.comes(lambda: self.windows.titles() == ["General"], "the window opens")
        for window in visible_windows("velotap"):
            if width:
                hand("windowsize", "--sync", window, width, 700)
            hand("windowfocus", "--sync", window, "key", "ctrl+w")
        self.comes(lambda: self.windows.titles() == [], "and closes")

    def test_a_crash_that_cannot_be_noted_is_not_offered(self):
        self.launch(KEPT)
        self.fill()
        self.end(signal.SIGSEGV)
        self.assertEqual(self.reports(), [])
        self.start_again()
        self.end()
        # What was thrown cannot be written either, nor half of it.
        self.program.start(self.throwing)
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode, -signal.SIGABRT)
        self.watcher.items.clear()
        self.assertEqual((self.reports(), self.leftovers()), ([], []))
        self.start_again()
        self.assertEqual(self.program.settings(), KEPT)

    def test_a_report_is_offered_until_it_is_settled_and_never_again(self):
        self.launch(KEPT)
        self.end(signal.SIGBUS)
        self.fill()
        self.start_again(offered="Later")
        self.end()
        self.start_again(offered="Delete")
        self.assertEqual(self.reports(), [])
        self.end()
        self.start_again()

    def test_the_first_start_of_all(self):
        self.launch({})
        self.end()
        self.program.settings_file.unlink()
        self.fill()
        self.start_again()
        self.assertFalse(self.program.settings_file.exists(), "nor a part of it")
        self.end()
        self.empty()
        self.start_again()
        self.item.activate()
        self.assertTrue(until(lambda: self.setting("enabled") is False))


if __name__ == "__main__":
    FullDiskTest.main()
