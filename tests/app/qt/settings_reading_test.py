#!/usr/bin/env python3
"""What a screen reader finds in the settings window: settings_reading_test.py PROGRAM PROVIDER"""

import sys
import unittest

import pyatspi

from desktop_session import until
from desktop_world import Devices
from settings_session import BUTTONS, TABS, TOGGLES, SettingsCase, walk

KINDS = {"push button": "button", "check box": "switch", "toggle button": "switch",
         "text": "field", "entry": "field", "radio button": "choice", "panel": "group"}

GENERAL = """
field Search settings
heading Accessibility permission required
label Without this permission Velotap cannot read touches or send clicks.
button Accessibility Setup…
switch Enable Velotap
button What gestures need
heading Devices
button Trackpad
button Magic Mouse
button Open Gestures
button Open Tuning
heading Startup and menu bar
switch Launch at Login
switch Left-click toggles Velotap
switch Hide menu bar icon
heading This desktop
label Access to devices
label No rule of the system opens your trackpads and mice to Velotap yet.
label App in front
label This desktop does not tell which app is in front, so app rules cannot apply. \
Gestures work everywhere.
heading Updates
switch Check for updates automatically
label This build does not look for updates.
button Check Now
"""

GESTURES = """
heading Gestures
group Device
choice Trackpad
choice Magic Mouse
label Not connected
button Try a middle click
field Search gestures
button Filter
label 3 of 7 gestures on
heading Middle click
button Explain Click with one finger in center
switch Click with one finger in center
button Explain Click with two fingers
switch Click with two fingers
button Explain Click with three fingers
switch Click with three fingers
label This gesture waits for the Accessibility permission.
button Accessibility Setup…
button Explain Tap with three fingers
switch Tap with three fingers
label This gesture waits for the Accessibility permission.
button Accessibility Setup…
heading More gestures
button Explain Pinch to zoom
switch Pinch to zoom
label This gesture waits for the Accessibility permission.
button Accessibility Setup…
button Explain Rotate with two fingers
switch Rotate with two fingers
button Explain Three-finger swipe → Back/Forward
switch Three-finger swipe → Back/Forward
heading All gestures of this device
button Turn Off All…
button Restore Defaults
label Puts every gesture of this device back to its original setting.
"""


class SettingsReadingTest(SettingsCase):
    """On a made-up computer that does not let the program at its devices."""

    @classmethod
    def setUpClass(cls):
        cls.devices = Devices()
        cls.more = cls.devices.environment

    def read(self):
        """The pane in front, a line for each thing, in the order in which it is met."""
        lines = []
        for frame in self.application:
            if frame.getRoleName() == "notification":
                continue
            for part in frame:
                if part.getRoleName() == "page tab list":
                    continue
                for node in walk(part):
                    role = node.getRoleName()
                    lines.append(f"{KINDS.get(role, role)} {node.name}")
        return lines

    def reads(self, wanted):
        wanted = wanted.strip().split("\n")
        self.assertTrue(until(lambda: self.read() == wanted),
                        "\n".join(["it reads:", *self.read()]))

    def test_each_pane_reads_as_it_looks(self):
        self.reads(GENERAL)
        self.press(TABS, "Gestures")
        self.reads(GESTURES)
        self.press(TABS, "General")
        self.reads(GENERAL)

    def test_what_is_folded_is_heard_once_it_is_unfolded(self):
        heading = self.press(BUTTONS, "What gestures need")
        self.assertEqual(heading.description, "Needs attention")
        self.reads(GENERAL.replace("button What gestures need\n", """button What gestures need
label Enable Velotap
label Ready
label Accessibility permission
label Needs attention
button Accessibility Setup…
label Touch and click listeners
label Needs attention
button Try Again
"""))

    def test_a_switch_says_why_it_cannot_act_and_what_it_does(self):
        self.press(TABS, "Gestures")
        name = "Click with three fingers"
        self.assertEqual(self.get(TOGGLES, name).description,
                         "This gesture waits for the Accessibility permission.")
        self.press(BUTTONS, f"Explain {name}")
        self.assertTrue(until(
            lambda: len(self.find(TOGGLES, name).description.split(". ")) > 1),
            self.find(TOGGLES, name).description)
        self.assertEqual(self.get(TOGGLES, "Rotate with two fingers").description, "")

    def test_states_are_told(self):
        self.press(TABS, "Gestures")
        for toggle, on in (("Click with three fingers", True), ("Rotate with two fingers", False)):
            self.assertEqual(self.checked(TOGGLES, toggle), on)
        self.assertTrue(self.has(("radio button",), "Magic Mouse", pyatspi.STATE_CHECKED))
        self.assertTrue(self.has(TABS, "Gestures", pyatspi.STATE_SELECTED))
        self.assertFalse(self.has(TABS, "General", pyatspi.STATE_SELECTED))


if __name__ == "__main__":
    SettingsReadingTest.program_path, SettingsReadingTest.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
