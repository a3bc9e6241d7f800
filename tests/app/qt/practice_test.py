#!/usr/bin/env python3
"""Practising with the whole program: practice_test.py PROGRAM PROVIDER WINDOW-PROGRAM

Taps of a device that is made up go through the program, out of it by the device node it posts
through, into the X server, and come back to its window as clicks. Runs below `umockdev-wrapper`.
"""

import os
import pathlib
import socket
import struct
import subprocess
import sys
import tempfile
import unittest

import dbus.mainloop.glib
import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

import accessible  # noqa: E402
from desktop_session import PATIENCE, Program, until  # noqa: E402
from desktop_world import Devices, Screen, SystemBus, property_of_root  # noqa: E402

TITLE = "Try a middle click"
SURFACE = ("canvas", "drawing area")
EVENT = struct.Struct("llHHi")
EV_KEY = 1
BUTTONS = {0x110: 1, 0x111: 3, 0x112: 2}  # of the kernel, and as X servers number them


def xdotool(*arguments):
    plain = dict(os.environ, LD_PRELOAD="")
    return subprocess.run(["xdotool", *map(str, arguments)], env=plain, check=True,
                          capture_output=True, text=True).stdout


class VirtualPointers(UMockdev.IoctlBase):
    """Takes the place of the kernel's driver: what is written reaches the X server."""

    def __init__(self):
        super().__init__()
        self.events = []

    def do_handle_ioctl(self, client):
        client.complete(0, 0)
        return True

    def do_handle_write(self, client):
        data = client.get_arg().retrieve()
        count = len(data) // EVENT.size
        for i in range(count):
            _, _, kind, code, value = EVENT.unpack_from(data, i * EVENT.size)
            if kind == EV_KEY and code in BUTTONS:
                self.events.append((BUTTONS[code], value))
                xdotool("mousedown" if value else "mouseup", BUTTONS[code])
        client.complete(count * EVENT.size, 0)
        return True


class Fingers:
    """The other end of the library's socket; see the provider."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="velotap-taps-")
        path = str(pathlib.Path(self.folder.name, "taps"))
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(path)
        self.listener.listen()
        self.listener.setblocking(False)
        self.connection = None
        self.environment = {"VELOTAP_TEST_TAPS": path}

    def accept(self):
        try:
            self.connection, _ = self.listener.accept()
        except BlockingIOError:
            return False
        self.connection.setblocking(False)
        return True

    def tap(self):
        """Once this returns the program has taken the tap in, and posted what it posts at once."""
        self.connection.send(b"t")

        def answered():
            try:
                return self.connection.recv(1) == b"t"
            except BlockingIOError:
                return False

        if not until(answered):
            raise TimeoutError("nobody took the tap")

    def close(self):
        if self.connection is not None:
            self.connection.close()
        self.listener.close()
        self.folder.cleanup()


class PracticeTest(unittest.TestCase):
    program_path = ""
    provider = ""
    window_path = ""
    environment = {}

    def setUp(self):
        accessible.turn_on()
        self.devices = Devices()
        self.addCleanup(self.devices.folder.cleanup)
        self.devices.grant()
        self.pointers = VirtualPointers()
        self.devices.testbed.attach_ioctl("/dev/uinput", self.pointers)
        self.fingers = Fingers()
        self.addCleanup(self.fingers.close)
        system = self.enterContext(SystemBus())
        self.enterContext(Screen(self.window_path, "Editor"))
        self.program = self.enterContext(Program(
            self.program_path, self.provider,
            {"accessibilitySetupPresented": True, "mouseTap3": True},
            {**self.devices.environment, **self.fingers.environment, **system.environment,
             **self.environment}))
        self.assertTrue(until(self.fingers.accept), "the device starts")
        self.windows = accessible.Windows(self.program.process.pid)
        self.open()

    def open(self):
        # It hears when it is started again some time after its start.
        self.assertTrue(until(lambda: self.program.again() == 0))
        self.windows.press("Gestures", ("page tab",))
        self.windows.press(TITLE)
        self.comes(lambda: self.windows.shows(TITLE, SURFACE), "the practice place is open")
        found = xdotool("search", "--onlyvisible", "--pid", self.program.process.pid).split()
        self.window = int(found[-1])
        self.comes(self.is_in_front, "the window has the keyboard")

    def comes(self, condition, what):
        self.assertTrue(until(condition), what)

    def is_in_front(self):
        return int(property_of_root("_NET_ACTIVE_WINDOW") or "0", 16) == self.window

    def surface(self):
        """Left, top, width and height on the screen, in its pixels."""
        place = self.windows.find(TITLE, SURFACE).queryComponent().getExtents(0)
        scale = int(self.environment.get("QT_SCALE_FACTOR", 1))
        return [scale * part for part in (place.x, place.y, place.width, place.height)]

    def point_at(self, x, y):
        xdotool("mousemove", int(x), int(y))

    def point_at_surface(self):
        left, top, width, height = self.surface()
        self.point_at(left + width / 2, top + height / 2)

    def clicks(self):
        """How many middle clicks the window says have come."""
        names = self.windows.names()
        told = [name for name in names if name.startswith("Middle clicks: ")]
        return int(told[0].rpartition(" ")[2]) if told else 0

    def tap_is_counted(self, count):
        """An early second click is refused, as it is anywhere."""
        self.fingers.tap()
        return self.clicks() >= count

    def nothing_comes_of_a_tap(self, why):
        before = list(self.pointers.events)
        self.fingers.tap()
        self.assertEqual(self.pointers.events, before, why)

    def test_a_tap_is_a_click_that_is_counted(self):
        self.point_at_surface()
        self.fingers.tap()
        self.comes(lambda: self.clicks() == 1, "it is counted")
        self.comes(lambda: self.pointers.events == [(2, 1), (2, 0)], self.pointers.events)
        self.assertIsNotNone(self.windows.find("Middle click received"))
        self.comes(lambda: self.tap_is_counted(2), "so is the next")
        self.windows.press("Try Again")
        self.comes(lambda: self.clicks() == 0, "it starts anew")

    def test_other_buttons_count_apart(self):
        self.point_at_surface()
        xdotool("click", 3)
        self.comes(lambda: self.windows.find("Other clicks: 1"), "it is counted")
        self.assertIsNone(self.windows.find("Middle click received"))

    def test_the_place_ends_where_it_is_seen_to_end(self):
        left, top, width, height = self.surface()
        for x, y in ((left - 4, top + 9), (left + width + 4, top + 9), (left + 9, top - 4)):
            self.point_at(x, y)
            self.nothing_comes_of_a_tap(f"beside the place, at {x}, {y}")
        self.point_at(left + 4, top + 4)
        self.fingers.tap()
        self.comes(lambda: self.clicks() == 1, "within it")

    def test_the_place_moves_with_its_window(self):
        before = self.surface()
        xdotool("windowmove", self.window, 33, 77)
        self.comes(lambda: self.surface()[:2] != before[:2], "the window moved")
        self.point_at_surface()
        self.fingers.tap()
        self.comes(lambda: self.clicks() == 1, "it is counted there")

    def test_only_a_window_that_can_be_clicked_has_the_place(self):
        self.point_at_surface()
        editor = xdotool("search", "--onlyvisible", "--class", "Editor").split()[0]
        xdotool("windowactivate", "--sync", editor)
        self.comes(lambda: not self.is_in_front(), "another window is in front")
        clicks = len(self.pointers.events)
        self.fingers.tap()
        self.assertGreater(len(self.pointers.events), clicks,
                           "what is in front now gets its clicks as ever")
        xdotool("windowactivate", "--sync", self.window)
        self.comes(self.is_in_front, "it is back")
        xdotool("windowminimize", self.window)
        self.comes(lambda: not self.is_in_front(), "it is put away")
        xdotool("windowmap", self.window)
        xdotool("windowactivate", "--sync", self.window)
        self.comes(self.is_in_front, "and brought back")
        self.point_at_surface()
        self.comes(lambda: self.tap_is_counted(1), "it counts as before")

    def test_a_closed_place_takes_nothing(self):
        self.point_at_surface()
        self.windows.press("Done")
        self.comes(lambda: not self.windows.shows(TITLE, SURFACE), "the sheet is closed")
        self.nothing_comes_of_a_tap("the window itself gets no gestures")


class LargePracticeTest(PracticeTest):
    """The same where everything is drawn at twice its size."""

    environment = {"QT_SCALE_FACTOR": "2"}


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    PracticeTest.program_path, PracticeTest.provider, PracticeTest.window_path = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
