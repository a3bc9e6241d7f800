#!/usr/bin/env python3
"""Tests of the checks themselves: what they accept and what they complain about."""

import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

import check_bundle
import stubs

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PACKAGING = ROOT / "packaging" / "macos"
QUARTZ = "/System/Library/Frameworks/CoreGraphics.framework/Versions/A/CoreGraphics"
SYSTEM = "/usr/lib/libSystem.B.dylib"


def complaints(checks):
    return [complaint for good, complaint in checks if not good]


class Stubs(unittest.TestCase):
    def test_a_list_names_libraries_and_their_symbols(self):
        text = f"# a comment\n\n[{QUARTZ}]\n_CGEventPost\n_CGEventCreate # why\n[{SYSTEM}]\n_open\n"
        self.assertEqual(stubs.libraries(text),
                         {QUARTZ: ["_CGEventPost", "_CGEventCreate"], SYSTEM: ["_open"]})

    def test_a_symbol_may_be_one_architectures_only(self):
        text = f"[{SYSTEM}]\n_open\n___bzero x86_64\n"
        self.assertEqual(stubs.libraries(text, "arm64"), {SYSTEM: ["_open"]})
        self.assertEqual(stubs.libraries(text, "x86_64"), {SYSTEM: ["_open", "___bzero"]})
        self.assertEqual(stubs.libraries(text), {SYSTEM: ["_open", "___bzero"]})

    def test_stubs_lie_where_the_linker_looks(self):
        self.assertEqual(str(stubs.path_of(QUARTZ)),
                         "System/Library/Frameworks/CoreGraphics.framework/CoreGraphics.tbd")
        self.assertEqual(str(stubs.path_of(SYSTEM)), "usr/lib/libSystem.tbd")
        self.assertEqual(str(stubs.path_of("/usr/lib/libobjc.A.dylib")), "usr/lib/libobjc.tbd")

    def test_the_list_in_use_has_no_symbol_twice(self):
        listed = stubs.libraries((HERE / "imports.txt").read_text(encoding="utf-8"))
        symbols = [s for found in listed.values() for s in found]
        self.assertGreater(len(symbols), 100)
        self.assertEqual(sorted(set(symbols)), sorted(symbols))


class Imports(unittest.TestCase):
    listed = {QUARTZ: ["_CGEventPost"], SYSTEM: ["_open", "_close"], stubs.CPP_LIBRARY: []}

    def test_every_library_is_imported_exactly_but_the_one_whose_stub_holds_all(self):
        found = {"CoreGraphics": {"_CGEventPost"}, "libSystem": {"_open", "_close"},
                 "libc++": {"__Znwm"}}
        self.assertEqual(complaints(check_bundle.check_imports(found, self.listed)), [])

    def test_each_deviation_is_told(self):
        right = {"CoreGraphics": {"_CGEventPost"}, "libSystem": {"_open", "_close"}}
        for changed, words in (
                ({"CoreGraphics": set()}, "no longer imported: _CGEventPost"),
                ({"CoreGraphics": {"_CGEventPost", "_CGNew"}}, "not on the list: _CGNew"),
                ({"libSystem": {"_open"}}, "no longer imported: _close"),
                ({"libSystem": {"_open", "_close", "_fork"}}, "not on the list: _fork"),
                ({"Metal": {"_x"}}, "Metal")):
            told = complaints(check_bundle.check_imports({**right, **changed}, self.listed))
            self.assertEqual(len(told), 1, told)
            self.assertIn(words, told[0])

    def test_lines_of_the_linkers_table_are_read(self):
        line = ("__DATA_CONST __got              0x10007C048 pointer         0 AppKit"
                "           _NSWorkspaceApplicationKey")
        self.assertEqual(check_bundle.BIND.match(line).groups(),
                         ("AppKit", "_NSWorkspaceApplicationKey"))


class Plist(unittest.TestCase):
    def test_an_empty_one_lacks_everything(self):
        self.assertGreaterEqual(len(complaints(check_bundle.check_plist({}))), 16)

    def test_what_was_not_filled_in_is_told(self):
        told = complaints(check_bundle.check_plist({"SUFeedURL": "${VELOTAP_UPDATE_FEED}"}))
        self.assertIn("Info.plist: not filled in: ['SUFeedURL']", told)


class Windows(unittest.TestCase):
    listed = {QUARTZ: ["_CGEventPost"], SYSTEM: ["_open"], stubs.CPP_LIBRARY: []}
    more = {SYSTEM: ["_pow"]}
    right = {"CoreGraphics": {"_CGEventPost"}, "libSystem": {"_open", "_pow"}, "libc++": {"__Znwm"},
             **{f"Qt{module}": {"_x"} for module in ("Core", "Gui", "Qml", "Quick")}}

    def told(self, changed):
        return complaints(check_bundle.check_imports_with_windows({**self.right, **changed},
                                                                  self.listed, self.more))

    def test_a_program_with_windows_needs_what_they_need_and_no_more_than_is_listed(self):
        self.assertEqual(self.told({}), [])
        self.assertEqual(self.told({"CoreGraphics": set()}), [])
        for changed, words in (({"libSystem": {"_open"}}, "no longer imported: _pow"),
                               ({"libSystem": {"_pow", "_fork"}}, "not on the list: _fork"),
                               ({"Metal": {"_x"}}, "Metal: not on the list: _x"),
                               ({"QtGui": set()}, "nothing is imported from QtGui")):
            told = self.told(changed)
            self.assertEqual(len(told), 1, told)
            self.assertIn(words, told[0])

    def test_libraries_are_loaded_under_their_names_and_from_the_bundle(self):
        listed = {QUARTZ: [], SYSTEM: []}
        found = {QUARTZ, SYSTEM, check_bundle.FRAMEWORKS, "/usr/lib/dyld"}
        self.assertEqual(complaints(check_bundle.check_loaded(found, listed, set())), [])
        self.assertEqual(len(complaints(check_bundle.check_loaded(found - {SYSTEM}, listed,
                                                                  set()))), 1)
        self.assertEqual(len(complaints(check_bundle.check_loaded(
            (found | {"/usr/lib/x86_64-linux-gnu/libQt6Core.so.6"}), listed, set()))), 1)
        self.assertEqual(len(complaints(check_bundle.check_loaded(found, listed,
                                                                  check_bundle.QT))), 1)

    def test_lines_that_name_what_is_loaded_are_read(self):
        for line in ("         name @rpath/QtGui.framework/Versions/A/QtGui (offset 24)",
                     "         path @executable_path/../Frameworks (offset 12)"):
            self.assertIn(check_bundle.LOADED.match(line).group(1), line)

    def test_a_tag_of_the_other_library_is_no_part_of_a_name(self):
        self.assertIn("__ZNK10QByteArray11toStdStringEv",
                      dict(stubs.qt_libraries())["@rpath/QtCore.framework/Versions/A/QtCore"])


class Notices(unittest.TestCase):
    def text(self):
        licences = (PACKAGING / "licences").glob("*.txt")
        return (PACKAGING / "ThirdPartyNotices.txt").read_text(encoding="utf-8") + "".join(
            f"\n\n=== {licence.stem} ===\n\n{licence.read_text(encoding='utf-8')}"
            for licence in licences)

    def test_every_licence_that_is_named_follows(self):
        self.assertEqual(complaints(check_bundle.check_notices(self.text())), [])

    def test_one_that_is_missing_or_not_named_is_told(self):
        self.assertTrue(complaints(check_bundle.check_notices(
            self.text().replace("=== OFL-1.1 ===", ""))))
        self.assertTrue(complaints(check_bundle.check_notices(self.text().replace("(OFL-1.1)", ""))))


class Checklist(unittest.TestCase):
    """What the first tester on a Mac is told to expect is what the program prints and shows."""

    def expectations(self):
        text = (ROOT / "docs" / "macos.md").read_text(encoding="utf-8")
        for row in text.split("## Fifteen minutes on a Mac")[1].split("\n"):
            cells = row.split("|")
            if len(cells) == 5 and cells[1].strip().isdigit():
                yield int(cells[1]), re.findall(r"`([^`]+)`", cells[3]) + re.findall(
                    r'"([^"]+)"', cells[3])

    def test_every_text_is_in_the_sources_or_the_table_of_texts(self):
        sources = "".join(path.read_text(encoding="utf-8") for folder in ("src", "resources/en.lproj")
                          for path in sorted((ROOT / folder).rglob("*"))
                          if path.suffix in (".cpp", ".hpp", ".mm", ".strings"))
        steps = dict(self.expectations())
        self.assertEqual(sorted(steps), list(range(1, 25)))
        # What stands between the parts is put in when it is printed.
        missing = [(number, part) for number, texts in steps.items() for text in texts
                   for part in (p.strip(" :(") for p in re.split("…|\\d+|true|false", text))
                   if len(part) > 2 and part not in sources
                   and part not in ("_system", "Ticked, but not working")]
        self.assertEqual(missing, [])


class Icon(unittest.TestCase):
    def test_every_size_is_there_and_the_lengths_add_up(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "icon.icns"
            subprocess.run([sys.executable, "-B", str(PACKAGING / "make_icon.py"), str(path)],
                           check=True)
            data = path.read_bytes()
        self.assertEqual(data[:4], b"icns")
        self.assertEqual(struct.unpack(">I", data[4:8])[0], len(data))
        kinds, position = [], 8
        while position < len(data):
            kind, length = struct.unpack(">4sI", data[position:position + 8])
            image = data[position + 8:position + length]
            self.assertEqual(image[:8], b"\x89PNG\r\n\x1a\n")
            kinds.append((kind, struct.unpack(">II", image[16:24])))
            position += length
        self.assertEqual(kinds, [(b"icp4", (16, 16)), (b"icp5", (32, 32)), (b"icp6", (64, 64)),
                                 (b"ic07", (128, 128)), (b"ic08", (256, 256)),
                                 (b"ic09", (512, 512))])


if __name__ == "__main__":
    unittest.main()
