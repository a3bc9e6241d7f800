"""For scripts/tray-pictures: tray_pictures.py PROGRAM PROVIDER WINDOW-PROGRAM FOLDER"""

import subprocess
import sys

import accessible
from desktop_look import Look
from desktop_panels import (Tint2Panel, XfcePanel, click, count_menus, geometry, hand, settle,
                            visible_windows)
from desktop_session import Program, until
from desktop_world import Devices, Screen, SystemBus
from menu_items import SETUP

PLACE = (18, 18)  # where both panels show their first item
AWAY = (1000, 700)
TONES = {False: "light", True: "dark"}


def must(condition, what):
    if not until(condition):
        raise TimeoutError(what)


def picture(path, *what):
    settle()
    subprocess.run(["import", *what, "+repage", path], check=True)


class Sitting:
    """At one panel, with windows of one look."""

    def __init__(self, program, provider, devices, environment):
        self.program = program
        self.provider = provider
        self.devices = devices
        self.environment = environment

    def started(self, **settings):
        return Program(self.program, self.provider, settings, self.environment)

    def show_item_and_menu(self, stem):
        with self.started(accessibilitySetupPresented=True) as program:
            must(lambda: accessible.Windows(program.process.pid).application(), "it runs")
            until(lambda: False, patience=2)  # panels take their time with new items
            for state in ("active", "disabled"):
                hand("mousemove", *AWAY)
                picture(f"{stem}-{state}.png", "-window", "root", "-crop", "120x36+0+0")
                click(*PLACE)
                must(lambda s=state: program.settings().get("enabled", True) is (s != "active"),
                     "a click switches")
            self.devices.revoke()
            hand("mousemove", *AWAY)
            until(lambda: False, patience=1)
            picture(f"{stem}-unavailable.png", "-window", "root", "-crop", "120x36+0+0")
            self.devices.grant()
            until(lambda: False, patience=2)
            click(*PLACE, 3)
            must(lambda: count_menus("wrapper") + count_menus("velotap") == 1, "a menu")
            picture(f"{stem}-menu.png", "-window", "root", "-crop", "300x290+0+0")
            hand("key", "Escape")

    def show_onboarding(self, stem):
        self.devices.revoke()
        with self.started() as program:
            windows = accessible.Windows(program.process.pid)
            must(lambda: windows.titles() == [SETUP], "it explains itself")
            hand("mousemove", *AWAY)
            [window] = [each for each in visible_windows("velotap")
                        if geometry(each)["WIDTH"] > 300]
            picture(f"{stem}-missing.png", "-window", window)
            self.devices.grant()
            must(lambda: windows.shows("Permission granted", ("heading",)), "it moves on")
            picture(f"{stem}-granted.png", "-window", window)


def main():
    program, provider, window_program, folder = sys.argv[1:5]
    accessible.turn_on()
    devices = Devices()
    devices.plug()
    devices.plug()
    with SystemBus() as system, Screen(window_program, "Editor"):
        sitting = Sitting(program, provider, devices,
                          {**devices.environment, **system.environment})
        for dark_windows in (False, True):
            with Look(dark_windows):
                for panel in (XfcePanel, Tint2Panel):
                    for dark_panel in (False, True):
                        kind = panel.__name__.removesuffix("Panel").lower()
                        name = f"{kind}-{TONES[dark_panel]}-windows-{TONES[dark_windows]}"
                        devices.grant()
                        with panel(dark_panel):
                            sitting.show_item_and_menu(f"{folder}/{name}")
                sitting.show_onboarding(f"{folder}/onboarding-{TONES[dark_windows]}")


main()
