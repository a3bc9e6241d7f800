"""A disk that is full when a test wants it to be.

A small file system of memory, seen by this process and the programs it starts; where it may not
mount one, a limit on the files of those programs, at which every write fails too.
"""

import contextlib
import ctypes
import os
import pathlib
import resource
import subprocess
import tempfile

NEW_MOUNTS = 0x00020000  # CLONE_NEWNS
SIZE = 1 << 20


def may_mount():
    """From then on nobody else sees what is mounted here."""
    if ctypes.CDLL(None, use_errno=True).unshare(NEW_MOUNTS) != 0:
        return False
    return subprocess.run(["mount", "--make-rprivate", "/"], capture_output=True,
                          check=False).returncode == 0


class MemoryDisk:
    def __init__(self, folder):
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={SIZE}", "velotap", folder],
                       check=True)
        self.folder = folder
        self.rest = pathlib.Path(folder, "what-fills-it")

    def fill(self, _program):
        with open(self.rest, "wb", buffering=0) as file, contextlib.suppress(OSError):
            while True:
                file.write(b"x" * 512)
        left = os.statvfs(self.folder).f_bavail
        assert left == 0, f"{left} blocks are free"

    def empty(self, _program):
        self.rest.unlink(missing_ok=True)

    def close(self):
        subprocess.run(["umount", "--lazy", self.folder], check=True)


class LimitedFiles:
    def __init__(self, folder):
        self.folder = folder

    @staticmethod
    def limit(program, size):
        if not program.ended():
            _, most = resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE)
            resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE,
                             (most if size is None else size, most))

    def fill(self, program):
        self.limit(program, 0)
        program.starter = ["prlimit", "--fsize=0:"]  # the soft limit alone

    def empty(self, program):
        self.limit(program, None)
        program.starter = []

    def close(self):
        pass


@contextlib.contextmanager
def small_disk():
    with tempfile.TemporaryDirectory(prefix="velotap-disk-") as folder:
        disk = (MemoryDisk if may_mount() else LimitedFiles)(folder)
        try:
            yield disk
        finally:
            disk.close()
