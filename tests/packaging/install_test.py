"""What an installation consists of, and that it runs: install_test.py BUILD [windows]"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

ID = "app.norwend.velotap"


class InstallTest(unittest.TestCase):
    build = ""
    has_windows = False

    @classmethod
    def setUpClass(cls):
        cls.folder = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="velotap-install-"))
        subprocess.run(["cmake", "--install", cls.build, "--prefix", "/usr"], check=True,
                       stdout=subprocess.DEVNULL, env=dict(os.environ, DESTDIR=cls.folder))
        cls.prefix = pathlib.Path(cls.folder, "usr")

    def path(self, name):
        path = self.prefix / name
        self.assertTrue(path.is_file(), f"{name} of {sorted(self.prefix.rglob('*'))}")
        return path

    def run_program(self, *arguments, **environment):
        return subprocess.run([self.path("bin/velotap"), *arguments], capture_output=True,
                              text=True, check=False, stdin=subprocess.DEVNULL,
                              env={"HOME": self.folder, "PATH": "/usr/bin:/bin", **self.sanitizer(),
                                   **environment})

    @staticmethod
    def sanitizer():
        """What whoever runs the tests tells the sanitizers."""
        return {name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}

    def test_the_program_runs_and_finds_its_library(self):
        told = self.run_program("--version")
        self.assertRegex(told.stdout, r"^velotap \d+\.\d+\.\d+\n$")
        self.assertEqual(told.returncode, 0)
        told = self.run_program("--devices")
        self.assertTrue(told.stdout.startswith("multitouch devices: "), told.stdout)

    def test_the_program_with_windows_is_beside_it(self):
        if not self.has_windows:
            self.skipTest("built without windows")
        for option in ("--version", "--help"):
            both = {subprocess.run([self.path(f"bin/{name}"), option], capture_output=True,
                                   text=True, check=True, env={"HOME": self.folder}).stdout
                    for name in ("velotap", "velotap-desktop")}
            self.assertEqual(len(both), 1, "one answer, whichever is asked")
        with tempfile.TemporaryDirectory(prefix="velotap-pictures-") as pictures:
            told = self.run_program("--listlane-capture", pictures, "--scenes", "gestures")
            self.assertEqual(told.returncode, 0, told.stderr)
            self.assertTrue(list(pathlib.Path(pictures).iterdir()))

    def test_the_helper_finds_what_it_installs(self):
        helper = self.path("libexec/velotap/grant-access")
        self.assertTrue(os.access(helper, os.X_OK))
        with tempfile.TemporaryDirectory(prefix="velotap-root-") as root:
            subprocess.run([helper], check=True, env=dict(os.environ, VELOTAP_ROOT=root))
            self.assertTrue(pathlib.Path(root, "etc/udev/rules.d/70-velotap.rules").is_file())
            self.assertTrue(pathlib.Path(root, "etc/modules-load.d/velotap.conf").is_file())

    def test_the_prompt_knows_the_helper_where_it_is_installed(self):
        policy = xml.etree.ElementTree.parse(self.path(f"share/polkit-1/actions/{ID}.policy"))
        action = policy.getroot().find("action")
        self.assertEqual(action.get("id"), f"{ID}.grant-access")
        self.assertEqual(action.find("annotate").text, "/usr/libexec/velotap/grant-access")

    def test_desktops_are_told(self):
        entry = self.path(f"share/applications/{ID}.desktop")
        subprocess.run(["desktop-file-validate", entry], check=True)
        subprocess.run(["appstreamcli", "validate", "--no-net",
                        self.path(f"share/metainfo/{ID}.metainfo.xml")], check=True,
                       stdout=subprocess.DEVNULL)
        lines = entry.read_text(encoding="utf-8").splitlines()
        self.assertIn("Exec=velotap", lines)
        self.assertIn(f"Icon={ID}", lines)
        icons = "share/icons/hicolor"
        for icon in (f"scalable/apps/{ID}", *(f"symbolic/apps/velotap-{state}-symbolic"
                                              for state in ("active", "unavailable", "disabled"))):
            xml.etree.ElementTree.parse(self.path(f"{icons}/{icon}.svg"))

    def test_it_may_be_moved(self):
        with tempfile.TemporaryDirectory(prefix="velotap-moved-") as moved:
            shutil.copytree(self.prefix, pathlib.Path(moved, "elsewhere"))
            told = subprocess.run([f"{moved}/elsewhere/bin/velotap", "--devices"],
                                  capture_output=True, text=True, check=False,
                                  env={"HOME": moved, "PATH": "/usr/bin:/bin"})
            self.assertTrue(told.stdout.startswith("multitouch devices: "), told.stdout)


if __name__ == "__main__":
    InstallTest.build = sys.argv[1]
    InstallTest.has_windows = len(sys.argv) > 2
    unittest.main(argv=sys.argv[:1])
