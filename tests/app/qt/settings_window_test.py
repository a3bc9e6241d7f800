#!/usr/bin/env python3
"""The settings window through the accessibility bus: settings_window_test.py PROGRAM PROVIDER"""

import getpass
import os
import pathlib
import socket
import sys
import unittest

import pyatspi
from gi.repository import GLib

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


class SupportSnapshotTest(SettingsCase):
    """What a person hands to strangers, as the program itself writes it."""

    settings = {**SettingsCase.settings, "maxTapDurationMs": 321,
                "ignoredApps": ["org.secret.Editor"],
                "keystrokeZoomApps": ["org.secret.Viewer", "org.secret.Painter"]}

    def snapshot(self):
        self.press(TABS, "About")
        self.press(BUTTONS, "Support Snapshot…")
        found = []

        def shows():
            for node in self.nodes():
                if node.getRoleName() in FIELDS and node.name == "Support Snapshot":
                    text = node.queryText()
                    # Qt ends the lines of a document with a character of its own.
                    found.append(text.getText(0, text.characterCount).replace("\u2029", "\n"))
            return found and found[-1]

        self.assertTrue(until(shows))
        return found[-1]

    def press_what_asks(self, name):
        """A button behind which the program waits for an answer, and answers late itself."""
        try:
            self.press(BUTTONS, name)
        except GLib.GError:
            pass

    def test_tells_the_settings_and_nobodys_names(self):
        text = self.snapshot()
        self.assertIn("Max tap duration: 321", text)
        self.assertIn("Velotap off in these apps: 1\n", text)
        self.assertIn("Send zoom keyboard shortcuts: 2\n", text)
        self.assertIn("org.secret.Editor", self.program.settings()["ignoredApps"])
        for secret in ("secret", socket.gethostname(), getpass.getuser(), self.program.home.name,
                       str(pathlib.Path(self.program_path).parent), os.getcwd()):
            # A host called "a" would be found in any text.
            if len(secret) > 2:
                self.assertNotIn(secret, text)

    def test_saving_may_be_given_up_or_done(self):
        text = self.snapshot()
        self.press_what_asks("Save…")
        self.press(BUTTONS, "Cancel")
        self.assertTrue(self.gone(BUTTONS, "Cancel"))
        self.assertEqual([n.name for n in self.nodes() if "could not" in n.name], [])
        file = pathlib.Path(self.program.home.name, "kept.txt")
        self.press_what_asks("Save…")
        field = self.get(FIELDS, "File name:")
        field.queryEditableText().setTextContents(str(file))
        self.press(BUTTONS, "Save")
        self.assertTrue(until(file.exists))
        self.assertEqual(file.read_text(encoding="utf-8"), text)


if __name__ == "__main__":
    SettingsCase.program_path, SettingsCase.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
