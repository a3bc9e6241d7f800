#!/usr/bin/env python3
"""How the program with windows starts: launch_test.py PROGRAM PROVIDER FIRST-PROGRAM

FIRST-PROGRAM is the one that people start; it becomes the other. Runs below `umockdev-wrapper`.
"""

import signal
import subprocess

import dbus
import dbus.service

from desktop_case import DesktopCase
from desktop_session import PATIENCE

UNAVAILABLE = "MultitouchSupport unavailable"
NO_PANEL = ("This desktop has no place for the icon. Open Velotap again to get back to these "
            "settings.")
UNKNOWN = "velotap: unknown option --Devices ignored (see --help)\n"


class Notices(dbus.service.Object):
    """Shows what programs tell people."""

    def __init__(self, bus):
        self.heard = []
        self.name = dbus.service.BusName("org.freedesktop.Notifications", bus)
        super().__init__(bus, "/org/freedesktop/Notifications")

    @dbus.service.method("org.freedesktop.Notifications", in_signature="susssasa{sv}i",
                         out_signature="u")
    def Notify(self, program, _replaces, _icon, _title, text, _buttons, _hints, _patience):
        self.heard.append((str(program), str(text)))
        return len(self.heard)


class LaunchTest(DesktopCase):
    arguments = ("program_path", "provider", "first_path")

    def setUp(self):
        self.make_devices(plugged=1)
        self.make_host()

    def answer(self, *options):
        """Of a program that ends by itself, without a display."""
        told = subprocess.run([self.program_path, *options], capture_output=True, text=True,
                              check=True, timeout=20,
                              env={"PATH": "/usr/bin:/bin", "LD_PRELOAD": "",
                                   "VELOTAP_MULTITOUCH_LIBRARY": self.provider})
        self.assertEqual(told.stderr, "")
        return told.stdout

    def test_an_unknown_option_is_named_once_and_it_starts(self):
        for path in (self.program_path, self.first_path):
            self.start({"accessibilitySetupPresented": True}, arguments=["--Devices"], path=path)
            self.await_item()
            self.assertEqual(self.program.told().count(UNKNOWN), 1, path)
            self.program.process.send_signal(signal.SIGTERM)
            self.comes(self.program.ended, "it ends")
            self.assertEqual(self.program.process.returncode, 0)
            self.watcher.items.clear()

    def test_answers_need_no_display(self):
        self.assertTrue(self.answer("--devices", "--version").startswith("multitouch devices: "))
        self.assertRegex(self.answer("--version"), r"^velotap [0-9.]+\n$")
        self.assertIn("--background", self.answer("--nonsense", "--help"))

    def test_without_the_multitouch_library_it_says_so_and_ends(self):
        self.provider = "/nowhere/library.so"
        self.start({"accessibilitySetupPresented": True})
        self.comes(lambda: self.windows.titles() == [UNAVAILABLE], "it says what is missing")
        self.windows.press("OK", window=UNAVAILABLE)
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode, 0)
        self.assertEqual(self.watcher.items, [], "nothing else was started")

    def test_without_a_panel_it_says_so_once_and_can_be_reached(self):
        self.stop_host()
        notices = Notices(self.bus)
        self.addCleanup(notices.remove_from_connection)
        self.start({"accessibilitySetupPresented": True})
        self.comes(lambda: notices.heard, "it says that nothing shows it", patience=PATIENCE * 2)
        self.assertEqual(self.program.again(), 0)
        self.comes(lambda: self.windows.titles() == ["General"], "starting it again opens it")
        self.assertEqual(notices.heard, [("Velotap", NO_PANEL)])
        self.serve_host()
        self.await_item()
        self.assertEqual(len(notices.heard), 1)

    def test_hidden_it_can_be_reached(self):
        self.start({"accessibilitySetupPresented": True, "hideStatusBarIcon": True})
        self.comes(lambda: self.bus.name_has_owner("app.norwend.velotap"), "it runs")
        self.assertEqual(self.program.again(), 0)
        self.comes(lambda: self.windows.titles() == ["General"], "starting it again opens it")
        self.assertEqual(self.watcher.items, [])


if __name__ == "__main__":
    LaunchTest.main()
