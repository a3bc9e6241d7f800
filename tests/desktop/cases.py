"""The cases of tests/desktop/run: one class for each kind of desktop, one method for each case."""

import os
import shutil

from desktops import Gnome, Kwin, KwinScript, OpenboxOnX, Sway, Weston
from session import Expected, latency_of

UNKNOWN = "app.norwend.velotap.unknown-application"
LATENCY_LIMIT = 10_000  # microseconds from the server's event to the observers
SWITCHES = 40


def check(condition, what):
    if not condition:
        raise Expected(what)


def expect_front(watch, identifier, name=None):
    """The very next activation is this one: nothing came in between."""
    _, time, _, found, found_name = watch.take_next("front")
    check(found == identifier, f"expected {identifier} in front, not {found}")
    check(name is None or found_name == name, f"expected the name {name}, not {found_name}")
    return int(time)


def expect_source(watch, kind):
    return watch.take(lambda f: f[0] == "source" and f[2] == kind, f"the source {kind}")


def expect_loss(watch, lines_before):
    """The fallback is announced with exactly one line."""
    expect_front(watch, UNKNOWN)
    expect_source(watch, "none")
    lines = [f[1] for f in watch.all("log")][lines_before:]
    check(len(lines) == 1 and "unknown" in lines[0], f"one line about the loss, not {lines}")


def log_lines(watch):
    return len(watch.all("log"))


def started(desktop):
    """The watch on a fresh desktop, with two windows of which the second has the focus."""
    desktop.start()
    watch = desktop.watch()
    expect_source(watch, desktop.kind)
    one = desktop.window("one")
    front_of(watch, "one")
    two = desktop.window("two")
    front_of(watch, "two")
    return watch, one, two


def front_of(watch, identifier):
    """Waits until this is in front; on the way there may be what the desktop shows at its start."""
    return watch.take(lambda f: f[0] == "front" and f[3] == identifier, f"{identifier} in front")


def activation_order(desktop):
    """Every switch is seen, in order, with nothing between, and soon."""
    watch, one, two = started(desktop)
    samples = []
    for turn in range(SWITCHES):
        window, name = ((one, "one"), (two, "two"))[turn % 2]
        desktop.activate(window, name)
        told = desktop.activation_time(window)
        samples.append(expect_front(watch, name) - told)
    check(watch.running(), "front_watch ended")
    latency = latency_of(samples)
    check(latency.quarter < LATENCY_LIMIT, f"too late: {latency}")
    return f"latency median {latency.median} µs, worst {latency.worst} µs of {latency.count}"


def nothing_in_front(desktop):
    """With the last window closed nothing is in front, and it is said once."""
    watch, one, two = started(desktop)
    two.end()
    expect_front(watch, "one")
    one.end()
    expect_front(watch, "-")
    desktop.window("three")
    expect_front(watch, "three")


def server_dies(desktop):
    """A killed server costs one line and the rules; when it is back, everything is."""
    watch, _, _ = started(desktop)
    before = log_lines(watch)
    desktop.kill_server()
    expect_loss(watch, before)
    desktop.start_server()
    expect_source(watch, desktop.kind)
    desktop.window("four")
    front_of(watch, "four")
    check(log_lines(watch) == before + 2, "one line about the loss and one about the recovery")


def starts_before_server(desktop):
    """A program that is there first finds the server when it comes."""
    desktop.prepare()
    watch = desktop.watch()
    expect_source(watch, "none")
    desktop.start_server()
    expect_source(watch, desktop.kind)


class X11Cases:
    def activation_order(self, workshop):
        return activation_order(OpenboxOnX(workshop))

    def nothing_in_front(self, workshop):
        nothing_in_front(OpenboxOnX(workshop))

    def server_dies(self, workshop):
        server_dies(OpenboxOnX(workshop))

    def starts_before_server(self, workshop):
        starts_before_server(OpenboxOnX(workshop))

    def window_manager_dies(self, workshop):
        desktop = OpenboxOnX(workshop)
        watch, _, two = started(desktop)
        before = log_lines(watch)
        desktop.kill_manager()
        expect_loss(watch, before)
        desktop.start_manager()
        expect_source(watch, "x11")
        desktop.activate(two, "two")
        front_of(watch, "two")

    def late_class(self, workshop):
        desktop = OpenboxOnX(workshop)
        watch, _, two = started(desktop)
        two.say("rename late Late")
        expect_front(watch, "Late")

    def desktop_entries(self, workshop):
        workshop.environment["LANG"] = "de_AT.UTF-8"
        workshop.install("org.example.One", **{"Name": "First", "Name[de]": "Erstes",
                                               "StartupWMClass": "one"})
        desktop = OpenboxOnX(workshop)
        desktop.start()
        watch = desktop.watch()
        expect_source(watch, "x11")
        one = desktop.window("one")
        front_of(watch, "org.example.One")
        check(watch.all("front")[-1][4] == "Erstes", "the name in the user's language")
        two = desktop.window("two")
        expect_front(watch, "two")
        # Installed while the program runs: the window that is in front is seen to belong to it as
        # soon as the focus moves.
        workshop.install("org.example.two", Name="Second")
        desktop.activate(one, "one")
        expect_front(watch, "org.example.One")
        desktop.activate(two, "two")
        expect_front(watch, "org.example.two", "Second")
        workshop.install("org.example.Three", Name="Third")
        desktop.window("org.example.three")
        expect_front(watch, "org.example.Three", "Third")

    def gtk_application_id(self, workshop):
        workshop.install("org.example.Gtk", Name="Gtk program")
        desktop = OpenboxOnX(workshop)
        desktop.start()
        watch = desktop.watch()
        expect_source(watch, "x11")
        desktop.window("gtk-program", "org.example.Gtk")
        front_of(watch, "org.example.Gtk")


class SwayCases:
    def activation_order(self, workshop):
        return activation_order(Sway(workshop))

    def nothing_in_front(self, workshop):
        nothing_in_front(Sway(workshop))

    def server_dies(self, workshop):
        server_dies(Sway(workshop))

    def starts_before_server(self, workshop):
        starts_before_server(Sway(workshop))


class KwinCases:
    def activation_order(self, workshop):
        return activation_order(Kwin(workshop))

    def nothing_in_front(self, workshop):
        nothing_in_front(Kwin(workshop))

    def server_dies(self, workshop):
        server_dies(Kwin(workshop))


class KwinScriptCases:
    def activation_order(self, workshop):
        return activation_order(KwinScript(workshop))

    def nothing_in_front(self, workshop):
        nothing_in_front(KwinScript(workshop))

    def server_dies(self, workshop):
        server_dies(KwinScript(workshop))

    def bus_dies(self, workshop):
        desktop = KwinScript(workshop)
        watch, _, _ = started(desktop)
        before = log_lines(watch)
        desktop.bus.kill()
        expect_loss(watch, before)
        check(watch.running(), "front_watch ended with the bus")
        # KWin never comes back to a new bus, so that a new session brings both.
        desktop.kill_server()
        desktop.start()
        expect_source(watch, "kdeScript")
        desktop.window("three")
        front_of(watch, "three")
        check(log_lines(watch) == before + 2, "one line about the loss and one about the recovery")

    def unloads_its_script(self, workshop):
        desktop = KwinScript(workshop)
        watch, _, _ = started(desktop)
        check(desktop.script_is_loaded(), "the script is loaded while the program runs")
        check(not any(name.startswith("velotap-") for name in os.listdir(workshop.runtime)),
              "the script's file is gone once it runs")
        watch.end()
        check(not desktop.script_is_loaded(), "the script is unloaded when the program ends")

    def survives_a_left_script(self, workshop):
        desktop = KwinScript(workshop)
        watch, _, _ = started(desktop)
        watch.kill()
        check(desktop.script_is_loaded(), "a crash leaves the script behind")
        again = desktop.watch()
        expect_source(again, "kdeScript")
        front_of(again, "two")


class GnomeCases:
    def activation_order(self, workshop):
        return activation_order(Gnome(workshop))

    def server_dies(self, workshop):
        server_dies(Gnome(workshop))

    def nothing_in_front(self, workshop):
        nothing_in_front(Gnome(workshop))

    def bus_dies(self, workshop):
        desktop = Gnome(workshop)
        watch, _, _ = started(desktop)
        before = log_lines(watch)
        desktop.bus.kill()
        expect_loss(watch, before)
        check(watch.running(), "front_watch ended with the bus")
        desktop.kill_server()
        desktop.start()
        expect_source(watch, "gnomeExtension")
        desktop.window("three")
        front_of(watch, "three")
        check(log_lines(watch) == before + 2, "one line about the loss and one about the recovery")

    def extension_comes_and_goes(self, workshop):
        desktop = Gnome(workshop)
        watch, _, _ = started(desktop)
        before = log_lines(watch)
        desktop.switch_extension(False)
        expect_loss(watch, before)
        desktop.switch_extension(True)
        expect_source(watch, "gnomeExtension")
        expect_front(watch, "two")


class FallbackCases:
    def weston(self, workshop):
        desktop = Weston(workshop)
        desktop.start()
        watch = desktop.watch()
        source = expect_source(watch, "none")
        check("does not list its windows" in source[3], f"a reason, not {source[3]}")
        desktop.window("one")
        check(not watch.all("front"), "the unknown application stays in front")

    def another_desktop_takes_its_place(self, workshop):
        weston = Weston(workshop)
        weston.start()
        watch = weston.watch()
        expect_source(watch, "none")
        weston.kill_server()
        shutil.rmtree(os.path.join(workshop.runtime, "nothing"), ignore_errors=True)
        sway = Sway(workshop)
        sway.prepare()
        sway.start_server()
        expect_source(watch, "wlroots")

    def gnome_without_extension(self, workshop):
        desktop = Gnome(workshop, extension=False)
        desktop.start()
        watch = desktop.watch()
        source = expect_source(watch, "none")
        check("extension" in source[3], f"a reason that names the extension, not {source[3]}")

    def no_desktop(self, workshop):
        watch = workshop.helper("front_watch")
        source = expect_source(watch, "none")
        check("no desktop session" in source[3], f"a reason, not {source[3]}")


def all_cases():
    for prefix, group in (("x11", X11Cases()), ("sway", SwayCases()), ("kwin", KwinCases()),
                          ("kwin-script", KwinScriptCases()), ("gnome", GnomeCases()),
                          ("fallback", FallbackCases())):
        for name in vars(type(group)):
            if not name.startswith("_"):
                yield f"{prefix}.{name}", getattr(group, name)
