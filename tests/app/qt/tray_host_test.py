#!/usr/bin/env python3
"""The status item in panels that people have: tray_host_test.py PROGRAM PROVIDER WINDOW-PROGRAM

What is clicked is what stands on the screen: the item with the pointer, the rows of a menu with the
pointer or the keyboard. Runs below `umockdev-wrapper`.
"""

import dbus

from desktop_case import ACTIVE, UNAVAILABLE, DesktopCase
from desktop_panels import Tint2Panel, XfcePanel, click, count_menus, hand, settle, shows_item
from desktop_world import Screen, SystemBus
from menu_items import CONFLICT, TRIGGERS
from status_host import PROPERTIES, WATCHER, Item, call

PLACE = (18, 18)  # where both panels show their first item
LEFT, RIGHT = 1, 3


class PanelCase(DesktopCase):
    """One panel, with the program's item in it."""

    arguments = ("program_path", "provider", "window_path")
    panel = None

    def launch(self, **settings):
        self.make_devices(plugged=2)
        system = self.enterContext(SystemBus())
        self.enterContext(Screen(self.window_path, "Editor"))
        self.enterContext(self.panel(dark=False))
        self.start({"accessibilitySetupPresented": True, "enabled": True, **settings},
                   **system.environment)
        self.comes(self.is_in_the_panel, "the item is in the panel")
        settle()

    def enabled_comes(self, now):
        self.comes(lambda: self.setting("enabled") is now, f"enabled is {now}")

    def in_menu(self, drawer, opener, *keys):
        """Opens a menu, which this program draws, and goes to a row by the keyboard.

        Control is let go once there is something to see.
        """
        opener()
        self.comes(lambda: count_menus(drawer) == 1, f"{drawer} draws a menu")
        settle()
        hand("keyup", "ctrl", "key", "--delay", 50, *keys)
        self.comes(lambda: count_menus(drawer) == 0, "the menu is gone")

    def in_menu_of_control_click(self, *keys):
        hand("keydown", "ctrl")
        self.in_menu("velotap", lambda: click(*PLACE, LEFT), *keys)

    def check_clicks(self):
        """Of the item, where a plain left click switches."""
        for now in (False, True):
            click(*PLACE, LEFT)
            self.enabled_comes(now)
        self.in_menu_of_control_click("Escape")
        self.assertIs(self.setting("enabled"), True, "it is no switch then")
        self.in_menu_of_control_click("Down", "Return")
        self.enabled_comes(False)

    def check_clicks_without_the_switch(self):
        self.in_menu("velotap", lambda: click(*PLACE, LEFT), "Down", "Return")
        self.enabled_comes(False)


class XfceTest(PanelCase):
    """A panel that speaks the protocol of items, and draws their menus itself."""

    panel = XfcePanel

    def is_in_the_panel(self):
        bus = dbus.SessionBus()
        if not bus.name_has_owner(WATCHER):
            return False
        watcher = bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        names = call(watcher, PROPERTIES, "Get", WATCHER, "RegisteredStatusNotifierItems")
        if not names:
            return False
        self.item = Item.named(bus, str(names[0]).partition("/")[0])
        return self.item.label() == ACTIVE and shows_item("wrapper")

    def choose(self, title, submenu=None):
        """Opens the panel's menu, and goes to the row by the keyboard."""
        rows = [row for row in self.item.menu()
                if row.visible and row.enabled and not row.separator]
        titles = [row.title for row in rows]
        keys = ["Down"] * (titles.index(submenu or title) + 1)
        if submenu:
            inner = rows[titles.index(submenu)].rows
            inner = [row.title for row in inner if row.enabled and not row.separator]
            keys += ["Right"] + ["Down"] * inner.index(title)
        self.in_menu("wrapper", lambda: click(*PLACE, RIGHT), *keys, "Return")

    def test_clicks(self):
        self.launch()
        self.check_clicks()

    def test_clicks_without_the_switch(self):
        self.launch(leftClickTogglesEnabled=False)
        self.check_clicks_without_the_switch()

    def test_every_row_of_the_menu(self):
        self.launch()
        for now in (False, True):
            self.choose("Enabled")
            self.enabled_comes(now)
        self.switch_gestures()
        self.choose("Ignore Editor")
        self.comes(lambda: self.setting("ignoredApps") == ["Editor"], "it is ignored")
        self.choose("Launch at Login")
        self.comes(lambda: self.item.row("Launch at Login").checked, "it starts at login")
        self.devices.revoke()
        self.comes(lambda: self.item.label() == UNAVAILABLE, "access is gone")
        self.choose("Accessibility permission required…")
        self.comes(lambda: self.windows.titles() == ["Set Up Velotap"], "it is explained")
        self.windows.press("Set Up Later")
        self.comes(lambda: self.windows.titles() == [], "later")
        self.devices.grant()
        self.comes(lambda: self.item.label() == ACTIVE, "access is back")
        self.devices.unplug()
        self.devices.unplug()
        self.comes(lambda: self.item.find("Check gesture status…").visible, "nothing to listen to")
        self.open_settings_by("Check gesture status…")
        self.open_settings_by("Settings…")
        self.choose("Quit Velotap")
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode, 0)

    def switch_gestures(self):
        for device, triggers in TRIGGERS.items():
            for title, key in filter(None, triggers):
                now = not self.item.row(title, device).checked
                self.choose(title, device)
                self.comes(lambda k=key, n=now: self.setting(k) is n, f"{key} is {now}")
                if key == "mouseSwipe3Nav":
                    self.comes(lambda: CONFLICT in self.windows.titles(), "it is warned of")
                    self.windows.press("OK", window=CONFLICT)
                    self.comes(lambda: self.windows.titles() == [], "once")

    def open_settings_by(self, title):
        self.choose(title)
        self.comes(lambda: self.windows.titles() == ["General"], f"{title} opens the settings")
        hand("key", "--window", "0", "ctrl+w")
        self.comes(lambda: self.windows.titles() == [], "they close")


class Tint2Test(PanelCase):
    """A panel that knows only windows that are put into it: the program draws the menu."""

    panel = Tint2Panel

    def is_in_the_panel(self):
        return shows_item("velotap")

    def test_clicks(self):
        self.launch()
        self.check_clicks()

    def test_clicks_without_the_switch(self):
        self.launch(leftClickTogglesEnabled=False)
        self.check_clicks_without_the_switch()

    def test_a_right_click_opens_the_menu(self):
        self.launch()
        self.in_menu("velotap", lambda: click(*PLACE, RIGHT), "Down", "Return")
        self.enabled_comes(False)
        self.in_menu("velotap", lambda: click(*PLACE, RIGHT), "Up", "Return")  # the last one
        self.comes(self.program.ended, "it ends")
        self.assertEqual(self.program.process.returncode, 0)


if __name__ == "__main__":
    PanelCase.main()
