#!/usr/bin/env python3
"""Tests of check_texts.py."""

import unittest

import check_texts

NOTHING = {"foreign": set()}


def complaints(english, source, other=None, listed=None):
    tables = {"en": english, "de": english if other is None else other}
    return list(check_texts.complaints(tables, {"a.cpp": source}, listed or NOTHING))


class TextsTest(unittest.TestCase):
    def test_tables_are_read(self):
        self.assertEqual(check_texts.table('/* c */\n"a" = "b \\"c\\"";\n"d"="e";\n'),
                         {"a": 'b \\"c\\"', "d": "e"})

    def test_a_key_in_use_is_fine(self):
        self.assertEqual(complaints({"design.a": "x", "Cancel": "x"},
                                    'texts("design.a"); key = "Cancel";'), [])

    def test_a_missing_key_is_found(self):
        self.assertEqual(complaints({"design.a": "x"}, 'f("design.a"); g("design.b");'),
                         ["a.cpp: no table has design.b"])
        self.assertEqual(complaints({"Cancel": "x"}, 'texts("Cancel"); texts("Cansel");'),
                         ["a.cpp: no table has Cansel"])

    def test_an_unused_key_is_found(self):
        self.assertEqual(complaints({"Cancel": "x"}, "// texts(\"Cancel\")"),
                         ["en: Cancel: nothing looks it up"])

    def test_plural_forms_belong_to_their_stem(self):
        self.assertEqual(complaints({"a.days.one": "x", "a.days.other": "x"},
                                    'counted("a.days", 3)'), [])

    def test_literals_side_by_side_are_one(self):
        self.assertEqual(complaints({"One two": "x"}, 'texts("One "\n      "two")'), [])

    def test_tables_must_hold_the_same(self):
        self.assertEqual(complaints({"A": "x"}, 'texts("A")', {}),
                         ["de: A: not in every table"])
        self.assertEqual(complaints({"A": "%@"}, 'texts("A")', {"A": "%@ %@"}),
                         ["de: A: takes other arguments than in English"])

    def test_lists_excuse(self):
        listed = check_texts.lists("# why\nforeign settings.x\n")
        self.assertEqual(complaints({"settings.y": "x"},
                                    'f("settings.x"); texts("settings.y")', listed=listed), [])


if __name__ == "__main__":
    unittest.main()
