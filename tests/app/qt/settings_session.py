"""The settings window of the running program, reached as assistive programs and keyboards reach it."""

import subprocess
import unittest

import dbus
import pyatspi

from desktop_session import Program, until

TOGGLES = ("check box", "toggle button", "switch")
BUTTONS = ("push button", "button")
FIELDS = ("text", "entry")
TABS = ("page tab",)
CHOICES = ("radio button",)


def walk(node):
    yield node
    for child in node:
        if child is not None:
            yield from walk(child)


class SettingsCase(unittest.TestCase):
    """Opens the window before each test; a session bus and a display are the caller's."""

    program_path = ""
    provider = ""
    more = None  # of the program's environment
    settings = {"accessibilitySetupPresented": True, "settings.gestureDevice": "mouse"}

    def setUp(self):
        status = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
        status.Set("org.a11y.Status", "IsEnabled", True,
                   dbus_interface="org.freedesktop.DBus.Properties")
        self.program = self.enterContext(Program(self.program_path, self.provider, self.settings,
                                                 self.more))
        self.application = None
        self.assertTrue(until(self.is_listening), "it hears when it is started again")
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.find_application), "the program is on the accessibility bus")

    @staticmethod
    def is_listening():
        return dbus.SessionBus().name_has_owner("app.norwend.velotap")

    def find_application(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.name in ("velotap", "Velotap",
                                                                "velotap-desktop"):
                self.application = application
                return len(list(application)) > 0
        return False

    def nodes(self):
        """Everything there is; nothing while it is changing."""
        try:
            return list(walk(self.application))
        except Exception:  # the tree changed while it was walked
            return []

    def find(self, roles, name):
        for node in self.nodes():
            # What is scrolled out of sight has neither state, and can be pressed all the same.
            if node.name == name and node.getRoleName() in roles:
                return node
        return None

    def get(self, roles, name):
        found = []
        self.assertTrue(until(lambda: found.append(self.find(roles, name)) or found[-1]),
                        f"{name} of {roles}")
        return found[-1]

    def gone(self, roles, name):
        return until(lambda: self.find(roles, name) is None)

    def press(self, roles, name):
        node = self.get(roles, name)
        actions = node.queryAction()
        for i in range(actions.nActions):
            if actions.getName(i) in ("Press", "Toggle"):
                actions.doAction(i)
                return node
        self.fail(f"{name} cannot be pressed")

    def has(self, roles, name, state):
        node = self.find(roles, name)
        return node is not None and node.getState().contains(state)

    def checked(self, roles, name):
        return self.has(roles, name, pyatspi.STATE_CHECKED)


class KeyboardCase(SettingsCase):
    """With a window manager, which is who gives a window the keyboard."""

    def setUp(self):
        manager = subprocess.Popen(["openbox", "--config-file", "/dev/null"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        super().setUp()
        # It comes to the front when it is started once more.
        self.assertTrue(until(self.is_active), "the window has the keyboard")

    def is_active(self):
        frames = [node for node in self.nodes() if node.getRoleName() in ("frame", "window")]
        return any(node.getState().contains(pyatspi.STATE_ACTIVE) for node in frames)

    @staticmethod
    def keys(*names):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True)

    @staticmethod
    def type(text):
        subprocess.run(["xdotool", "type", text], check=True)

    def focused(self):
        """Role and name of what has the keyboard; of those that hold it, the innermost."""
        found = None
        for node in self.nodes():
            if (node.getState().contains(pyatspi.STATE_FOCUSED)
                    and node.getRoleName() not in ("frame", "window")):
                found = node.getRoleName(), node.name
        return found

    def await_focus(self, name):
        self.assertTrue(until(lambda: (self.focused() or ("", ""))[1] == name),
                        f"{name} has the keyboard; it is at {self.focused()}")

    def stops(self, limit=60):
        """Where the keyboard gets by Tab, from here until it is here again."""
        stops = [self.focused()]
        while len(stops) < limit:
            before = stops[-1]
            self.keys("Tab")
            until(lambda: self.focused() not in (None, before), 2)
            now = self.focused()
            if now == stops[0]:
                return stops
            stops.append(now)
        return stops
