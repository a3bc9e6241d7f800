#!/usr/bin/env python3
"""The settings window through the accessibility bus: settings_window_test.py PROGRAM PROVIDER"""

import sys
import unittest

import pyatspi

from desktop_session import until
from settings_session import BUTTONS, CHOICES, FIELDS, TABS, TOGGLES, SettingsCase

PANES = {"General": "Enable Velotap", "Gestures": "Search gestures", "Tuning": "Max tap duration",
         "Apps": "Search app rules", "About": "Contact Support…"}
PRESSED = BUTTONS + TOGGLES + TABS + CHOICES


class SettingsWindowTest(SettingsCase):
    def chosen(self, pane):
        return until(lambda: self.has(TABS, pane, pyatspi.STATE_SELECTED))

    def test_switches_gestures_and_undoes(self):
        self.press(TABS, "Gestures")
        self.assertFalse(self.checked(TOGGLES, "Click with two fingers"))
        self.press(TOGGLES, "Click with two fingers")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is True))
        self.assertTrue(self.checked(TOGGLES, "Click with two fingers"))

        self.press(BUTTONS, "Turn Off All…")
        self.press(BUTTONS, "Cancel")
        self.assertTrue(self.gone(BUTTONS, "Cancel"))
        self.assertIs(self.program.settings().get("mouseClick2"), True)
        self.press(BUTTONS, "Turn Off All…")
        self.press(BUTTONS, "Turn Off")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is False))
        self.press(BUTTONS, "Undo")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is True))
        self.assertTrue(self.gone(BUTTONS, "Undo"))

    def test_filters_and_shows_all_again(self):
        self.press(TABS, "Gestures")
        self.press(BUTTONS, "Restore Defaults")
        self.press(BUTTONS, "Filter")
        self.assertTrue(until(lambda: self.checked(BUTTONS, "Filter")), "it is open")
        self.press(CHOICES, "More gestures")
        self.assertTrue(until(lambda: self.checked(CHOICES, "More gestures")))
        self.assertTrue(self.gone(TOGGLES, "Click with two fingers"))
        self.get(TOGGLES, "Pinch to zoom")
        self.press(TOGGLES, "Only gestures you changed")
        self.get(BUTTONS, "Filter (2 active)")
        self.press(BUTTONS, "Show All Gestures")
        self.get(TOGGLES, "Click with two fingers")
        self.get(BUTTONS, "Filter")

    def test_explains_one_gesture_at_a_time(self):
        self.press(TABS, "Gestures")
        self.press(BUTTONS, "Explain Click with two fingers")
        self.get(BUTTONS, "Hide Explanation")
        self.press(BUTTONS, "Explain Pinch to zoom")
        self.get(BUTTONS, "Explain Click with two fingers")
        self.press(BUTTONS, "Hide Explanation")
        self.get(BUTTONS, "Explain Pinch to zoom")

    def test_a_device_card_leads_to_its_gestures(self):
        self.press(BUTTONS, "Trackpad")
        self.assertTrue(self.chosen("Gestures"))
        self.get(TOGGLES, "Tap with four fingers")
        self.assertTrue(until(
            lambda: self.program.settings().get("settings.gestureDevice") == "trackpad"))

    def test_hiding_the_icon_is_asked_first(self):
        self.press(TOGGLES, "Hide menu bar icon")
        self.get(("dialog",), "Hide the menu bar icon?")
        self.assertFalse(self.checked(TOGGLES, "Hide menu bar icon"))
        self.press(BUTTONS, "Hide Icon")
        self.assertTrue(until(lambda: self.program.settings().get("hideStatusBarIcon") is True))
        self.assertTrue(until(lambda: self.checked(TOGGLES, "Hide menu bar icon")))
        self.press(TOGGLES, "Hide menu bar icon")
        self.assertTrue(until(lambda: self.program.settings().get("hideStatusBarIcon") is False))

    def test_every_pane_opens_and_every_control_has_a_name(self):
        for pane, something in list(PANES.items())[1:] + list(PANES.items())[:1]:
            self.press(TABS, pane)
            self.assertTrue(self.chosen(pane))
            self.get(FIELDS + PRESSED + ("slider",), something)
            for node in self.nodes():
                role = node.getRoleName()
                if role in PRESSED + FIELDS + ("slider",):
                    self.assertTrue(node.name, f"a {role} of {pane} in {node.parent.name}")
                if role in PRESSED:
                    actions = node.queryAction()
                    self.assertTrue({actions.getName(i) for i in range(actions.nActions)}
                                    & {"Press", "Toggle"}, f"{node.name} of {pane}")
                if role == "slider":
                    value = node.queryValue()
                    self.assertLess(value.minimumValue, value.maximumValue, node.name)


if __name__ == "__main__":
    SettingsWindowTest.program_path, SettingsWindowTest.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
