#!/usr/bin/env python3
"""A walk through the whole program: walk_test.py PROGRAM PROVIDER WINDOW-PROGRAM

What a person sees in the panel and what a screen reader finds in the window must agree after every
step, whoever took it: the person, a device, the login manager, or the system that gives and takes
access. Runs below `umockdev-wrapper`.
"""

import itertools
import subprocess
import time

import accessible
from desktop_case import ACTIVE, DISABLED, UNAVAILABLE, DesktopCase
from desktop_session import until
from desktop_world import Screen, SystemBus
from menu_items import CONFLICT, TRIGGERS

# What the item says, the line at the top of the menu, and the heading in the window.
STATES = {
    "working": (ACTIVE, "Gestures are working"),
    "paused": (DISABLED, "Velotap is paused"),
    "refused": (UNAVAILABLE, "Accessibility permission required"),
    "stuck": (UNAVAILABLE, "Gestures could not start"),
}
ATTACHED = "multitouch device attached — restart in 2s"
DETACHED = "multitouch device detached — pausing and restarting in 2s"
DISPLAY = "display reconfigured — restart in 2s"
SLEEP = "system will sleep — pausing listeners"
WAKE = "system woke — restart in 10s"
RESTARTING = "restarting listeners"
NOTES = (ATTACHED, DETACHED, DISPLAY, SLEEP, WAKE, RESTARTING)
AFTER_WAKING = 25  # seconds; the program waits ten of them for the devices to come back


class WalkTest(DesktopCase):
    arguments = ("program_path", "provider", "window_path")

    def setUp(self):
        self.make_devices(plugged=2)
        self.system = self.enterContext(SystemBus())
        self.enterContext(Screen(self.window_path, "Editor"))
        self.make_host()
        self.start({"settings.gestureDevice": "mouse"}, VELOTAP_DEBUG="1",
                   **self.system.environment)
        self.item = self.await_item()

    def agree(self, state, patience=10):
        """Item, menu and window come to say this state."""
        label, heading = STATES[state]
        self.comes(lambda: self.item.label() == label, f"{state}: the item says {label}",
                   patience=patience)
        self.comes(lambda: self.windows.shows(heading, ("heading",), "General"),
                   f"{state}: the window says {heading}")
        rows = self.item.menu()
        self.assertEqual(rows[0].title, heading)
        self.assertFalse(rows[0].enabled)
        self.assertEqual(rows[0].visible, state != "refused", "not twice the same")
        self.assertEqual(rows[1].checked, state != "paused")
        self.assertEqual(self.windows.checked("Enable Velotap"), state != "paused")
        self.assertEqual(rows[2].visible, state == "refused")
        self.assertEqual(rows[3].visible, state == "stuck")
        self.assertEqual(rows[3].title, "Check gesture status…")

    def test_walk(self):
        self.assertEqual(self.windows.titles(), [], "nothing to explain, so no window")
        self.click_without_a_window()
        self.open_settings()
        self.look_at_the_menu()
        self.click_the_item()
        self.switch_gestures()
        self.ignore_the_front_application()
        self.lose_and_regain_the_permission()
        self.unplug_and_plug()
        self.change_the_screen()
        self.sleep_and_wake()
        self.item.row("Quit Velotap").choose()
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode, 0)

    def click_without_a_window(self):
        reader = accessible.Reader()
        self.addCleanup(reader.stop)
        # A program is known to readers a while after its start.
        self.comes(lambda: self.windows.application() is not None, "readers find the program")
        self.awaken(reader)
        self.item.activate()
        self.comes(lambda: reader.heard == ["Velotap turned off"], "it is spoken")
        self.item.activate()
        self.comes(lambda: reader.heard == ["Velotap turned off", "Velotap turned on"], "again")
        self.reader = reader

    def awaken(self, reader):
        """Until the program knows that somebody listens, of which nobody is told."""
        clicks = 0
        while not reader.heard:
            self.item.activate()
            clicks += 1
            self.assertLess(clicks, 20, "nothing is ever spoken")
            until(lambda: reader.heard, patience=1)
        if clicks % 2:
            self.item.activate()
        self.comes(lambda: reader.heard[-1] == "Velotap turned on", "it is as it was")
        reader.heard.clear()

    def open_settings(self):
        self.comes(lambda: self.item.find("Ignore Editor"), "another program is in front")
        self.assertEqual(self.program.again(), 0)
        self.comes(lambda: self.windows.titles() == ["General"], "one window")
        self.agree("working")
        self.assertEqual(self.program.again(), 0)
        self.item.row("Settings…").choose()
        self.agree("working")
        self.assertEqual(self.windows.titles(), ["General"], "still one")

    def look_at_the_menu(self):
        rows = self.item.menu()
        self.assertEqual(
            [None if row.separator else row.title for row in rows],
            ["Gestures are working", "Enabled", "Accessibility permission required…",
             "Check gesture status…", None, "Ignore Editor", "Settings…", None, "Magic Mouse",
             "Trackpad", None, "Check for Updates…", "Launch at Login", "Quit Velotap"])
        self.assertEqual([row.shortcut for row in rows if row.shortcut],
                         [["Control+,"], ["Control+Q"]])
        self.assertFalse(rows[11].enabled, "this build names no feed of updates")
        self.assertTrue(self.windows.find("This build does not look for updates."))
        for device, triggers in TRIGGERS.items():
            self.assertEqual(
                [None if row.separator else row.title for row in self.item.row(device).rows],
                [trigger and trigger[0] for trigger in triggers])

    def click_the_item(self):
        self.item.activate()
        self.agree("paused")
        self.assertFalse(self.setting("enabled"))
        self.item.activate()
        self.agree("working")
        self.item.row("Enabled").choose()
        self.agree("paused")
        self.windows.press("Enable Velotap", ("check box",))
        self.agree("working")

    def switch_gestures(self):
        for device, triggers in TRIGGERS.items():
            for title, key in filter(None, triggers):
                before = self.item.row(title, device).checked
                for now in (not before, before):
                    self.item.row(title, device).choose()
                    self.comes(lambda k=key, n=now: self.setting(k) is n, f"{key} is {now}")
                    if (key, now) == ("mouseSwipe3Nav", True):
                        self.comes(lambda: CONFLICT in self.windows.titles(), "it is warned of")
                        self.windows.press("OK", window=CONFLICT)
                        self.comes(lambda: self.windows.titles() == ["General"], "once")
                    self.assertEqual(self.item.row(title, device).checked, now)
        # The window shows a gesture that the menu switches.
        self.windows.press("Gestures", ("page tab",))
        gesture = "Click with two fingers"
        self.comes(lambda: self.windows.find(gesture), "the gestures show")
        for now in (True, False):
            self.item.row("Click with Two Fingers", "Magic Mouse").choose()
            self.comes(lambda n=now: self.windows.checked(gesture) == n, f"{gesture} is {now}")
        self.windows.press("General", ("page tab",))

    def ignore_the_front_application(self):
        # Our own window is in front; the item names the application that was there before it.
        for now in (True, False):
            self.item.row("Ignore Editor").choose()
            self.comes(lambda n=now: (self.setting("ignoredApps", []) == ["Editor"]) == n,
                       f"ignored is {now}")
            self.assertEqual(self.item.row("Ignore Editor").checked, now)
        self.assertEqual(self.setting("ignoredApps"), [])

    def lose_and_regain_the_permission(self):
        self.devices.revoke()
        self.agree("refused")
        for _ in range(2):
            self.item.row("Accessibility permission required…").choose()
            self.comes(lambda: sorted(self.windows.titles()) == ["General", "Set Up Velotap"],
                       "one explanation")
        self.assertTrue(self.windows.find("Set Up Later", window="Set Up Velotap"))
        self.devices.grant()
        self.comes(lambda: self.windows.shows("Permission granted", ("heading",),
                                              "Set Up Velotap"), "the window moves on by itself")
        self.agree("working")
        self.comes(lambda: self.reader.heard.count("Permission granted") == 1, "it is spoken")
        self.windows.press("Try a middle click", window="Set Up Velotap")
        self.comes(lambda: self.windows.shows("Try a middle click", ("canvas", "drawing area")),
                   "the practice place is open")
        self.windows.press("Done")
        self.windows.press("General", ("page tab",))
        self.windows.press("Continue to Settings", window="Set Up Velotap")
        self.comes(lambda: self.windows.titles() == ["General"], "its work is done")

    def noted(self, since=0):
        """What the program has noted of the system and of its listeners; each once, however many
        notices of the kernel or the X server it was.
        """
        lines = [line.removeprefix("[Velotap] ") for line in self.program.printed()]
        return [note for note, _ in itertools.groupby(line for line in lines
                                                      if line in NOTES)][since:]

    def notes(self, since, *expected, **patience):
        self.comes(lambda: self.noted(since) == list(expected),
                   f"{expected} is noted, not {self.noted(since)}", **patience)

    def unplug_and_plug(self):
        since = len(self.noted())
        self.devices.unplug()
        self.agree("stuck")  # at once; what is left starts again by itself
        self.agree("working")
        self.notes(since, DETACHED, RESTARTING)
        self.comes(lambda: self.device_is("Magic Mouse", "Not connected"), "one is gone")
        self.devices.unplug()
        self.agree("stuck")
        self.comes(lambda: self.device_is("Trackpad", "Not connected"), "both are")
        self.notes(since, DETACHED, RESTARTING, DETACHED, RESTARTING)
        self.agree("stuck")  # there is nothing to start
        self.devices.plug()
        self.agree("working")
        since = len(self.noted())
        self.devices.plug()
        self.comes(lambda: self.device_is("Magic Mouse", "Connected"), "both are back")
        self.notes(since, ATTACHED, RESTARTING)
        self.agree("working")

    def change_the_screen(self):
        """The only display goes, and comes back."""
        since = len(self.noted())
        for change in ("--off", "--auto"):
            began = time.monotonic()
            subprocess.run(["xrandr", "--fb", "1280x900", "--output", "screen", change], check=True)
            self.agree("stuck")
            self.agree("working")
            self.assertGreaterEqual(time.monotonic() - began, 2)
        self.notes(since, DISPLAY, RESTARTING, DISPLAY, RESTARTING)

    def device_is(self, device, state):
        card = self.windows.find(device, ("push button",))
        return card is not None and card.description.startswith(state)

    def sleep_and_wake(self):
        since = len(self.noted())
        self.devices.unplug()  # would restart in two seconds, if the system did not sleep first
        self.notes(since, DETACHED)
        self.system.manager.PrepareForSleep(True)
        self.notes(since, DETACHED, SLEEP)
        self.agree("stuck")
        began = time.monotonic()
        self.system.manager.PrepareForSleep(False)
        self.notes(since, DETACHED, SLEEP, WAKE)
        self.agree("stuck")
        # Wireless devices come back long after; what comes meanwhile does not bring it forward.
        self.devices.plug()
        self.notes(since, DETACHED, SLEEP, WAKE, ATTACHED)
        self.agree("working", patience=AFTER_WAKING)
        self.assertGreaterEqual(time.monotonic() - began, 10)
        self.notes(since, DETACHED, SLEEP, WAKE, ATTACHED, RESTARTING)


if __name__ == "__main__":
    WalkTest.main()
