"""Plays the part of a desktop that says whether people want it dark."""

import dbus
import dbus.service

PORTAL = "org.freedesktop.portal.Desktop"
SETTINGS = "org.freedesktop.portal.Settings"


class Look(dbus.service.Object):
    def __init__(self, dark):
        self.dark = dark
        bus = dbus.SessionBus(private=True)
        self.name = dbus.service.BusName(PORTAL, bus)
        super().__init__(bus, "/org/freedesktop/portal/desktop")

    @dbus.service.method(SETTINGS, in_signature="ss", out_signature="v")
    def Read(self, space, key):
        if (space, key) == ("org.freedesktop.appearance", "color-scheme"):
            return dbus.UInt32(1 if self.dark else 2, variant_level=1)
        raise dbus.exceptions.DBusException("not set", name=f"{PORTAL}.NotFound")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.remove_from_connection()
        del self.name
