#!/usr/bin/env python3
"""The Apps pane on applications that are really there: apps_pane_test.py PROGRAM PROVIDER

Desktop entries in folders of their own, one of their programs running, and a file browser that
only writes down what it was asked to show."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import unittest.mock

from desktop_session import until
from settings_session import BUTTONS, KeyboardCase, SettingsCase

ENTRY = """[Desktop Entry]
Type=Application
Name={name}
Name[de]={name} (de)
Exec={program} %U
Icon=applications-other
"""


class AppsPaneTest(SettingsCase):
    settings = {"accessibilitySetupPresented": True,
                "ignoredApps": ["org.example.Clock", "org.example.Gone"]}

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.programs = self.folder / "bin"
        self.programs.mkdir()
        self.shown = self.folder / "shown"
        browser = self.programs / "xdg-open"
        browser.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >> {self.shown}\n', encoding="utf-8")
        browser.chmod(0o755)
        # A program by a name that nobody else on this machine runs.
        shutil.copy(shutil.which("sleep"), self.programs / "velotap-example-tool")
        self.entry("org.example.Clock", "Example Clock", "true")
        self.entry("org.example.Tool", "Example Tool", "velotap-example-tool")
        self.entry("org.remmina.Remmina", "Example Remote", "true")
        self.tool = subprocess.Popen([self.programs / "velotap-example-tool", "600"])
        self.addCleanup(self.tool.wait)
        self.addCleanup(self.tool.kill)
        self.enterContext(unittest.mock.patch.dict(os.environ, {
            "XDG_DATA_HOME": str(self.folder / "data"), "XDG_DATA_DIRS": str(self.folder / "none"),
            "PATH": f"{self.programs}:{os.environ['PATH']}"}))
        super().setUp()
        self.press(("page tab",), "Apps")

    def entry(self, identifier, name, program):
        applications = self.folder / "data" / "applications"
        applications.mkdir(parents=True, exist_ok=True)
        text = ENTRY.format(name=name, program=program)
        (applications / f"{identifier}.desktop").write_text(text, encoding="utf-8")

    def ignored(self):
        return self.program.settings().get("ignoredApps")

    def test_names_installed_and_missing(self):
        rows = ("list item",)
        self.assertIn("org.example.Clock", self.get(rows, "Example Clock").description)
        self.assertIn("Not installed", self.get(rows, "org.example.Gone").description)

    def test_an_application_that_appears_is_found(self):
        self.get(("list item",), "org.example.Gone")
        self.entry("org.example.Gone", "Back Again", "true")
        self.press(BUTTONS, "Look Again")
        self.get(("list item",), "Back Again")

    def add(self, way, list_title="Velotap off in these apps"):
        self.press((*BUTTONS, "button menu"), f"Add app: {list_title}")
        self.press(("menu item",), way)

    def test_adds_what_is_installed(self):
        self.add("Choose from Applications…")
        self.assertIsNone(self.find(("check box",), "Example Clock"), "it has a rule")
        self.press(("check box",), "Example Remote")
        self.press(("check box",), "Example Tool")
        self.press(BUTTONS, "Add")
        self.assertTrue(until(lambda: set(self.ignored()) >= {"org.remmina.Remmina",
                                                              "org.example.Tool"}), self.ignored())

    def test_adds_to_the_list_that_was_asked_for(self):
        self.add("Choose from Applications…", "Send zoom keyboard shortcuts")
        self.press(("check box",), "Example Clock")
        self.press(BUTTONS, "Add")
        self.assertTrue(until(lambda: self.program.settings().get("keystrokeZoomApps") ==
                              ["org.example.Clock"]))

    def test_adds_what_runs(self):
        self.add("Running Apps")
        self.press(("check box",), "Example Tool")
        self.assertIsNone(self.find(("check box",), "Example Remote"), "it does not run")
        self.press(BUTTONS, "Add")
        self.assertTrue(until(lambda: "org.example.Tool" in self.ignored()), self.ignored())
        self.get(("list item",), "Example Tool")

    def test_suggests_what_is_installed(self):
        self.assertIsNone(self.find(BUTTONS, "Add com.valvesoftware.steam"))
        self.press(BUTTONS, "Add Example Remote")
        self.assertTrue(until(lambda: "org.remmina.Remmina" in self.ignored()))

    def test_removes_and_restores_in_place(self):
        before = self.ignored()
        self.press(BUTTONS, "Remove Example Clock")
        self.assertTrue(until(lambda: self.ignored() == ["org.example.Gone"]))
        self.press(BUTTONS, "Undo")
        self.assertTrue(until(lambda: self.ignored() == before))

    def test_reveals_in_the_file_browser(self):
        self.press(BUTTONS, "Show in File Browser")
        self.assertTrue(until(self.shown.exists))
        folder = self.folder / "data" / "applications"
        self.assertTrue(until(lambda: self.shown.read_text(encoding="utf-8").strip() ==
                              folder.as_uri()), self.shown.read_text(encoding="utf-8"))


class AppsByKeyboardTest(AppsPaneTest, KeyboardCase):
    """With a window manager, and windows that other programs really have."""

    def test_chooses_without_a_mouse(self):
        menu = "Add app: Velotap off in these apps"
        self.get((*BUTTONS, "button menu"), menu).queryComponent().grabFocus()
        self.await_focus(menu)
        self.keys("Tab", "shift+Tab")  # as a person comes there
        self.await_focus(menu)
        self.keys("space")
        self.get(("menu item",), "Running Apps")
        self.await_focus("Choose from Applications…")
        self.keys("Down")
        self.await_focus("Running Apps")
        self.keys("Up", "Return")
        self.get(("check box",), "Example Tool")
        self.type("remote")
        self.comes_to_be(lambda: self.find(("check box",), "Example Tool") is None)
        self.keys("ctrl+1")
        self.keys("Tab", "Tab", "ctrl+f")
        self.type("x")
        self.comes_to_be(lambda: self.find(("check box",), "Example Remote") is None)
        self.keys("BackSpace")
        self.get(("check box",), "Example Remote").queryComponent().grabFocus()
        self.await_focus("Example Remote")
        self.keys("space")
        self.press(BUTTONS, "Add")
        self.comes_to_be(lambda: "org.remmina.Remmina" in self.ignored())
        self.assertIsNotNone(self.find(("list item",), "Example Clock"), "the pane is still there")

    def comes_to_be(self, condition):
        self.assertTrue(until(condition))


if __name__ == "__main__":
    SettingsCase.program_path, SettingsCase.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
