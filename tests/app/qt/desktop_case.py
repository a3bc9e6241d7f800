"""What tests of the whole program share: made-up devices, a host of status items, the program.

Everything runs below `xvfb-run`, `dbus-run-session` and `umockdev-wrapper`. The test's arguments
are those that its class names.
"""

import sys
import unittest

import dbus
import dbus.service

import accessible
from desktop_session import Program, until
from desktop_world import Devices
from status_host import WATCHER, Item, Watcher

ACTIVE = "Velotap (active)"
UNAVAILABLE = "Velotap (unavailable)"
DISABLED = "Velotap (disabled)"


class DesktopCase(unittest.TestCase):
    arguments = ("program_path", "provider")

    @classmethod
    def main(cls):
        """What follows its own arguments is unittest's: a test's name, for one."""
        count = len(cls.arguments) + 1
        for name, value in zip(cls.arguments, sys.argv[1:count], strict=True):
            setattr(cls, name, value)
        unittest.main(argv=sys.argv[:1] + sys.argv[count:])

    def make_devices(self, plugged=0):
        """To which access is given."""
        accessible.turn_on()
        self.devices = Devices()
        self.addCleanup(self.devices.folder.cleanup)
        self.devices.grant()
        for _ in range(plugged):
            self.devices.plug()

    def make_host(self):
        """That speaks the protocol of status items."""
        self.bus = dbus.SessionBus(private=True)
        self.serve_host()
        self.addCleanup(self.stop_host)
        self.watcher = Watcher(self.bus)
        self.addCleanup(self.watcher.remove_from_connection)

    def serve_host(self):
        self.name = dbus.service.BusName(WATCHER, self.bus)

    def stop_host(self):
        self.__dict__.pop("name", None)

    def start(self, settings, path=None, arguments=(), folder=None, **more):
        """`more` is of its environment."""
        self.program = self.enterContext(Program(
            path or self.program_path, self.provider, settings,
            {**self.devices.environment, **more}, arguments, folder))

    def comes(self, condition, what, **patience):
        if not until(condition, **patience):
            self.fail(f"{what}\n{self.program.told()}")

    @property
    def windows(self):
        """Of the program as it runs now."""
        return accessible.Windows(self.program.process.pid)

    def await_item(self, label=ACTIVE):
        self.comes(lambda: self.watcher.items, "the item registers")
        item = Item(self.bus, self.watcher)
        self.comes(lambda: item.label() == label, f"the item says {label}")
        return item

    def setting(self, key, otherwise=None):
        return self.program.settings().get(key, otherwise)
