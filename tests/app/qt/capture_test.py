#!/usr/bin/env python3
"""Pictures of the settings window, without a display: capture_test.py PROGRAM"""

import json
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

SETTINGS = '{"enabled": false}'


class CaptureTest(unittest.TestCase):
    program = ""

    def setUp(self):
        self.place = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.config = self.place / "config"
        (self.config / "velotap").mkdir(parents=True)
        (self.config / "velotap" / "app.norwend.velotap.json").write_text(SETTINGS)
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.place),
                            "XDG_CONFIG_HOME": str(self.config)}
        # Whoever runs this under a sanitizer has said how it should look.
        self.environment |= {name: value for name, value in os.environ.items()
                             if name.endswith("SAN_OPTIONS")}

    def run_program(self, *arguments):
        return subprocess.run([self.program, *arguments], env=self.environment,
                              capture_output=True, text=True, timeout=60, check=False)

    def files_of_the_person(self):
        return {str(path.relative_to(self.config)): path.read_bytes()
                for path in self.config.rglob("*") if path.is_file()}

    def pictures(self, folder):
        return sorted(path.name for path in folder.glob("*.png"))

    def test_every_scene_and_a_manifest_that_lists_them(self):
        folder = self.place / "pictures"
        before = self.files_of_the_person()
        done = self.run_program("--listlane-capture", str(folder))
        self.assertEqual(done.returncode, 0, done.stderr)
        manifest = json.loads((folder / "capture.json").read_text(encoding="utf-8"))
        self.assertEqual(sorted(image["path"] for image in manifest["images"]),
                         self.pictures(folder))
        self.assertEqual({image["scene"] for image in manifest["images"]},
                         {"gestures", "tuning", "apps", "practice", "devices"})
        self.assertEqual(manifest["appearance"], "light")
        self.assertEqual(self.files_of_the_person(), before)
        self.assertNotIn("qrc:", done.stderr, "views have nothing to complain of")

    def test_pictures_repeat_to_the_last_bit(self):
        folders = [self.place / name for name in ("one", "two")]
        for folder in folders:
            done = self.run_program("--listlane-capture", str(folder), "--dark")
            self.assertEqual(done.returncode, 0, done.stderr)
        for name in self.pictures(folders[0]):
            self.assertEqual((folders[0] / name).read_bytes(), (folders[1] / name).read_bytes(),
                             name)

    def test_one_scene_and_without_a_home(self):
        del self.environment["HOME"], self.environment["XDG_CONFIG_HOME"]
        folder = self.place / "pictures"
        done = self.run_program("--listlane-capture", str(folder), "--scenes", "tuning")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(all(name.startswith("tuning-") for name in self.pictures(folder)))
        manifest = json.loads((folder / "capture.json").read_text(encoding="utf-8"))
        self.assertEqual({image["scene"] for image in manifest["images"]}, {"tuning"})

    def test_the_manifest_tells_language_and_appearance(self):
        for locale, language, arguments, appearance in (
                ("de_DE.UTF-8", "de", ["--dark"], "dark"), ("bg_BG.UTF-8", "bg", [], "light"),
                ("ja_JP.UTF-8", "en", [], "light"), ("C", "en", [], "light")):
            folder = self.place / (locale + appearance)
            self.environment["LC_ALL"] = locale
            done = self.run_program("--listlane-capture", str(folder), "--scenes", "devices",
                                    *arguments)
            self.assertEqual(done.returncode, 0, done.stderr)
            manifest = json.loads((folder / "capture.json").read_text(encoding="utf-8"))
            self.assertEqual(manifest["language"], language, locale)
            self.assertEqual(manifest["appearance"], appearance)
            self.assertTrue(manifest["fictionalData"])
            self.assertTrue(manifest["version"] and manifest["build"] and manifest["executable"])
            self.assertEqual({(image["layout"], image["width"]) for image in manifest["images"]},
                             {("narrow", 480), ("default", 560), ("default-details", 560)})

    def test_the_size_of_a_picture_is_as_the_manifest_says(self):
        folder = self.place / "pictures"
        self.assertEqual(self.run_program("--listlane-capture", str(folder), "--scenes",
                                          "tuning").returncode, 0)
        manifest = json.loads((folder / "capture.json").read_text(encoding="utf-8"))
        self.assertIn("bottom", {image["scrollPosition"] for image in manifest["images"]})
        for image in manifest["images"]:
            header = (folder / image["path"]).read_bytes()[:24]
            self.assertEqual(header[1:4], b"PNG")
            self.assertEqual(struct.unpack(">II", header[16:]), (image["width"], image["height"]))

    @unittest.skipIf(os.getuid() != 0, "whoever runs this is an ordinary user already")
    def test_an_ordinary_user_sees_the_same(self):
        nobody = {"user": 65534, "group": 65534, "extra_groups": []}
        pictures = []
        for name, user, has_home in (("root", {}, False), ("nobody", nobody, False),
                                     ("nobody at home", nobody, True)):
            # Neither the build nor this test's folder need be open to everybody: the user has the
            # program by a descriptor and a place of its own.
            folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
            settings = folder / ".config" / "velotap" / "app.norwend.velotap.json"
            settings.parent.mkdir(parents=True)
            settings.write_text(SETTINGS)
            for place in (folder, folder / ".config", settings.parent, settings):
                os.chown(place, user.get("user", 0), user.get("group", 0))
            program = os.open(self.program, os.O_RDONLY)
            self.addCleanup(os.close, program)
            environment = {key: value for key, value in self.environment.items()
                           if key != "XDG_CONFIG_HOME"}
            environment["HOME"] = str(folder) if has_home else "/dev/null/home"
            done = subprocess.run([f"/proc/self/fd/{program}", "--listlane-capture",
                                   str(folder / "pictures"), "--scenes", "gestures"],
                                  env=environment, cwd="/",
                                  capture_output=True, text=True, timeout=60, check=False,
                                  pass_fds=[program], **user)
            self.assertEqual(done.returncode, 0, name + done.stderr)
            self.assertEqual(settings.read_text(), SETTINGS, name)
            pictures.append({path.name: path.read_bytes()
                             for path in (folder / "pictures").glob("*.png")})
        self.assertTrue(pictures[0])
        self.assertEqual(pictures[0], pictures[1])
        self.assertEqual(pictures[0], pictures[2])

    def test_a_file_that_cannot_be_written_is_a_failure(self):
        for name in ("gestures-narrow.png", "capture.json"):
            folder = self.place / name
            (folder / name).mkdir(parents=True)
            done = self.run_program("--listlane-capture", str(folder), "--scenes", "gestures")
            self.assertEqual(done.returncode, 1, name)
            self.assertIn("\nSettings capture failed: ", "\n" + done.stderr)
            self.assertIn(name, done.stderr)

    def test_misuse_writes_nothing(self):
        for arguments in (["--listlane-capture"], ["--listlane-capture", "relative"],
                          ["--listlane-capture", str(self.place / "x"), "--scenes", "tunnel"]):
            done = self.run_program(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertIn("gestures,tuning,apps,practice,devices" if len(arguments) > 2 else
                          "--listlane-capture requires an absolute output directory\n",
                          done.stderr)
        self.assertFalse((self.place / "x").exists())

    def test_a_folder_that_cannot_be_made_is_a_failure(self):
        (self.place / "file").write_text("")
        done = self.run_program("--listlane-capture", str(self.place / "file" / "pictures"))
        self.assertEqual(done.returncode, 1)
        self.assertIn("Settings capture failed: ", done.stderr)


if __name__ == "__main__":
    CaptureTest.program = sys.argv[1]
    unittest.main(argv=sys.argv[:1])
