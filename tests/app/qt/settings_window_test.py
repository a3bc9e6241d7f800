#!/usr/bin/env python3
"""The settings window through the accessibility bus: settings_window_test.py PROGRAM PROVIDER"""

import sys
import unittest

import dbus
import pyatspi

from desktop_session import Program, until


def walk(node):
    yield node
    for child in node:
        if child is not None:
            yield from walk(child)


class SettingsWindowTest(unittest.TestCase):
    program_path = ""
    provider = ""
    settings = {"accessibilitySetupPresented": True, "settings.gestureDevice": "mouse"}

    def setUp(self):
        status = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
        status.Set("org.a11y.Status", "IsEnabled", True,
                   dbus_interface="org.freedesktop.DBus.Properties")
        self.program = self.enterContext(Program(
            self.program_path, self.provider, self.settings))
        self.application = None
        bus = dbus.SessionBus()
        self.assertTrue(until(lambda: bus.name_has_owner("app.norwend.velotap")),
                        "it hears when it is started again")
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.find_application), "the program is on the accessibility bus")

    def find_application(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.name in ("velotap", "Velotap",
                                                                "velotap-desktop"):
                self.application = application
                return len(list(application)) > 0
        return False

    def find(self, roles, name):
        try:
            for node in walk(self.application):
                # What is scrolled out of sight has neither state, and can be pressed all the same.
                if node.name == name and node.getRoleName() in roles:
                    return node
        except Exception:  # the tree changed while it was walked
            return None
        return None

    def get(self, roles, name):
        found = []
        self.assertTrue(until(lambda: found.append(self.find(roles, name)) or found[-1]),
                        f"{name} of {roles}")
        return found[-1]

    def press(self, roles, name):
        node = self.get(roles, name)
        actions = node.queryAction()
        for i in range(actions.nActions):
            if actions.getName(i) in ("Press", "Toggle"):
                actions.doAction(i)
                return node
        self.fail(f"{name} cannot be pressed")

    def checked(self, roles, name):
        return self.get(roles, name).getState().contains(pyatspi.STATE_CHECKED)

    def test_switches_gestures_and_undoes(self):
        toggles = ("check box", "toggle button", "switch")
        self.press(("page tab",), "Gestures")
        self.assertFalse(self.checked(toggles, "Click with two fingers"))
        self.press(toggles, "Click with two fingers")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is True))
        self.assertTrue(self.checked(toggles, "Click with two fingers"))

        self.press(("push button", "button"), "Turn Off All…")
        self.press(("push button", "button"), "Turn Off")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is False))
        self.press(("push button", "button"), "Undo")
        self.assertTrue(until(lambda: self.program.settings().get("mouseClick2") is True))

    def test_every_pane_opens(self):
        for pane, something in (("Gestures", "Search gestures"), ("Tuning", "Max tap duration"),
                                ("Apps", "Search app rules"), ("About", "Contact Support…"),
                                ("General", "Enable Velotap")):
            self.press(("page tab",), pane)
            self.get(("text", "entry", "slider", "push button", "button", "check box", "switch",
                      "toggle button"), something)


if __name__ == "__main__":
    SettingsWindowTest.program_path, SettingsWindowTest.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
