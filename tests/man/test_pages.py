#!/usr/bin/env python3
"""The manual pages are well formed, name each other, and tell every key of the scene format."""

import re
import subprocess
import unittest

from man_page import LANGUAGES, NAMES, PROGRAM, ROOT, path_of, sections

EVERY_PAGE = [(name, language) for name in NAMES for language in LANGUAGES]


def keys_of_the_format():
    """A set for each table of keys in docs/file-format.md."""
    tables = []
    for line in (ROOT / "docs/file-format.md").read_text().splitlines():
        if line.startswith("| Key |"):
            tables.append(set())
            in_table = True
        elif not line.startswith("|"):
            in_table = False
        elif in_table and not line.startswith("|---"):
            tables[-1].update(re.findall(r"`(\w+)`", line.split("|")[1]))
    return tables


def keys_of_the_page(language):
    """A set for each section that has terms in bold."""
    terms = [" ".join(section.terms()) for section in sections("ulk", language, ".SH")]
    return [set(keys) for keys in (re.findall(r"\\fB(\w+)\\fR", text) for text in terms) if keys]


class Pages(unittest.TestCase):
    def test_the_formatter_has_nothing_to_say(self):
        for page in EVERY_PAGE:
            with self.subTest(page=page):
                lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", path_of(*page)], capture_output=True,
                                      text=True, timeout=60)
                self.assertEqual(lint.stdout + lint.stderr, "")

    def test_each_carries_its_name_its_section_and_the_version_of_the_build(self):
        version = subprocess.run([PROGRAM, "--version"], capture_output=True, text=True, timeout=60).stdout.split()[1]
        for name, language in EVERY_PAGE:
            with self.subTest(page=(name, language)):
                text = path_of(name, language).read_text(encoding="utf-8")
                self.assertRegex(text, rf'(?m)^\.TH {name.upper()} {NAMES[name]} \S+ "ulkedit {re.escape(version)}" ')
                self.assertRegex(text, rf"(?m)^{name} \\- \S")
                self.assertNotIn("@", text)

    def test_each_names_the_others_at_its_end(self):
        for name, language in EVERY_PAGE:
            with self.subTest(page=(name, language)):
                last = "\n".join(sections(name, language, ".SH")[-1].lines)
                self.assertEqual(set(re.findall(r"^\.BR (\w+) \((\d)\)", last, re.MULTILINE)),
                                 set(NAMES.items()) - {(name, NAMES[name])})

    def test_every_key_of_the_scene_format_is_told_in_the_section_of_its_block(self):
        wanted = keys_of_the_format()
        self.assertEqual(len(wanted), 4)  # meshes, NURBS surfaces, maps, the environment
        for language in LANGUAGES:
            with self.subTest(language=language):
                self.assertEqual(keys_of_the_page(language), wanted)


if __name__ == "__main__":
    unittest.main()
