#!/usr/bin/env python3
"""The status item of a program whose host comes late: status_item_test.py PROGRAM PROVIDER

The host appears only after the program was started, as a panel often does.
"""

import sys
import unittest

import dbus
import dbus.service

from desktop_session import Program, until
from status_host import WATCHER, Item, Watcher


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
        item = Item(self.bus, watcher)

        self.assertEqual(item.label(), "Velotap (unavailable)")
        item.activate()
        self.assertTrue(until(lambda: item.label() == "Velotap (disabled)"))
        self.assertFalse(self.program.settings()["enabled"])

        self.assertFalse(item.row("Enabled").checked)
        item.row("Enabled").choose()
        self.assertTrue(until(lambda: self.program.settings()["enabled"]))
        item.row("Quit Velotap").choose()
        self.assertTrue(until(self.program.ended))
        self.assertEqual(self.program.process.returncode, 0)
        del name


if __name__ == "__main__":
    StatusItemTest.program_path, StatusItemTest.provider = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
