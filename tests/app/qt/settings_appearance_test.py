#!/usr/bin/env python3
"""The open settings window while the desktop changes its looks:
settings_appearance_test.py PROGRAM PROVIDER"""

import ctypes
import sys
import unittest

import dbus
import dbus.mainloop.glib
import dbus.service
import pyatspi

from desktop_session import until
from settings_session import TABS, SettingsCase

PORTAL = "org.freedesktop.portal.Desktop"
SETTINGS = "org.freedesktop.portal.Settings"
APPEARANCE = "org.freedesktop.appearance"
ACCESSIBILITY = "org.gnome.desktop.a11y.interface"
INTERFACE = "org.gnome.desktop.interface"

LIGHT, DARK = 0xF3F4F7, 0x17181C
LIGHT_CONTRAST, DARK_CONTRAST = 0xFFFFFF, 0x000000


class Portal(dbus.service.Object):
    """What tells programs how the desktop looks."""

    def __init__(self, bus):
        self.name = dbus.service.BusName(PORTAL, bus)
        self.values = {(APPEARANCE, "color-scheme"): dbus.UInt32(0)}
        super().__init__(bus, "/org/freedesktop/portal/desktop")

    @dbus.service.method(SETTINGS, in_signature="ss", out_signature="v")
    def Read(self, space, key):
        if (space, key) not in self.values:
            raise dbus.DBusException("no such setting",
                                     name="org.freedesktop.portal.Error.NotFound")
        value = self.values[space, key]
        return type(value)(value, variant_level=1)  # as a variant in the variant

    @dbus.service.signal(SETTINGS, signature="ssv")
    def SettingChanged(self, space, key, value):
        pass

    def change(self, space, key, value):
        self.values[space, key] = value
        self.SettingChanged(space, key, value)


class Pixels:
    """Of the screen."""

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        for function in ("XOpenDisplay", "XDefaultRootWindow", "XGetImage"):
            getattr(self.x11, function).restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        self.root = ctypes.c_void_p(self.x11.XDefaultRootWindow(self.display))

    def at(self, x, y):
        every_plane, by_pixel = ctypes.c_ulong(-1), 2
        image = ctypes.c_void_p(
            self.x11.XGetImage(self.display, self.root, x, y, 1, 1, every_plane, by_pixel))
        try:
            return self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF
        finally:
            self.x11.XDestroyImage(image)

    def close(self):
        self.x11.XCloseDisplay(self.display)


class SettingsAppearanceTest(SettingsCase):
    @classmethod
    def setUpClass(cls):
        dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
        cls.portal = Portal(dbus.SessionBus())

    def setUp(self):
        self.portal.values = {(APPEARANCE, "color-scheme"): dbus.UInt32(0)}
        self.pixels = Pixels()
        self.addCleanup(self.pixels.close)
        super().setUp()

    def ground(self):
        """The colour beside the cards."""
        for frame in self.application:
            if frame.getRoleName() != "notification":
                place = frame.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
                return self.pixels.at(place.x + 4, place.y + place.height - 20)
        return None

    def shows(self, color):
        return until(lambda: self.ground() == color)

    def tab_height(self):
        tab = self.get(TABS, "General").queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        return tab.height

    def test_dark_and_contrast_are_followed_and_left(self):
        self.assertTrue(self.shows(LIGHT), "as it opened")
        self.portal.change(APPEARANCE, "color-scheme", dbus.UInt32(1))
        self.assertTrue(self.shows(DARK))
        self.portal.change(APPEARANCE, "contrast", dbus.UInt32(1))
        self.assertTrue(self.shows(DARK_CONTRAST))
        self.portal.change(APPEARANCE, "contrast", dbus.UInt32(0))
        self.assertTrue(self.shows(DARK))
        self.portal.change(APPEARANCE, "color-scheme", dbus.UInt32(2))
        self.assertTrue(self.shows(LIGHT))

    def test_either_switch_asks_for_contrast(self):
        self.portal.change(APPEARANCE, "color-scheme", dbus.UInt32(1))
        self.portal.change(ACCESSIBILITY, "high-contrast", dbus.Boolean(True))
        self.assertTrue(self.shows(DARK_CONTRAST))
        self.portal.change(APPEARANCE, "contrast", dbus.UInt32(1))
        self.portal.change(APPEARANCE, "contrast", dbus.UInt32(0))
        self.portal.change(APPEARANCE, "color-scheme", dbus.UInt32(2))
        self.assertTrue(self.shows(LIGHT_CONTRAST), "the other switch is still on")
        self.portal.change(ACCESSIBILITY, "high-contrast", dbus.Boolean(False))
        self.assertTrue(self.shows(LIGHT))

    def test_text_grows_with_the_desktop(self):
        before = self.tab_height()
        self.portal.change(INTERFACE, "text-scaling-factor", dbus.Double(1.5))
        self.assertTrue(until(lambda: self.tab_height() > before * 1.2))
        self.portal.change(INTERFACE, "text-scaling-factor", dbus.Double(1.0))
        self.assertTrue(until(lambda: self.tab_height() == before))

    def test_a_window_opens_as_the_desktop_looks(self):
        self.program.process.terminate()
        self.assertTrue(until(self.program.ended))
        self.portal.values[APPEARANCE, "color-scheme"] = dbus.UInt32(1)
        self.program.start()
        self.assertTrue(until(self.is_listening))
        self.assertEqual(self.program.again(), 0)
        self.assertTrue(until(self.find_application))
        self.assertTrue(self.shows(DARK))


if __name__ == "__main__":
    SettingsCase.program_path, SettingsCase.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
