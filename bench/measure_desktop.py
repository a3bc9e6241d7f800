"""Measures for bench/measure-desktop: measure_desktop.py BUILD OUTPUT"""

import os
import pathlib
import sys
import time

import dbus
import dbus.service

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tests/app/qt"))
from desktop_session import Program, until  # noqa: E402
from desktop_world import Devices, SystemBus  # noqa: E402
from status_host import WATCHER, Item, Watcher  # noqa: E402

REST = 30  # seconds
PARTS = ("Rss", "Pss", "Anonymous", "Private_Dirty")


def memory(process):
    told = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text(encoding="utf-8")
    values = {line.split(":")[0]: line.split()[1] for line in told.splitlines()[1:]}
    return ", ".join(f"{part} {int(values[part]) / 1024:.1f} MB" for part in PARTS)


def largest(process):
    """Anonymous memory by what it belongs to."""
    sums = {}
    name = ""
    for line in pathlib.Path(f"/proc/{process}/smaps").read_text(encoding="utf-8").splitlines():
        words = line.split()
        if not words[0].endswith(":"):
            name = os.path.basename(words[5]) if len(words) > 5 else "(mapped)"
        elif words[0] == "Anonymous:":
            sums[name] = sums.get(name, 0) + int(words[1])
    most = sorted(sums.items(), key=lambda item: -item[1])[:6]
    return ", ".join(f"{name} {size} kB" for name, size in most)


def wakes(process):
    count = 0
    for status in pathlib.Path(f"/proc/{process}/task").glob("*/status"):
        for line in status.read_text(encoding="utf-8").splitlines():
            if line.startswith("voluntary_ctxt_switches"):
                count += int(line.split()[1])
    return count


def rest(process):
    before = wakes(process)
    until(lambda: False, patience=REST)
    return (wakes(process) - before) * 60 / REST


def main():
    build, output = sys.argv[1:3]
    devices = Devices()
    devices.grant()
    devices.plug()
    devices.plug()
    bus = dbus.SessionBus()
    name = dbus.service.BusName(WATCHER, bus)
    watcher = Watcher(bus)
    with open(output, "w", encoding="utf-8") as out, SystemBus() as system:
        def tell(text):
            print(text, file=out, flush=True)

        began = time.monotonic()
        with Program(f"{build}/bin/velotap-desktop", f"{build}/lib/providers/counted_devices.so",
                     {"accessibilitySetupPresented": True},
                     {**devices.environment, **system.environment, "QT_ACCESSIBILITY": "0",
                      "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "0"}) as program:
            # The item is made before the listeners start, and asked until it says that they run.
            until(lambda: watcher.items)
            item = Item(bus, watcher)
            until(lambda: item.label() == "Velotap (active)")
            tell(f"start until the panel shows that it listens: "
                 f"{(time.monotonic() - began) * 1000:.0f} ms")
            process = program.process.pid
            until(lambda: False, patience=12)  # what is done once after a start is over
            tell(f"status item, no window: {memory(process)}")
            tell(f"  anonymous: {largest(process)}")
            tell(f"wakes a minute, permission given: {rest(process):.0f}")
            devices.revoke()
            until(lambda: item.label() == "Velotap (unavailable)")
            tell(f"wakes a minute, permission missing: {rest(process):.0f}")
            program.again()
            until(lambda: False, patience=3)
            tell(f"window open: {memory(process)}")
        tell("after all: ended")
    del name


main()
