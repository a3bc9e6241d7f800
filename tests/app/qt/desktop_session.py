"""The program with windows, started in a home of its own; and waiting without idling."""

import contextlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

# Connections that are made later are served by the same loop.
DBusGMainLoop(set_as_default=True)
PATIENCE = 10  # seconds until something that should happen counts as not happening


def until(condition, patience=PATIENCE):
    """Serves the main loop until the condition holds; whether it came to hold."""
    context = GLib.MainContext.default()
    end = time.monotonic() + patience
    beat = GLib.timeout_add(20, lambda: True)  # wakes the loop to look again
    try:
        while not condition():
            if time.monotonic() > end:
                return False
            context.iteration(True)
        return True
    finally:
        GLib.source_remove(beat)


class Program:
    """`settings` is what its settings file holds before it starts, `more` is of its environment,
    its home is made in `folder`."""

    def __init__(self, path, provider, settings, more=None, arguments=(), folder=None):
        self.path = path
        self.arguments = list(arguments)
        self.provider = provider
        self.home = tempfile.TemporaryDirectory(prefix="velotap-desktop-", dir=folder)
        folder = pathlib.Path(self.home.name, "config", "velotap")
        folder.mkdir(parents=True)
        self.settings_file = folder / "app.norwend.velotap.json"
        self.settings_file.write_text(json.dumps(settings), encoding="utf-8")
        runtime = pathlib.Path(self.home.name, "runtime")
        runtime.mkdir(mode=0o700)
        self.environment = dict(
            os.environ, HOME=self.home.name, XDG_CONFIG_HOME=str(folder.parent),
            XDG_STATE_HOME=str(pathlib.Path(self.home.name, "state")), XDG_RUNTIME_DIR=str(runtime),
            LC_ALL="C.UTF-8", LANGUAGE="en", QT_ACCESSIBILITY="1",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb",
            VELOTAP_MULTITOUCH_LIBRARY=provider)
        self.environment.update(more or {})
        self.starter = []  # what it is started by, if not by itself
        self.process = None
        self.start()

    def start(self, provider=None):
        """Also after it ended, in the same home."""
        environment = dict(self.environment,
                           VELOTAP_MULTITOUCH_LIBRARY=provider or self.provider)
        self.close_errors()
        # Signals that Python ignores stay so: a limit on files is then an error, not the end.
        self.process = subprocess.Popen([*self.starter, self.path, *self.arguments],
                                        env=environment, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, restore_signals=False)
        for stream in (self.process.stdout, self.process.stderr):
            os.set_blocking(stream.fileno(), False)
        self.errors = b""
        self.output = b""

    def close_errors(self):
        if self.process is not None:
            self.process.stdout.close()
            self.process.stderr.close()

    def printed(self):
        """The lines that it has printed so far."""
        self.output += self.process.stdout.read() or b""
        return self.output.decode().splitlines()

    def told(self):
        """What it has said on standard error so far."""
        self.errors += self.process.stderr.read() or b""
        return self.errors.decode()

    def again(self):
        """Starts it once more, as a person does who wants to see its window."""
        return subprocess.run([self.path], env=self.environment, check=False,
                              timeout=PATIENCE).returncode

    def settings(self):
        return json.loads(self.settings_file.read_text(encoding="utf-8"))

    def ended(self):
        return self.process.poll() is not None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if not self.ended():
            self.process.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.process.wait(PATIENCE)
        if not self.ended():
            self.process.kill()
            self.process.wait()
        sys.stderr.write(self.told())
        self.close_errors()
        self.home.cleanup()
