"""The windows of a program as the accessibility bus has them."""

import contextlib

import dbus
import pyatspi

from desktop_session import until


def turn_on():
    status = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
    status.Set("org.a11y.Status", "IsEnabled", True,
               dbus_interface="org.freedesktop.DBus.Properties")


class Reader:
    """Hears what a screen reader would speak by itself: notifications that start to show."""

    def __init__(self):
        self.heard = []
        pyatspi.Registry.registerEventListener(self.note, "object:state-changed:showing")

    def note(self, event):
        with contextlib.suppress(Exception):  # of a window that is gone already
            if event.detail1 and event.source.getRoleName() == "notification":
                self.heard.append(event.source.name)

    def stop(self):
        pyatspi.Registry.deregisterEventListener(self.note, "object:state-changed:showing")


def walk(node):
    yield node
    for child in node:
        if child is not None:
            yield from walk(child)


def title_of(window):
    """Nothing where it is no window that shows, or is gone before it was asked."""
    with contextlib.suppress(Exception):
        if (window.getRoleName() != "notification"
                and window.getState().contains(pyatspi.STATE_SHOWING)):
            return window.name
    return None


class Windows:
    """Of the program with this process number."""

    def __init__(self, process):
        self.process = process

    def application(self):
        for application in pyatspi.Registry.getDesktop(0):
            with contextlib.suppress(Exception):  # another program that is about to end
                if application is not None and application.get_process_id() == self.process:
                    return application
        return None

    def titles(self):
        """Of the windows that show."""
        application = self.application()
        if application is None:
            return []
        return [name for name in map(title_of, application) if name is not None]

    def find(self, name, roles=None, window=None):
        # The tree may change while it is walked.
        with contextlib.suppress(Exception):
            for top in self.application() or []:
                if window is not None and top.name != window:
                    continue
                for node in walk(top):
                    if node.name == name and (roles is None or node.getRoleName() in roles):
                        return node
        return None

    def names(self):
        """Of everything in the windows."""
        with contextlib.suppress(Exception):
            return [node.name for top in self.application() or [] for node in walk(top)]
        return []

    def shows(self, name, roles=None, window=None):
        node = self.find(name, roles, window)
        with contextlib.suppress(Exception):
            return node is not None and node.getState().contains(pyatspi.STATE_SHOWING)
        return False

    def press(self, name, roles=("push button", "button", "page tab"), window=None):
        found = []
        if not until(lambda: found.append(self.find(name, roles, window)) or found[-1]):
            raise TimeoutError(f"{name} is nowhere")
        actions = found[-1].queryAction()
        for i in range(actions.nActions):
            if actions.getName(i) in ("Press", "Toggle"):
                actions.doAction(i)
                return
        raise LookupError(f"{name} cannot be pressed")

    def checked(self, name):
        node = self.find(name, ("check box", "toggle button", "switch"))
        return node is not None and node.getState().contains(pyatspi.STATE_CHECKED)
