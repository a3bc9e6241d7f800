"""The desktops that the cases play on, each startable, killable and without a screen."""

import os
import re
import socket

from session import PATIENCE, Appearance, Expected, listening


class Desktop:
    """What all have in common. `kind` is the source that should be live on it."""

    kind = "none"

    def __init__(self, workshop):
        self.workshop = workshop
        self.server = None

    def prepare(self):
        """What must stand before the server, and before a watch that is there first."""

    def start(self):
        self.prepare()
        self.start_server()

    def kill_server(self):
        self.server.kill()

    def watch(self):
        return self.workshop.helper("front_watch")


def display_is_free(number):
    """Whether an X server could have it: a server in another root shares its socket's name in the
    network's namespace, but not the file."""
    path = f"/tmp/.X11-unix/X{number}"
    if os.path.exists(path) or os.path.exists(f"/tmp/.X{number}-lock"):
        return False
    with socket.socket(socket.AF_UNIX) as name:
        try:
            name.bind("\0" + path)
        except OSError:
            return False
    return True


class OpenboxOnX(Desktop):
    kind = "x11"

    def __init__(self, workshop):
        super().__init__(workshop)
        self.manager = None
        self.display = None

    def prepare(self):
        # A number of our own choosing, so that a restarted server can have it again, and from a
        # place of our own: others look for one at the same time.
        start = 90 + os.getpid() % 10000
        self.display = f":{next(n for n in range(start, start + 1000) if display_is_free(n))}"
        self.workshop.environment["DISPLAY"] = self.display

    def start_server(self):
        read, write = os.pipe()
        self.server = self.workshop.spawn(
            ["Xvfb", self.display, "-screen", "0", "800x600x24", "-nolisten", "tcp",
             "-displayfd", str(write)], talks=False, pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as ready:
            # A whole line, written once the server accepts connections; nothing if it ends.
            if not ready.readline().endswith("\n"):
                raise Expected("Xvfb did not start")
        self.start_manager()

    def start_manager(self):
        # Its start-up command runs when it manages windows; a window that is shown between its
        # first sign of life and that is never managed.
        ready = os.path.join(self.workshop.home, "openbox-ready")
        if os.path.exists(ready):
            os.remove(ready)
        appearance = Appearance(ready)
        self.manager = self.workshop.spawn(["openbox", "--startup", f"touch {ready}"], talks=False)
        appearance.wait()

    def kill_manager(self):
        self.manager.kill()

    def window(self, name, gtk_id=None):
        window = self.workshop.helper("x11_window", name, name, *([gtk_id] if gtk_id else []))
        window.take_next("mapped")
        self.activate(window, name)
        self.activation_time(window)
        return window

    def activate(self, window, _name):
        window.say("activate")

    def activation_time(self, window):
        return int(window.take_next("active")[1])


class WaylandDesktop(Desktop):
    def __init__(self, workshop):
        super().__init__(workshop)
        self.socket = os.path.join(workshop.runtime, "wayland-1")
        workshop.environment["WAYLAND_DISPLAY"] = "wayland-1"
        workshop.environment["XDG_SESSION_TYPE"] = "wayland"

    def spawn_server(self, arguments, talks=False, complains=False, **environment):
        appearance = Appearance(self.socket)
        self.server = self.workshop.spawn(arguments, talks=talks, complains=complains,
                                          **environment)
        appearance.wait()
        listening(self.socket)

    def window(self, name):
        window = self.workshop.helper("wayland_window", name)
        window.take_next("mapped")
        return window

    def activation_time(self, window):
        return int(window.take_next("activated")[1])

    def kill_server(self):
        self.server.kill()


class Sway(WaylandDesktop):
    kind = "wlroots"

    def prepare(self):
        self.config = os.path.join(self.workshop.home, "sway-config")
        self.control = os.path.join(self.workshop.runtime, "control")
        # Without a keyboard the seat would have no focus to give.
        self.workshop.write(self.config, "seat seat0 fallback true\n")

    def start_server(self):
        # Sway numbers its sockets from 1 and takes over one that a dead compositor left.
        self.spawn_server(["sway", "-c", self.config], WLR_BACKENDS="headless",
                          WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1",
                          SWAYSOCK=self.control, WAYLAND_DISPLAY="")

    def activate(self, _window, name):
        self.workshop.ask(["swaymsg", f"[app_id={name}] focus"], SWAYSOCK=self.control)

    def window(self, name):
        window = super().window(name)
        window.take_next("activated")
        return window


class WithBus(WaylandDesktop):
    def prepare(self):
        path = os.path.join(self.workshop.runtime, "bus")
        self.workshop.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={path}"
        appearance = Appearance(path)
        self.bus = self.workshop.spawn(
            ["dbus-daemon", "--session", "--nofork", f"--address=unix:path={path}"], talks=False)
        appearance.wait()
        listening(path)

    def call(self, service, path, method, *arguments):
        return self.workshop.ask(["gdbus", "call", "--session", "-d", service, "-o", path, "-m",
                                  method, *arguments])

    def wait_for_name(self, name):
        self.workshop.ask(["gdbus", "wait", "--session", "--timeout", str(PATIENCE), name])


class Kwin(WithBus):
    kind = "kdeWindowManagement"
    installed = True  # with a desktop file that asks KWin for its list of windows

    def __init__(self, workshop):
        super().__init__(workshop)
        workshop.environment["XDG_CURRENT_DESKTOP"] = "KDE"
        self._scripts = 0

    def prepare(self):
        super().prepare()
        # A copy bears no file capability, which a container may be unable to grant.
        self.program = self.workshop.copy_of("kwin_wayland")
        if self.installed:
            # KWin knows the program by its full path.
            self.workshop.install("app.norwend.velotap", **{
                "Name": "Velotap", "Exec": os.path.join(self.workshop.root, "front_watch"),
                "X-KDE-Wayland-Interfaces": "org_kde_plasma_window_management"})

    def start_server(self):
        self.spawn_server([self.program, "--virtual", "--socket", "wayland-1",
                           "--no-lockscreen", "--no-global-shortcuts"],
                          KWIN_COMPOSE="Q", WAYLAND_DISPLAY="", QT_QPA_PLATFORM="wayland")
        self.wait_for_name("org.kde.KWin")

    def window(self, name):
        window = super().window(name)
        window.take_next("activated")
        return window

    def activate(self, _window, name):
        self._scripts += 1
        path = os.path.join(self.workshop.home, f"activate-{self._scripts}.js")
        self.workshop.write(path, f"""
            for (const window of workspace.clientList()) {{
              if (window.resourceClass.toString() === "{name}") workspace.activeClient = window;
            }}""")
        self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting.loadScript", path,
                  f"activate-{self._scripts}")
        self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting.start")


class KwinScript(Kwin):
    kind = "kdeScript"
    installed = False

    def script_is_loaded(self):
        answer = self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting.isScriptLoaded",
                           "velotap-front-application")
        return "true" in answer


class Gnome(WithBus):
    kind = "gnomeExtension"
    uuid = "velotap@norwend.app"

    def __init__(self, workshop, extension=True):
        super().__init__(workshop)
        self.extension = extension
        workshop.environment["XDG_CURRENT_DESKTOP"] = "GNOME"

    def prepare(self):
        version = re.search(r"\d+", self.workshop.ask(["gnome-shell", "--version"])).group()
        super().prepare()
        self.workshop.environment["GSETTINGS_BACKEND"] = "keyfile"
        # The shell cannot start without a system bus; that nobody it looks for is there is fine.
        self.workshop.environment["DBUS_SYSTEM_BUS_ADDRESS"] = \
            self.workshop.environment["DBUS_SESSION_BUS_ADDRESS"]
        folder = os.path.join(self.workshop.home, ".local/share/gnome-shell/extensions", self.uuid)
        assemble = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                "../../packaging/gnome-extension/assemble")
        if self.extension:
            # By whoever runs the tests: the sources need not be open to the desktop's user.
            os.makedirs(os.path.dirname(folder), exist_ok=True)
            if os.system(f"'{assemble}' {version} '{folder}'") != 0:
                raise Expected("the extension could not be assembled")
        self.workshop.write(
            os.path.join(self.workshop.home, ".config/glib-2.0/settings/keyfile"),
            "[org/gnome/shell]\n"
            f"enabled-extensions=['{self.uuid}']\n"
            "welcome-dialog-last-shown-version='9999'\n"
            "[org/gnome/desktop/lockdown]\ndisable-lock-screen=true\n")

    def start_server(self):
        self.spawn_server(["gnome-shell", "--headless", "--wayland", "--unsafe-mode",
                           "--wayland-display", "wayland-1", "--virtual-monitor", "1024x768"],
                          talks=True, complains=True, WAYLAND_DISPLAY="", MUTTER_DEBUG_DUMMY_MODE_SPECS="")
        self.server.take(lambda fields: "GNOME Shell started" in fields[0], "the shell's start")
        if self.extension:
            self.wait_for_name("app.norwend.velotap.GnomeFront")
        self.evaluate("Main.overview.hide()")

    def evaluate(self, script):
        answer = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", script)
        if not answer.startswith("(true"):
            raise Expected(f"{script}: {answer}")

    def activate(self, _window, name):
        self.evaluate(f"""
            Main.activateWindow(
                global.get_window_actors().map(actor => actor.meta_window)
                    .find(window => window.get_wm_class() === '{name}'),
                global.display.get_current_time_roundtrip())""")

    def window(self, name):
        window = super().window(name)
        self.activate(window, name)
        self.activation_time(window)
        return window

    def switch_extension(self, on):
        method = "EnableExtension" if on else "DisableExtension"
        self.call("org.gnome.Shell.Extensions", "/org/gnome/Shell/Extensions",
                  f"org.gnome.Shell.Extensions.{method}", self.uuid)


class Weston(WaylandDesktop):
    def start_server(self):
        self.spawn_server(["weston", "--backend=headless-backend.so", "--socket=wayland-1",
                           "--no-config", "--idle-time=0"], WAYLAND_DISPLAY="")
