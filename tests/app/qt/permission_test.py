#!/usr/bin/env python3
"""The permission given from the window that explains it: permission_test.py PROGRAM PROVIDER

A stand-in for the system's prompt notes how it was started and waits for the person's answer.
Agreed to, it does as the real one: it runs the helper with an environment of its own, here below a folder
instead of the root. Runs below `umockdev-wrapper`.
"""

import os
import pathlib
import tempfile

from desktop_case import UNAVAILABLE, DesktopCase
from desktop_panels import geometry, hand, visible_windows
from desktop_session import until
from menu_items import SETUP

ALLOW = "Give Permission…"
PROMPT = """#!/bin/sh
# One line for each argument, and an empty one after the last.
printf '%s\\n' "$@" '' >> '{folder}/asked'
read -r answer < '{folder}/answer'
[ "$answer" = allowed ] || exit "$answer"
exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin VELOTAP_ROOT='{folder}/root' "$@"
"""
FAILED = ("The system’s password prompt could not be shown. The documentation shows how to install "
          "the rule by hand.")
DISMISSED, REFUSED = "126", "127"  # as the real one ends then


class PermissionTest(DesktopCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(
            tempfile.TemporaryDirectory(prefix="velotap-permission-")))
        prompt = self.folder / "pkexec"
        prompt.write_text(PROMPT.format(folder=self.folder), encoding="utf-8")
        prompt.chmod(0o755)
        os.mkfifo(self.folder / "answer")
        self.make_devices(plugged=1)
        self.devices.revoke()
        self.make_host()
        self.start({}, PATH=f"{self.folder}:/usr/bin:/bin")
        self.comes(lambda: self.windows.titles() == [SETUP], "the first start explains it")
        self.item = self.await_item(UNAVAILABLE)

    def asked(self):
        """The command of each prompt so far."""
        file = self.folder / "asked"
        if not file.exists():
            return []
        return [command.split("\n") for command in file.read_text().split("\n\n") if command]

    def press(self, prompts):
        self.windows.press(ALLOW, window=SETUP)
        self.comes(lambda: len(self.asked()) == prompts, f"prompt {prompts} shows")

    def answer(self, text):
        with open(self.folder / "answer", "w", encoding="utf-8") as answer:
            answer.write(text + "\n")

    def press_again(self, prompts):
        """Until the program has noticed that the prompt before this one is gone."""
        def shows():
            if len(self.asked()) < prompts:
                self.windows.press(ALLOW, window=SETUP)
            return len(self.asked()) == prompts
        self.comes(shows, f"prompt {prompts} shows")

    def test_the_person_agrees(self):
        self.press(prompts=1)
        [[helper, *rest]] = self.asked()
        self.assertEqual(rest, [], "nothing but the helper, and no option for it")
        self.assertTrue(helper.startswith("/") and os.access(helper, os.X_OK), helper)
        # The prompt is on the screen: pressing again shows no second one.
        self.windows.press(ALLOW, window=SETUP)
        self.windows.press(ALLOW, window=SETUP)

        self.answer("allowed")
        beside = pathlib.Path(helper).resolve().parent
        installed = {"etc/udev/rules.d/70-velotap.rules": "udev/70-velotap.rules",
                     "etc/modules-load.d/velotap.conf": "modules-load/velotap.conf"}
        root = self.folder / "root"
        self.comes(lambda: all((root / name).exists() for name in installed), "it is installed")
        for name, source in installed.items():
            self.comes(lambda n=name, s=source: (root / n).read_text() == (beside / s).read_text(),
                       f"{name} is what it should be")
        files = [str(path.relative_to(root)) for path in root.rglob("*") if path.is_file()]
        self.assertEqual(sorted(files), sorted(installed), "and nothing else")
        self.assertEqual(len(self.asked()), 1)

        # The rule is in force, as the system's device manager does it.
        self.devices.grant()
        self.comes(lambda: self.windows.shows("Permission granted", ("heading",), SETUP),
                   "the window moves on by itself")
        self.comes(lambda: self.item.label() == "Velotap (active)", "gestures work")
        self.check_that_it_grows_inside_the_screen()

    def check_that_it_grows_inside_the_screen(self):
        [window] = visible_windows("velotap")
        screen = 900
        small = geometry(window)["HEIGHT"]
        hand("windowmove", "--sync", window, 300, screen - small)
        self.devices.revoke()
        self.comes(lambda: geometry(window)["HEIGHT"] > small, "it explains again")
        self.comes(lambda: geometry(window)["Y"] + geometry(window)["HEIGHT"] == screen,
                   "it is whole on the screen")
        self.assertEqual(geometry(window)["X"], 300)

    def test_the_person_does_not_agree(self):
        self.press(prompts=1)
        for prompts, answer in ((2, DISMISSED), (3, REFUSED)):
            self.answer(answer)
            self.press_again(prompts)
            self.assertEqual(self.windows.titles(), [SETUP])
        self.answer(DISMISSED)
        self.assertFalse((self.folder / "root").exists())
        self.assertEqual(self.item.label(), UNAVAILABLE)
        self.windows.press("Set Up Later", window=SETUP)
        self.comes(lambda: self.windows.titles() == [], "later")

    def test_without_a_prompt_it_says_what_to_do(self):
        (self.folder / "pkexec").unlink()
        os.symlink("/nowhere", self.folder / "pkexec")
        self.program.process.terminate()
        self.comes(self.program.ended, "it ends")
        self.watcher.items.clear()
        self.program.environment["PATH"] = str(self.folder)
        self.program.start()
        self.await_item(UNAVAILABLE)
        self.assertFalse(until(lambda: self.windows.titles(), patience=0.5), "explained once")
        self.await_item(UNAVAILABLE).row("Accessibility permission required…").choose()
        self.comes(lambda: self.windows.titles() == [SETUP], "and when it is asked for")
        self.windows.press(ALLOW, window=SETUP)
        self.comes(lambda: self.windows.find(FAILED, window=SETUP), "it says that it failed")


if __name__ == "__main__":
    PermissionTest.main()
