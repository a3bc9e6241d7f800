"""What the packaged files give to whom: packaging_test.py ROOT"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

import udev_rules

ROOT = pathlib.Path(sys.argv.pop())
RULE_FILE = ROOT / "packaging/udev/70-velotap.rules"
ACCESS = {"TAG uaccess"}
SVG = "{http://www.w3.org/2000/svg}"


def event(vendor, product, *kinds, **more):
    device = {"ACTION": "add", "SUBSYSTEM": "input", "KERNEL": "event7",
              "ATTRS{id/vendor}": vendor, "ATTRS{id/product}": product}
    device.update({f"ENV{{ID_INPUT_{kind}}}": "1" for kind in kinds})
    device.update(more)
    return device


class UdevRuleTest(unittest.TestCase):
    def setUp(self):
        self.rules = udev_rules.parse(RULE_FILE.read_text())

    def gained(self, device):
        return udev_rules.apply(self.rules, device)

    def test_runs_between_what_it_needs_and_who_needs_it(self):
        number = int(RULE_FILE.name.split("-")[0])
        self.assertGreater(number, 60)
        self.assertLess(number, 73)

    def test_mice_with_a_touch_surface(self):
        for vendor in ("05ac", "004c"):
            for product in ("030d", "0269", "0323"):
                self.assertEqual(self.gained(event(vendor, product, "MOUSE")), ACCESS)

    def test_every_mouse_that_the_provider_knows_and_no_other(self):
        table = (ROOT / "src/adapters/linux/evdev/surface_model.cpp").read_text()
        known = {p.lower() for p in
                 re.findall(r"KnownDevice\{\w+, 0x([0-9A-F]{4}), kMagicMouseFamily\}", table)}
        self.assertTrue(known)
        for number in range(0x10000):
            product = f"{number:04x}"
            self.assertEqual(bool(self.gained(event("05ac", product, "MOUSE"))), product in known)

    def test_touchpads_of_any_make(self):
        for vendor, product in (("05ac", "0265"), ("004c", "0324"), ("06cb", "1234")):
            self.assertEqual(self.gained(event(vendor, product, "MOUSE", "TOUCHPAD")), ACCESS)

    def test_no_keyboard(self):
        for device in (event("05ac", "0267", "KEY", "KEYBOARD"),
                       event("046d", "c31c", "KEY", "KEYBOARD"),
                       event("05ac", "0269", "KEY", "KEYBOARD", "MOUSE"),
                       event("06cb", "1234", "KEY", "KEYBOARD", "TOUCHPAD")):
            self.assertEqual(self.gained(device), set())

    def test_nothing_else(self):
        for device in (event("046d", "c077", "MOUSE"), event("04f3", "2234", "TOUCHSCREEN"),
                       event("05ac", "0269", "MOUSE", KERNEL="mouse0"),
                       event("05ac", "0269", "MOUSE", SUBSYSTEM="usb"),
                       event("1234", "0269", "MOUSE"),
                       {"ACTION": "add", "SUBSYSTEM": "misc", "KERNEL": "uhid"},
                       {"ACTION": "add", "SUBSYSTEM": "block", "KERNEL": "uinput"}):
            self.assertEqual(self.gained(device), set(), device)

    def test_a_device_that_goes_is_left_alone(self):
        self.assertEqual(self.gained(event("05ac", "0269", "MOUSE", ACTION="remove")), set())

    def test_uinput_exists_before_it_is_used(self):
        for action in ("add", "change"):
            self.assertEqual(
                self.gained({"ACTION": action, "SUBSYSTEM": "misc", "KERNEL": "uinput"}),
                ACCESS | {"OPTIONS static_node=uinput"})


class RuleLanguageTest(unittest.TestCase):
    def test_what_is_not_understood_is_an_error(self):
        for text in ('KERNEL=="a" TAG+="b"', 'KERNEL=="a", MODE="0666"', 'ATTR{x}=="1"',
                     'GOTO+="x"', "KERNEL==a"):
            with self.assertRaises(udev_rules.Malformed, msg=text):
                udev_rules.parse(text)

    def test_jumps_need_their_label(self):
        rules = udev_rules.parse('KERNEL=="a", GOTO="end"')
        with self.assertRaises(udev_rules.Malformed):
            udev_rules.apply(rules, {"KERNEL": "a"})
        self.assertEqual(udev_rules.apply(rules, {"KERNEL": "b"}), set())

    def test_an_absent_property_differs_from_every_value(self):
        self.assertFalse(udev_rules.matches({}, "ENV{X}", "==", "1"))
        self.assertTrue(udev_rules.matches({}, "ENV{X}", "!=", "1"))


class SymbolicIconTest(unittest.TestCase):
    """Desktops of one family fill every shape with their colour, those of the other look for a
    style sheet with a known name."""

    def test_desktops_can_colour_them(self):
        marks = sorted((ROOT / "packaging/linux/symbolic").glob("*.svg"))
        self.assertEqual([mark.name for mark in marks],
                         [f"velotap-{state}-symbolic.svg"
                          for state in ("active", "disabled", "unavailable")])
        for mark in marks:
            tree = xml.etree.ElementTree.parse(mark).getroot()
            self.assertEqual([style.get("id") for style in tree.iter(SVG + "style")],
                             ["current-color-scheme"])
            shapes = [node for node in tree.iter() if node.tag not in (SVG + "svg", SVG + "style")]
            self.assertTrue(shapes)
            for shape in shapes:
                self.assertEqual(shape.get("fill"), "currentColor", mark.name)
                self.assertEqual(shape.get("class"), "ColorScheme-Text", mark.name)
            self.assertNotIn("stroke", mark.read_text(), mark.name)


class GrantAccessTest(unittest.TestCase):
    def run_script(self, root, *arguments):
        return subprocess.run([ROOT / "packaging/grant-access", *arguments],
                              env={"PATH": "/usr/bin:/bin", "VELOTAP_ROOT": root},
                              capture_output=True, text=True, check=False)

    def test_installs_and_undoes_and_may_be_repeated(self):
        with tempfile.TemporaryDirectory() as root:
            rule = pathlib.Path(root, "etc/udev/rules.d/70-velotap.rules")
            modules = pathlib.Path(root, "etc/modules-load.d/velotap.conf")
            for _ in range(2):
                self.assertEqual(self.run_script(root).returncode, 0)
                self.assertEqual(rule.read_text(), RULE_FILE.read_text())
                self.assertEqual(rule.stat().st_mode & 0o777, 0o644)
                self.assertIn("\nuinput\n", modules.read_text())
            for _ in range(2):
                self.assertEqual(self.run_script(root, "--undo").returncode, 0)
                self.assertFalse(rule.exists() or modules.exists())

    def test_an_unknown_option_changes_nothing(self):
        with tempfile.TemporaryDirectory() as root:
            self.assertEqual(self.run_script(root, "--help-me").returncode, 2)
            self.assertEqual(list(pathlib.Path(root).iterdir()), [])


class PolicyTest(unittest.TestCase):
    def setUp(self):
        policy = xml.etree.ElementTree.parse(ROOT / "packaging/polkit/app.norwend.velotap.policy")
        self.actions = policy.getroot().findall("action")

    def test_covers_the_one_script(self):
        self.assertEqual([action.get("id") for action in self.actions],
                         ["app.norwend.velotap.grant-access"])
        path = self.actions[0].find("annotate[@key='org.freedesktop.policykit.exec.path']").text
        self.assertEqual(pathlib.PurePosixPath(path).name, "grant-access")
        self.assertTrue((ROOT / "packaging" / "grant-access").stat().st_mode & 0o111)

    def test_only_an_administrator_at_the_screen_may_agree(self):
        defaults = {each.tag: each.text for each in self.actions[0].find("defaults")}
        self.assertEqual(defaults, {"allow_any": "no", "allow_inactive": "no",
                                    "allow_active": "auth_admin"})

    def test_speaks_every_language(self):
        language = "{http://www.w3.org/XML/1998/namespace}lang"
        for tag in ("description", "message"):
            spoken = {each.get(language) for each in self.actions[0].findall(tag)}
            self.assertEqual(spoken, {None, "bg", "de", "es", "fr"})


if __name__ == "__main__":
    unittest.main()
