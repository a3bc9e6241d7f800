#!/usr/bin/env python3
"""The status item against a host that speaks its protocol: status_item_test.py PROGRAM PROVIDER

The host appears only after the program was started, as a panel often does.
"""

import sys
import unittest

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop

from desktop_session import Program, until

DBusGMainLoop(set_as_default=True)
WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"
INTROSPECTION = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
<signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal></interface></node>"""


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        self.items = []
        super().__init__(bus, "/StatusNotifierWatcher")

    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, name, sender=None):
        self.items.append((str(sender), str(name)))
        self.StatusNotifierItemRegistered(name)

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierHost(self, name):
        pass

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, name):
        pass

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0),
                "RegisteredStatusNotifierItems":
                    dbus.Array([name for _, name in self.items], signature="s")}

    # Qt finds the properties of a watcher by what it says of itself.
    @dbus.service.method("org.freedesktop.DBus.Introspectable", in_signature="",
                         out_signature="s")
    def Introspect(self):
        return INTROSPECTION


class Answer:
    """A call that does not block: the program may be calling us at the same time."""

    def __init__(self, proxy, interface, method, *arguments):
        self.value = None
        self.error = None
        self.done = False
        proxy.get_dbus_method(method, interface)(
            *arguments, reply_handler=self.take, error_handler=self.fail)

    def take(self, *values):
        self.value = values[0] if len(values) == 1 else values
        self.done = True

    def fail(self, error):
        self.error = error
        self.done = True


def call(proxy, interface, method, *arguments):
    answer = Answer(proxy, interface, method, *arguments)
    if not until(lambda: answer.done):
        raise TimeoutError(method)
    if answer.error:
        raise answer.error
    return answer.value


class StatusItemTest(unittest.TestCase):
    program_path = ""
    provider = ""

    def setUp(self):
        self.bus = dbus.SessionBus(private=True)
        self.program = self.enterContext(Program(
            self.program_path, self.provider,
            {"accessibilitySetupPresented": True, "enabled": True}))

    def test_item_menu_and_switch(self):
        name = dbus.service.BusName(WATCHER, self.bus)
        watcher = Watcher(self.bus)
        self.assertTrue(until(lambda: watcher.items), "the item registers when a host appears")
        sender, registered = watcher.items[0]
        destination = sender if registered.startswith("/") else registered
        item = self.bus.get_object(destination, "/StatusNotifierItem", introspect=False)

        def state():
            return call(item, PROPERTIES, "GetAll", ITEM)

        self.assertIn("Velotap (unavailable)", str(state()["ToolTip"]))
        call(item, ITEM, "Activate", 10, 10)
        self.assertTrue(until(lambda: "Velotap (disabled)" in str(state()["ToolTip"])))
        self.assertFalse(self.program.settings()["enabled"])

        menu = self.bus.get_object(destination, str(state()["Menu"]), introspect=False)
        call(menu, MENU, "AboutToShow", 0)
        _, root = call(menu, MENU, "GetLayout", 0, -1, dbus.Array([], signature="s"))
        items = {str(child[1].get("label", "")).replace("_", ""): child for child in root[2]}
        for title in ("Enabled", "Settings…", "Magic Mouse", "Trackpad", "Launch at Login",
                      "Quit Velotap"):
            self.assertIn(title, items)
        self.assertEqual(int(items["Enabled"][1]["toggle-state"]), 0)

        def choose(title):
            call(menu, MENU, "Event", items[title][0], "clicked",
                 dbus.String("", variant_level=1), dbus.UInt32(0))

        choose("Enabled")
        self.assertTrue(until(lambda: self.program.settings()["enabled"]))
        choose("Quit Velotap")
        self.assertTrue(until(self.program.ended))
        self.assertEqual(self.program.process.returncode, 0)
        del name


if __name__ == "__main__":
    StatusItemTest.program_path, StatusItemTest.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
