#!/usr/bin/env python3
"""The settings window with the keyboard alone: settings_keyboard_test.py PROGRAM PROVIDER"""

import subprocess
import sys
import unittest

import pyatspi

from desktop_session import until
from settings_session import BUTTONS, CHOICES, FIELDS, TABS, TOGGLES, KeyboardCase


class SettingsKeyboardTest(KeyboardCase):
    def entered(self, name):
        node = self.find(FIELDS, name)
        return node.queryText().getText(0, -1) if node is not None else None

    def test_search_opens_a_result(self):
        self.keys("ctrl+2")
        self.assertTrue(until(lambda: self.has(TABS, "Gestures", pyatspi.STATE_SELECTED)))
        self.keys("ctrl+f")
        self.await_focus("Search settings")
        self.type("rotate")
        self.get(BUTTONS, "Rotate with Two Fingers")
        self.keys("Tab")
        self.await_focus("Clear search")
        self.keys("Tab")
        self.await_focus("Rotate with Two Fingers")
        self.keys("Return")
        self.assertTrue(until(lambda: self.has(TABS, "Gestures", pyatspi.STATE_SELECTED)))
        self.await_focus("Gestures")
        # The pane is as it was left; Escape empties the field.
        self.keys("ctrl+f")
        self.await_focus("Search settings")
        self.keys("Escape")
        self.assertTrue(self.gone(BUTTONS, "Rotate with Two Fingers"))
        self.assertTrue(self.gone(BUTTONS, "Clear search"))

    def test_tab_follows_the_eye(self):
        self.keys("ctrl+2", "Tab")
        self.await_focus("Gestures")
        stops = [name for _, name in self.stops()]
        self.assertEqual(stops[:7],
                         ["Gestures", "Magic Mouse", "Try a middle click", "Search gestures",
                          "Filter", "Explain Click with one finger in center",
                          "Click with one finger in center"])
        self.assertLess(stops.index("Click with three fingers"), stops.index("Pinch to zoom"))
        self.assertIn("Turn Off All…", stops[-2:])
        self.assertEqual(len(stops), len(set(stops)) + stops.count("Accessibility Setup…") - 1,
                         "nothing stands twice in the way")

    def test_arrows_choose_panes_and_devices(self):
        self.keys("Tab")
        self.await_focus("General")
        self.keys("Right")
        self.await_focus("Gestures")
        self.assertTrue(until(lambda: self.has(TABS, "Gestures", pyatspi.STATE_SELECTED)))
        self.keys("Tab")
        self.await_focus("Magic Mouse")
        self.keys("Left")
        self.await_focus("Trackpad")
        self.assertTrue(until(lambda: self.checked(CHOICES, "Trackpad")))
        self.get(TOGGLES, "Tap with four fingers")
        self.keys("shift+Tab")
        self.await_focus("Gestures")
        self.keys("Left", "Left")
        self.await_focus("About")

    def test_a_question_is_answered_and_undone(self):
        self.keys("ctrl+2", "Tab")
        self.await_focus("Gestures")
        self.keys("shift+Tab")  # the last stop of the pane
        until(lambda: self.focused() is not None and self.focused()[1] != "Gestures")
        if self.focused()[1] == "Restore Defaults":
            self.keys("shift+Tab")
        self.await_focus("Turn Off All…")
        self.keys("space")
        self.await_focus("Cancel")
        self.keys("Escape")
        self.assertTrue(self.gone(BUTTONS, "Cancel"))
        self.await_focus("Turn Off All…")
        self.keys("Return")
        self.await_focus("Cancel")
        self.keys("shift+Tab")
        self.await_focus("Turn Off")
        self.keys("Return")
        self.assertTrue(until(lambda: self.program.settings().get("mouseTap3") is False))
        self.await_focus("Undo")
        self.keys("space")
        self.assertTrue(until(lambda: self.program.settings().get("mouseTap3") is True))

    def test_the_keys_of_every_window(self):
        self.keys("ctrl+4")
        self.assertTrue(until(lambda: self.has(TABS, "Apps", pyatspi.STATE_SELECTED)))
        self.keys("ctrl+comma")
        self.assertTrue(until(lambda: self.has(TABS, "General", pyatspi.STATE_SELECTED)))
        self.keys("ctrl+m")
        self.assertTrue(until(lambda: not self.is_active()), "it went down")
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.is_active), "and comes back, the same")
        self.keys("ctrl+q")
        self.assertTrue(until(self.program.ended))

    def test_it_comes_back_where_it_was(self):
        def frame():
            found = subprocess.run(["xdotool", "getactivewindow", "getwindowgeometry", "--shell"],
                                   check=True, capture_output=True, text=True).stdout.split()
            return found[1:5]  # X, Y, WIDTH, HEIGHT

        before = frame()
        self.assertEqual(before[2:], ["WIDTH=560", "HEIGHT=600"])
        subprocess.run(["xdotool", "getactivewindow", "windowsize", "--sync", "700", "520",
                        "windowmove", "--sync", "30", "60"], check=True)
        self.assertTrue(until(lambda: frame()[2:] == ["WIDTH=700", "HEIGHT=520"]))
        moved = frame()
        self.keys("ctrl+w")
        self.assertTrue(until(lambda: self.find(TABS, "General") is None))
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.is_active))
        self.assertTrue(until(lambda: frame() == moved), f"{frame()}, not {moved}, after closing")
        self.keys("ctrl+q")
        self.assertTrue(until(self.program.ended))
        self.program.start()
        self.assertTrue(until(self.is_listening))
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.find_application))
        self.assertTrue(until(self.is_active))
        self.assertTrue(until(lambda: frame() == moved), f"{frame()}, not {moved}, after a restart")

    def test_closing_forgets_what_was_looked_for(self):
        self.keys("ctrl+2")
        self.press(BUTTONS, "Filter")
        self.press(CHOICES, "More gestures")
        self.assertTrue(self.gone(TOGGLES, "Click with two fingers"))
        self.keys("ctrl+w")
        self.assertTrue(until(lambda: self.find(TABS, "General") is None), "nothing of it is left")
        self.assertFalse(self.program.ended())
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.is_active))
        self.keys("ctrl+2")
        self.get(TOGGLES, "Click with two fingers")
        self.get(BUTTONS, "Filter")


class LoginItemTest(KeyboardCase):
    """Where the folder of what starts at login should be there is something else."""

    def go_to(self, name):
        for _ in range(60):
            if (self.focused() or ("", ""))[1] == name:
                return
            before = self.focused()
            self.keys("Tab")
            until(lambda before=before: self.focused() not in (None, before), 2)
        self.fail(f"Tab does not get to {name}")

    def shows(self, text):
        return any(node.name == text for node in self.nodes())

    def test_what_failed_is_told_and_the_switch_shows_what_is_so(self):
        folder = self.program.settings_file.parents[1] / "autostart"
        folder.write_text("in the way", encoding="utf-8")
        self.go_to("Launch at Login")
        self.keys("space")
        self.assertTrue(until(lambda: self.shows("Could not update Launch at Login")))
        self.keys("Return")
        self.assertTrue(until(lambda: not self.shows("Could not update Launch at Login")))
        self.assertFalse(self.checked(TOGGLES, "Launch at Login"), "it did not work")
        # Once nothing is in the way it works, and one switch suffices.
        folder.unlink()
        self.assertTrue(until(self.is_active))
        self.go_to("Launch at Login")
        self.keys("space")
        self.assertTrue(until(lambda: self.checked(TOGGLES, "Launch at Login")))
        self.assertEqual(len(list(folder.glob("*.desktop"))), 1)
        # Somebody else takes it away: seen within the second.
        for entry in folder.glob("*.desktop"):
            entry.unlink()
        self.assertTrue(until(lambda: not self.checked(TOGGLES, "Launch at Login"), 3))


if __name__ == "__main__":
    KeyboardCase.program_path, KeyboardCase.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
