"""Every rule complains of a bad text and is content with a good one."""

import unittest

import rules


class IncludesTest(unittest.TestCase):
    def test_standard_headers_and_rooms_below_are_allowed(self):
        text = '#include <vector>\n#include "base/point.hpp"\n#include "input/x.hpp"\n'
        self.assertEqual(rules.forbidden_includes("gestures", text), [])

    def test_a_room_above_is_not(self):
        self.assertEqual(rules.forbidden_includes("config", '\n#include "output/event_tap.hpp"\n'),
                         ["2: config may not include output/event_tap.hpp"])

    def test_rooms_side_by_side_do_not_know_each_other(self):
        self.assertTrue(rules.forbidden_includes("input", '#include "output/x.hpp"\n'))
        self.assertTrue(rules.forbidden_includes("output", '#include "input/x.hpp"\n'))

    def test_systems_and_libraries_are_not(self):
        for header in ("<unistd.h>", "<sys/types.h>", "<xcb/xcb.h>", "<stdio.h>",
                       '"adapters/linux/x.hpp"', '"x.hpp"'):
            self.assertTrue(rules.forbidden_includes("base", f"#include {header}\n"), header)


class PathsTest(unittest.TestCase):
    def check(self, text):
        return rules.missing_paths(text, lambda path: path in {"docs/settings.md", "src/base"})

    def test_what_is_there_is_found_with_punctuation_behind(self):
        for text in ("see docs/settings.md.", "`docs/settings.md`", "(src/base)", "src/base,"):
            self.assertEqual(self.check(text), [], text)

    def test_what_is_not_there_is_named(self):
        self.assertEqual(self.check("one\nsee docs/gone.md."), ["2: there is no docs/gone.md"])

    def test_patterns_and_other_trees_are_no_paths(self):
        for text in ("src/*.cpp", "docs/<code>.md", "build/src/x", "../docs/x.md", "/usr/src/x",
                     "$HOME/docs/x", "src/{a,b}",
                     "bench/NAME"):
            self.assertEqual(self.check(text), [], text)

    def test_only_comments_are_prose(self):
        text = 'open("docs/gone.md");  // reads docs/settings.md\nconst x = "http://docs/gone";\n'
        self.assertEqual(self.check(rules.comments(text, "//")), [])
        self.assertTrue(self.check(rules.comments("x;  // see docs/gone.md", "//")))


class WordsTest(unittest.TestCase):
    def test_pointers_out_of_the_tree_are_found(self):
        for text in ("see Part 3" + ".1", "the " + "specification says", "../" + "shared/x",
                     "issue " + "12", "/wo" + "rk/main", "as " + "specified"):
            self.assertTrue(rules.pointers_elsewhere(text), text)

    def test_ordinary_words_are_not(self):
        for text in ("part of it", "a special case", "/usr/share/x", "this issue", "frameworks/x",
                     "network/x", "specific"):
            self.assertEqual(rules.pointers_elsewhere(text), [], text)

    def test_unfinished_marks_are_found(self):
        for text in ("// TO" + "DO: later", "FIX" + "ME", "TEST(A, DISABLED" + "_B)"):
            self.assertTrue(rules.unfinished(text), text)
        self.assertEqual(rules.unfinished('"velotap-XXXXXX"'), [])

    def test_sleeping_is_found(self):
        for text in ("std::this_thread::sleep" + "_for(1s);", "usleep" + "(5);",
                     "  sleep " + "5", "time.sleep" + "(1)"):
            self.assertTrue(rules.sleeping(text), text)
        self.assertEqual(rules.sleeping("watchSleep(a, b); // system will sleep 5"), [])


class ViewsTest(unittest.TestCase):
    def test_looks_belong_into_the_theme(self):
        for text in ('color: "white"', "color: Qt.darker(a, 2)", "border.color: \"#123456\"",
                     "font.pixelSize: s", "width: 56", "anchors.leftMargin: 12", "spacing: 10"):
            self.assertTrue(rules.view_looks(text), text)
        for text in ("width: parent.width", "spacing: Theme.snug", "x: 0", "color: Theme.card"):
            self.assertEqual(rules.view_looks(text), [], text)

    def test_words_belong_into_models(self):
        for text in ('text: "Done"', 'Accessible.name: "x"', 'text: qsTr("a")', 'title: "two words"'):
            self.assertTrue(rules.view_words(text), text)
        for text in ("text: root.s.title", 'symbol: "hand.tap"', 'text: ""', 'kind: "title"'):
            self.assertEqual(rules.view_words(text), [], text)


class PlatformsTest(unittest.TestCase):
    def test_questions_for_the_system_are_found(self):
        for text in ("#ifdef __APPLE__", "# if defined(__linux__) && x", "#elif TARGET_OS_OSX",
                     "int a;\n#ifndef _WIN32\n", "#if defined(Q_OS_MACOS)"):
            self.assertEqual(len(rules.platform_conditions(text)), 1, text)

    def test_other_questions_and_prose_are_not(self):
        for text in ("#ifdef NDEBUG", "// not on __APPLE__", "#if __has_feature(thread_sanitizer)",
                     "#define __linux__names"):
            self.assertEqual(rules.platform_conditions(text), [], text)


class FilesTest(unittest.TestCase):
    def test_headers(self):
        self.assertEqual(rules.bad_header("// Decides.\n#pragma once\n"), [])
        self.assertEqual(len(rules.bad_header("#pragma once\n")), 2)
        self.assertEqual(len(rules.bad_header("// Decides.\n")), 1)

    def test_length(self):
        self.assertEqual(rules.too_long("\n" * rules.MOST_LINES), [])
        self.assertEqual(len(rules.too_long("\n" * (rules.MOST_LINES + 1))), 1)

    def test_packages(self):
        self.assertEqual(rules.packages_without_reason("# Head\n\ng++  # compiles\n"), [])
        self.assertEqual(rules.packages_without_reason("g++\n"), ["1: no reason: g++"])


if __name__ == "__main__":
    unittest.main()
