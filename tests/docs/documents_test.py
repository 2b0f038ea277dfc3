#!/usr/bin/env python3
"""The manual and the README say the same in both languages, and quote every label as the program shows it.

A text is compared with its translation section by section. The English one quotes Japanese labels as they stand; the
Japanese one puts every label between 「 and 」, where nothing else may stand.
"""

import re
import unittest
from collections import Counter

from documents import (JAPANESE, ROOT, SHOWING_FOLDERS, Document, labels_in, labels_quoted, labels_shown,
                       menu_labels, menu_paths, quoted_in_japanese, sources)

PAIRS = {"README.md": "README.ja.md", "docs/manual.md": "docs/manual.ja.md"}
ENGLISH_OF = {japanese: english for english, japanese in PAIRS.items()}


def has_words(text, words):
    return re.search(rf"(?<![A-Za-z]){re.escape(words)}(?![A-Za-z])", text) is not None


def read(name):
    return Document((ROOT / name).read_text())


class BothLanguages(unittest.TestCase):
    def compare(self, what, of_english, of_japanese=None):
        for english_name, japanese_name in PAIRS.items():
            for english, japanese in zip(read(english_name).sections, read(japanese_name).sections):
                with self.subTest(english_name, section=english.title):
                    self.assertEqual(of_english(english), (of_japanese or of_english)(japanese), what)

    def test_the_headings_have_the_same_levels(self):
        for english, japanese in PAIRS.items():
            levels = [section.level for section in read(english).sections]
            self.assertGreaterEqual(len(levels), 5)
            self.assertEqual(levels, [section.level for section in read(japanese).sections], japanese)

    def test_each_language_offers_the_other(self):
        for english, japanese in PAIRS.items():
            folder = (ROOT / english).parent
            self.assertEqual(read(english).languages, f"English | [日本語]({(ROOT / japanese).relative_to(folder)})")
            self.assertEqual(read(japanese).languages, f"[English]({(ROOT / english).relative_to(folder)}) | 日本語")

    def test_the_pictures_are_the_same(self):
        self.compare("pictures", lambda section: section.pictures)

    def test_the_code_blocks_are_the_same(self):
        self.compare("code blocks", lambda section: section.code_blocks)

    def test_the_tables_and_lists_have_the_same_shape(self):
        self.compare("tables", lambda section: section.tables)
        self.compare("lists", lambda section: section.list_marks)

    def test_the_code_spans_of_the_manual_are_the_same(self):
        for english, japanese in zip(read("docs/manual.md").sections, read("docs/manual.ja.md").sections):
            with self.subTest(section=english.title):
                self.assertEqual(english.code_spans, japanese.code_spans)

    def test_the_numbers_of_the_english_manual_stand_in_the_japanese_one(self):
        for english, japanese in zip(read("docs/manual.md").sections, read("docs/manual.ja.md").sections):
            with self.subTest(section=english.title):
                self.assertLessEqual(english.numbers, japanese.numbers)

    def test_the_labels_are_the_same(self):
        labels = labels_shown()
        self.compare("labels", lambda section: labels_quoted(section.words, labels)[0],
                     lambda section: labels_quoted(quoted_in_japanese(section.words), labels)[0])

    def test_the_commands_are_the_same(self):
        menus, items = menu_labels()
        self.compare("commands", lambda section: menu_paths(section.words, menus, items)[0])


class Links(unittest.TestCase):
    def targets(self, name, section):
        """Where links lead: a file, and the number of a heading in it."""
        found = Counter()
        for link in section.links:
            if link.startswith("http"):
                found[link] += 1
                continue
            path, _, heading = link.partition("#")
            target = (ROOT / name).parent / path if path else ROOT / name
            self.assertTrue(target.exists(), f"{name}: {link}")
            place = None
            if heading:
                anchors = Document(target.read_text()).anchors
                self.assertIn(heading, anchors, f"{name}: {link}")
                place = anchors.index(heading)
            target = str(target.resolve().relative_to(ROOT))
            found[ENGLISH_OF.get(target, target), place] += 1
        return found

    def test_they_lead_to_the_same_places_in_both_languages(self):
        for english_name, japanese_name in PAIRS.items():
            for english, japanese in zip(read(english_name).sections, read(japanese_name).sections):
                with self.subTest(english_name, section=english.title):
                    self.assertEqual(self.targets(english_name, english), self.targets(japanese_name, japanese))

    def test_a_japanese_text_leads_to_japanese_texts(self):
        for japanese in PAIRS.values():
            for section in read(japanese).sections:
                for link in section.links:
                    target = ((ROOT / japanese).parent / link.partition("#")[0]).resolve()
                    self.assertNotIn(target, [ROOT / english for english in PAIRS], f"{japanese}: {link}")


class Labels(unittest.TestCase):
    def test_the_sources_were_understood(self):
        labels = labels_shown()
        for label in (
                "File", "Add Polygon", "Select Model...", "Tangent(X軸法線)Dialog",  # menus
                "制御点表示", "折目頂点選択1,0", "折曲角度：",  # the toolbar
                "NURBS設定", "頂点設定", "縦ノット列一覧", "file open error.", "ポリゴン編集", "保存",  # titles
                "屈折率", "バンプマップテクスチャ", "X階数(次数+1)", "Apply", "Open", "stlファイル",  # dialogs
                "の基底関数", "横ノット", "重み",  # tooltips
                "折り畳みに失敗しました.", "折目頂点を選択していないものと思われます."):  # a message of two lines
            self.assertIn(label, labels)
        menus, items = menu_labels()
        self.assertEqual(menus, {"File", "Edit", "Dialog", "View"})
        self.assertLessEqual({"SaveCurrentModelAs", "Select Model...", "Horizontal KnotDialog"}, items)

    def test_both_manuals_quote_every_label(self):
        labels = labels_shown()
        for name, quotes in (("docs/manual.md", lambda text: text), ("docs/manual.ja.md", quoted_in_japanese)):
            words = "\n".join(section.words for section in read(name).sections)
            quoted, _ = labels_quoted(quotes(words), labels)
            missing = [label for label in sorted(labels) if JAPANESE.search(label) and label not in quoted]
            # Endings of files are labels, too, and stand in code spans.
            text = read(name).text
            missing += [label for label in sorted(labels) if not JAPANESE.search(label) and not has_words(text, label)]
            self.assertEqual(missing, [], f"not in {name}")

    def test_nothing_else_is_quoted_as_a_label(self):
        labels = labels_shown()
        for english, japanese in PAIRS.items():
            for name, quotes in ((english, lambda text: text), (japanese, quoted_in_japanese)):
                for section in read(name).sections:
                    self.assertEqual(labels_quoted(quotes(section.words), labels)[1], [], name)

    def test_what_is_named_as_a_command_is_one(self):
        menus, items = menu_labels()
        for name in (*PAIRS, *PAIRS.values()):
            for section in read(name).sections:
                self.assertEqual(menu_paths(section.words, menus, items)[1], [], name)

    def test_all_japanese_of_the_program_stands_where_labels_are_looked_for(self):
        folders = [ROOT / folder for folder in SHOWING_FOLDERS]
        for path in sources("src"):
            if not any(folder in path.parents for folder in folders):
                self.assertEqual([label for label in labels_in(path.read_text()) if JAPANESE.search(label)], [], path)


class Reading(unittest.TestCase):
    """The reading of code and of texts, on one of each form."""

    def test_labels_are_what_literals_and_buttons_show(self):
        self.assertEqual(labels_in(r'''
#include "dialogs/some_file.h"
// A comment with "something quoted".
constexpr const char* address = "http://one";
Gtk::MenuItem item{"_Delete it", true};
fill(menu, {{"Save_As", &ViewWindow::on_save}});  // "behind" the code
spin.get_accessible()->set_name("heard only");
grCheckError("of an operation(0)");
Gtk::TargetEntry("text/uri-list");
Gtk::Window::set_default_icon_name("modeller");
show("one line.\nanother line", "x");
dialog.add_button(Gtk::Stock::CANCEL, 0);
Gtk::MessageDialog last("", Gtk::BUTTONS_OK);
'''), {"http://one", "Delete it", "SaveAs", "one line.", "another line", "Cancel", "OK"})

    def test_a_text_is_read_as_sections(self):
        document = Document("""# Title

English | other

Prose with `code`, a [link](there.md#place) and
![a picture](one.png) ![another](two.png)

    a block

    of code

## Second

1. A list

       code in a list

2. goes on,
    and on.

| a | `b|c` |
|---|---|
| - | d |
""")
        first, second = document.sections
        self.assertEqual((first.level, first.title, second.level, second.title), (1, "Title", 2, "Second"))
        self.assertEqual(document.languages, "English | other")
        self.assertEqual(first.pictures, ["one.png", "two.png"])
        self.assertEqual(first.links, ["there.md#place"])
        self.assertEqual(first.code_spans, {"code": 1})
        self.assertEqual(first.code_blocks, [["    a block", "    of code"]])
        self.assertEqual(first.words.split(), "Prose with , a [link] and".split())
        self.assertEqual(second.code_blocks, [["       code in a list"]])
        self.assertEqual(second.list_marks, ["1.", "2."])
        self.assertEqual(second.tables, [2, 2, 2])
        self.assertIn("    and on.", second.prose)

    def test_anchors_are_small_and_without_punctuation(self):
        self.assertEqual(Document("# Marking and changing: no key, and Shift\n## 選択: モード\n").anchors,
                         ["marking-and-changing-no-key-and-shift", "選択-モード"])

    def test_the_longest_label_is_found(self):
        labels = {"制御点", "制御点選択", "OK"}
        self.assertEqual(labels_quoted("制御点選択, 制御点 1 of OK\nor 別", labels),
                         ({"制御点選択": 1, "制御点": 1}, ["or 別"]))
        self.assertEqual(quoted_in_japanese("制御点は「制御点選択」と「OK」"), "制御点選択\nOK")

    def test_commands_are_a_menu_and_an_item(self):
        self.assertEqual(menu_paths("*File > SaveAs*, File > Save\nFile > Opening", {"File"}, {"Save", "SaveAs", "Open"}),
                         ({"File > SaveAs": 1, "File > Save": 1}, ["File > Opening"]))


if __name__ == "__main__":
    unittest.main()
