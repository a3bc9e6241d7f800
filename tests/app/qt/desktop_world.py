"""What the program meets on a desktop, made up: devices, a login manager, other windows.

Runs below `umockdev-wrapper`, which shows this process and the programs it starts a /dev and a
/sys of their own, and devices that come and go there as the kernel's do.
"""

import contextlib
import os
import pathlib
import subprocess
import tempfile

import dbus
import dbus.service
import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

from desktop_session import PATIENCE, until  # noqa: E402

LOGIN = "org.freedesktop.login1"
# Those of a touchpad with two axes and five slots of contacts.
SURFACE = ["properties", "5", "capabilities/abs", "260800000000003"]


class Devices:
    """Access to them is given as long as /dev/uinput is there."""

    def __init__(self):
        self.testbed = UMockdev.Testbed.new()
        self.root = pathlib.Path(self.testbed.get_root_dir(), "dev")
        (self.root / "input").mkdir(parents=True)
        self.folder = tempfile.TemporaryDirectory(prefix="velotap-devices-")
        self.count_file = pathlib.Path(self.folder.name, "count")
        self.plugged = []
        self.tell_count()
        self.environment = {"VELOTAP_TEST_DEVICES": str(self.count_file),
                            "UMOCKDEV_DIR": self.testbed.get_root_dir()}

    def tell_count(self):
        self.count_file.write_text(str(len(self.plugged)), encoding="utf-8")

    def grant(self):
        (self.root / "uinput").touch()

    def revoke(self):
        (self.root / "uinput").unlink()

    def plug(self):
        number = len(self.plugged) + 5
        above = self.testbed.add_device("input", f"input{number}", None,
                                        ["name", "Made up", "phys", "usb-1", *SURFACE],
                                        ["ID_INPUT", "1"])
        node = self.testbed.add_device("input", f"event{number}", above, ["dev", f"13:{number}"],
                                       ["DEVNAME", f"/dev/input/event{number}",
                                        "ID_INPUT_TOUCHPAD", "1"])
        # With the last device the test bed removes the folder too.
        (self.root / "input").mkdir(exist_ok=True)
        (self.root / "input" / f"event{number}").touch()
        self.plugged.append((above, node, number))
        self.tell_count()
        self.testbed.uevent(node, "add")

    def unplug(self):
        above, node, number = self.plugged.pop()
        self.tell_count()
        self.testbed.uevent(node, "remove")
        self.testbed.remove_device(node)
        self.testbed.remove_device(above)
        (self.root / "input" / f"event{number}").unlink(missing_ok=True)


class LoginManager(dbus.service.Object):
    @dbus.service.signal("org.freedesktop.login1.Manager", signature="b")
    def PrepareForSleep(self, begins):
        pass


class SystemBus:
    """A bus of its own with a login manager on it."""

    def __init__(self):
        self.daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"],
            stdout=subprocess.PIPE, text=True)
        self.address = self.daemon.stdout.readline().strip()
        self.bus = dbus.bus.BusConnection(self.address)
        self.name = dbus.service.BusName(LOGIN, self.bus)
        self.manager = LoginManager(self.bus, "/org/freedesktop/login1")
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": self.address}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        del self.name
        self.bus.close()
        self.daemon.terminate()
        self.daemon.wait()
        self.daemon.stdout.close()


def property_of_root(name):
    told = subprocess.run(["xprop", "-root", name], capture_output=True, text=True, check=False)
    return told.stdout.partition("window id # ")[2].strip()


class Screen:
    """A window manager and one window of another program, in front."""

    def __init__(self, window_program, name):
        self.running = contextlib.ExitStack()
        # Menus and keys of its own would come in the way; its folder is empty.
        empty = self.running.enter_context(tempfile.TemporaryDirectory(prefix="velotap-wm-"))
        plain = dict(os.environ, HOME=empty, XDG_CONFIG_HOME=empty, LD_PRELOAD="")
        ready = pathlib.Path(empty, "ready")
        self.start(["openbox", "--startup", f"touch {ready}"], env=plain)
        if not until(ready.exists):
            raise TimeoutError("no window manager")
        self.start([window_program, name.lower(), name], stdin=subprocess.PIPE,
                   stdout=subprocess.DEVNULL, env=plain)
        if not until(lambda: property_of_root("_NET_ACTIVE_WINDOW") not in ("", "0x0")):
            raise TimeoutError("no window in front")

    def start(self, command, **options):
        process = subprocess.Popen(command, **options)
        self.running.callback(self.end, process)
        return process

    @staticmethod
    def end(process):
        process.terminate()
        process.wait(PATIENCE)
        for stream in (process.stdin, process.stdout):
            if stream is not None:
                stream.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.running.close()
