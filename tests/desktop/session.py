"""Private sessions for the desktop tests: programs with readable output, and the servers.

Everything a case starts lives in one temporary folder and ends with the case. Compositors refuse
to run as root, so then everything runs as nobody.
"""

import collections
import ctypes
import os
import pwd
import select
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time

PATIENCE = 20  # seconds that anything may take that does happen; machines under load are slow


class Missing(Exception):
    """A server that the case needs is not installed."""


class Expected(AssertionError):
    """Something did not come true in time."""


class Program:
    """A running program whose standard output is read line by line."""

    def __init__(self, workshop, name, process):
        self.name = name
        self.process = process
        self.lines = []
        self._workshop = workshop
        self._taken = 0
        self._rest = b""
        if process.stdout is not None:
            os.set_blocking(process.stdout.fileno(), False)

    def say(self, line):
        self.process.stdin.write(line.encode() + b"\n")
        self.process.stdin.flush()

    def take(self, matches, what, patience=PATIENCE):
        """The next line, as fields, that `matches`; those before it are passed over."""
        deadline = time.monotonic() + patience
        while True:
            while self._taken < len(self.lines):
                fields = self.lines[self._taken]
                self._taken += 1
                if matches(fields):
                    return fields
            if not self._read(deadline):
                raise Expected(f"{self.name}: waited for {what}")

    def take_next(self, kind, patience=PATIENCE):
        """The next line of this kind, whatever it says."""
        return self.take(lambda f: f[0] == kind, f"a line '{kind}'", patience)

    def all(self, kind):
        """Every line of this kind so far."""
        return [fields for fields in self.lines if fields[0] == kind]

    def _read(self, deadline):
        left = deadline - time.monotonic()
        if left <= 0 or not select.select([self.process.stdout], [], [], left)[0]:
            return False
        data = self.process.stdout.read()
        if not data:
            raise Expected(f"{self.name} ended")
        *lines, self._rest = (self._rest + data).split(b"\n")
        self.lines += [line.decode().split("\t") for line in lines]
        return True

    def end(self):
        """Ends it as its user would: by the end of its input, or a polite signal."""
        if self.process.stdin is not None:
            self.process.stdin.close()
        else:
            self.process.terminate()
        self._gone()

    def kill(self):
        """Ends it as a crash would."""
        self.process.kill()
        self._gone()

    def running(self):
        return self.process.poll() is None

    def _gone(self):
        try:
            self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


class Workshop:
    """What one case works with."""

    def __init__(self, binaries):
        self.root = tempfile.mkdtemp(prefix="velotap-desktop-")
        self.runtime = os.path.join(self.root, "run")
        self.home = os.path.join(self.root, "home")
        self.applications = os.path.join(self.home, ".local/share/applications")
        self._user = pwd.getpwnam("nobody") if os.getuid() == 0 else None
        self._programs = []
        self._logs = []
        os.makedirs(self.applications)
        os.mkdir(self.runtime, 0o700)
        os.chmod(self.root, 0o755)
        # Copied, because the build folder need not be open to the user that runs them.
        for name in ("front_watch", "x11_window", "wayland_window"):
            shutil.copy(os.path.join(binaries, name), self.root)
        self.own(self.root)
        self.environment = {
            "HOME": self.home,
            "XDG_RUNTIME_DIR": self.runtime,
            "XDG_DATA_DIRS": os.path.join(self.root, "data") + ":/usr/share",
            "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/games:/usr/sbin:/sbin",
            "LANG": "C.UTF-8",
        }

    def own(self, folder):
        """Hands a file, or a folder and what is in it, to whoever runs the programs."""
        if self._user is None:
            return
        names = [folder]
        for path, folders, files in os.walk(folder):
            names += [os.path.join(path, name) for name in folders + files]
        for name in names:
            os.chown(name, self._user.pw_uid, self._user.pw_gid, follow_symlinks=False)

    def write(self, path, text):
        folder = os.path.dirname(path)
        if not os.path.isdir(folder):
            os.makedirs(folder)
            self.own(self.home)
        # Written aside and renamed, as installers do.
        with open(path + ".new", "w", encoding="utf-8") as file:
            file.write(text)
        self.own(path + ".new")
        os.rename(path + ".new", path)

    def install(self, name, **keys):
        """Installs a desktop entry in the user's own folder."""
        entry = {"Type": "Application", **keys}
        text = "[Desktop Entry]\n" + "".join(f"{key}={value}\n" for key, value in entry.items())
        self.write(os.path.join(self.applications, name + ".desktop"), text)

    def copy_of(self, program):
        """A private copy of an installed program."""
        path = shutil.which(program, path=self.environment["PATH"])
        if path is None:
            raise Missing(program)
        copy = os.path.join(self.root, program)
        shutil.copy(path, copy)
        return copy

    def spawn(self, arguments, name=None, talks=True, complains=False, pass_fds=(), **environment):
        """Starts a program. One that talks is read and written to; with `complains`, its standard
        error is read too."""
        if shutil.which(arguments[0], path=self.environment["PATH"]) is None:
            raise Missing(arguments[0])
        name = name or os.path.basename(arguments[0])
        log = open(os.path.join(self.root, f"{len(self._logs)}-{name}.log"), "wb")
        self._logs.append(log.name)
        process = subprocess.Popen(
            arguments, env={**self.environment, **environment}, cwd=self.root,
            stdin=subprocess.PIPE if talks else subprocess.DEVNULL,
            stdout=subprocess.PIPE if talks else log,
            stderr=subprocess.STDOUT if complains else log, pass_fds=pass_fds,
            start_new_session=True,
            **({"user": self._user.pw_uid, "group": self._user.pw_gid, "extra_groups": []}
               if self._user else {}))
        log.close()
        program = Program(self, name, process)
        self._programs.append(program)
        return program

    def helper(self, name, *arguments, **environment):
        """One of our own test programs."""
        return self.spawn([os.path.join(self.root, name), *arguments], name=name, **environment)

    def ask(self, arguments, **environment):
        """Runs a command to its end; its output."""
        if shutil.which(arguments[0], path=self.environment["PATH"]) is None:
            raise Missing(arguments[0])
        done = subprocess.run(
            arguments, env={**self.environment, **environment}, cwd=self.root, timeout=PATIENCE,
            stdin=subprocess.DEVNULL, capture_output=True, check=False,
            **({"user": self._user.pw_uid, "group": self._user.pw_gid, "extra_groups": []}
               if self._user else {}))
        if done.returncode != 0:
            raise Expected(f"{arguments[0]} failed: {done.stderr.decode().strip()}")
        return done.stdout.decode()

    def print_outputs(self):
        for program in self._programs:
            for fields in program.lines:
                print(f"  {program.name}: " + "\t".join(fields), file=sys.stderr)
        for log in self._logs:
            with open(log, "rb") as file:
                for line in file.read().decode(errors="replace").splitlines()[-20:]:
                    print(f"  {os.path.basename(log)}: {line}", file=sys.stderr)

    def close(self):
        for program in reversed(self._programs):
            # The whole session that it leads: compositors start children of their own.
            try:
                os.killpg(program.process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            program.process.wait()
            for pipe in (program.process.stdin, program.process.stdout):
                if pipe is not None:
                    try:
                        pipe.close()
                    except BrokenPipeError:
                        pass
        shutil.rmtree(self.root, ignore_errors=True)


class Appearance:
    """Waits for a name to appear in a folder, by inotify."""

    _libc = ctypes.CDLL(None, use_errno=True)
    _CREATE_OR_MOVED_TO = 0x100 | 0x80

    def __init__(self, path):
        self.path = path
        self._fd = self._libc.inotify_init1(os.O_CLOEXEC)
        folder = os.path.dirname(path).encode()
        if self._libc.inotify_add_watch(self._fd, folder, self._CREATE_OR_MOVED_TO) < 0:
            raise OSError(ctypes.get_errno(), f"cannot watch {folder!r}")

    def wait(self):
        """Until the file was created after this object was."""
        deadline = time.monotonic() + PATIENCE
        name = os.path.basename(self.path)
        while True:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self._fd], [], [], left)[0]:
                raise Expected(f"waited for {self.path}")
            data = os.read(self._fd, 4096)
            while data:
                length = struct.unpack_from("iIII", data)[3]
                found = data[16:16 + length].rstrip(b"\0").decode()
                data = data[16 + length:]
                if found == name:
                    os.close(self._fd)
                    return


def listening(path):
    """Waits until somebody listens at a socket that exists already or is about to listen."""
    deadline = time.monotonic() + PATIENCE
    while True:
        with socket.socket(socket.AF_UNIX) as client:
            try:
                client.connect(path)
                return
            except ConnectionRefusedError:
                if time.monotonic() > deadline:
                    raise Expected(f"nobody listens at {path}") from None
                os.sched_yield()


Latency = collections.namedtuple("Latency", "quarter median worst count")


def latency_of(samples):
    """`quarter` is what one in four stays below: load of the machine hardly touches it."""
    ordered = sorted(samples)
    return Latency(ordered[len(ordered) // 4], ordered[len(ordered) // 2], ordered[-1], len(ordered))
