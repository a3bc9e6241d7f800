"""Panels that people really have, with a place for status items; and a hand at the pointer.

XfcePanel asks for items over D-Bus and draws their menus itself. Tint2Panel knows only windows that
are put into it, so that the program draws its menu.
"""

import contextlib
import os
import pathlib
import subprocess
import tempfile

from desktop_session import PATIENCE, until

PANEL_HEIGHT = 36
ITEM_WIDTH = 24
XFCE_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="36"/>
      <property name="icon-size" type="uint" value="24"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
"""
TINT2_SETTINGS = """rounded = 0
border_width = 0
background_color = {color} 100
panel_items = S
panel_size = 100% 36
panel_position = top left horizontal
panel_background_id = 1
systray_padding = 6 6 6
systray_background_id = 0
systray_icon_size = 24
"""


class Panel:
    """Started in a home of its own; gone with the context."""

    def __init__(self, dark):
        self.dark = dark
        self.running = contextlib.ExitStack()
        self.home = pathlib.Path(self.running.enter_context(
            tempfile.TemporaryDirectory(prefix="velotap-panel-")))
        # What made-up devices need is not for panels.
        self.environment = dict(os.environ, HOME=str(self.home), XDG_CONFIG_HOME=str(self.home),
                                XDG_CACHE_HOME=str(self.home), LD_PRELOAD="",
                                GTK_THEME="Adwaita:dark" if dark else "Adwaita")
        self.log = self.running.enter_context(open(self.home / "log", "w+", encoding="utf-8"))
        self.process = subprocess.Popen(self.prepare(), env=self.environment,
                                        stdout=self.log, stderr=self.log)
        self.running.callback(self.end)

    def prepare(self):
        """Writes its settings; the command that starts it."""
        raise NotImplementedError

    def end(self):
        self.process.terminate()
        self.process.wait(PATIENCE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.running.close()


class XfcePanel(Panel):
    def prepare(self):
        folder = self.home / "xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True)
        (folder / "xfce4-panel.xml").write_text(
            XFCE_SETTINGS.format(dark=str(self.dark).lower()), encoding="utf-8")
        # The keeper of settings was told of its folder when the bus started.
        self.keeper = subprocess.Popen(["/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd"],
                                       env=self.environment)
        self.running.callback(self.end_keeper)
        return ["xfce4-panel", "--disable-wm-check"]

    def end_keeper(self):
        self.keeper.terminate()
        self.keeper.wait(PATIENCE)


class Tint2Panel(Panel):
    def prepare(self):
        settings = self.home / "tint2rc"
        settings.write_text(TINT2_SETTINGS.format(color="#202124" if self.dark else "#e8e8ea"),
                            encoding="utf-8")
        return ["tint2", "-c", str(settings)]


def visible_windows(kind):
    """Of programs whose class has this in its name."""
    told = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", kind],
                          capture_output=True, text=True, check=False).stdout
    return told.split()


def geometry(window):
    """X, Y, WIDTH and HEIGHT on the screen; nothing of a window that is gone."""
    told = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], capture_output=True,
                          text=True, check=False).stdout
    return {name: int(value) for name, value in (line.split("=") for line in told.split())}


def shows_item(kind):
    """Whether a window of the panel, or in it, has room for an item."""
    return any(geometry(window).get("WIDTH", 0) >= ITEM_WIDTH for window in visible_windows(kind))


def is_menu(window):
    """What is drawn below the panel and is no tooltip."""
    kind = subprocess.run(["xprop", "-id", window, "_NET_WM_WINDOW_TYPE"], capture_output=True,
                          text=True, check=False).stdout
    return geometry(window).get("Y", 0) >= PANEL_HEIGHT and "TOOLTIP" not in kind


def count_menus(kind):
    """Of such programs, that stand on the screen."""
    return sum(is_menu(window) for window in visible_windows(kind))


def hand(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def click(x, y, button=1):
    hand("mousemove", x, y, "click", button)


def picture(path):
    """Of the whole screen."""
    subprocess.run(["import", "-window", "root", str(path)], check=True)


def settle():
    """Until whatever was drawn has been drawn: nothing on the screen changes any more."""
    seen = []

    def still():
        # Nothing is told while a window that is asked about goes away.
        told = subprocess.run(["xwd", "-root", "-silent"], capture_output=True, check=False)
        seen.append(told.stdout if told.returncode == 0 else None)
        return len(seen) > 3 and seen[-1] is not None and seen[-3:] == [seen[-1]] * 3

    until(still)
