#!/usr/bin/env python3
"""What bash offers for words of ulktool, in a shell without anything else for completion."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from man_page import PROGRAM, ROOT

import make_ulktool_page

SCRIPT = ROOT / "data/completion/ulktool"
COMMANDS = {command.name: command for command in make_ulktool_page.tool_help(PROGRAM)}
# A command of the test's own, for forms of options that the program need not have.
TRY_HELP = """ulktool try SCENE [--weld [T]] [--far D] -o OUT
    Does this. The word below begins no paragraph:
    --flat.

    --weld [T]
        Joins.

    --far D
        How far.

    -o OUT
        Where.

    Example:
        ulktool try a -o b
"""
STAND_IN = "#!/bin/sh\ncat <<'END'\n" + TRY_HELP + "END\n"


class CompletionTestCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ("ball.ulk", "Part.STL", "my scene.ulk", "notes.txt", "ball.png", "stand_in"):
            (self.folder / name).write_text(STAND_IN)
        (self.folder / "stand_in").chmod(0o755)
        (self.folder / "parts").mkdir()
        (self.folder / "parts" / "bolt.ulk").touch()

    def offers(self, *words, program=PROGRAM):
        """What is offered for the last word, sorted."""
        call = ('source "$1"; program=$2; shift 2; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); _ulktool "$program";'
                'printf "%s\\n" "${COMPREPLY[@]}"')
        shell = subprocess.run(
            ["bash", "--norc", "--noprofile", "-c", call, "bash", SCRIPT, program, "ulktool", *words], text=True, timeout=60,
            capture_output=True, cwd=self.folder, env={"PATH": os.environ["PATH"], "HOME": str(self.folder)})
        self.assertEqual(shell.stderr, "")
        return sorted(shell.stdout.split("\n")[:-1]) if shell.stdout != "\n" else []


class Completion(CompletionTestCase):
    def test_the_script_is_for_the_program(self):
        shell = subprocess.run(["bash", "--norc", "--noprofile", "-c", f"source {SCRIPT}; complete -p ulktool"],
                               capture_output=True, text=True, timeout=60)
        self.assertEqual((shell.stdout, shell.stderr), ("complete -o default -F _ulktool ulktool\n", ""))

    def test_the_first_word_is_a_command(self):
        self.assertEqual(self.offers(""), sorted([*COMMANDS, "--help", "--version"]))
        self.assertEqual(self.offers("ren"), ["render"])
        self.assertEqual(self.offers("--v"), ["--version"])

    def test_every_option_of_every_command_is_offered(self):
        for command in COMMANDS.values():
            with self.subTest(command=command.name):
                self.assertEqual(self.offers(command.name, "-"),
                                 sorted([*(option.name for option in command.options), "--help", "--version"]))

    def test_an_option_is_offered_by_its_beginning(self):
        self.assertEqual(self.offers("render", "ball.ulk", "--no-p"), ["--no-points"])

    def test_views_are_those_of_the_help(self):
        view = next(option for option in COMMANDS["render"].options if option.name == "--view")
        told = re.match(r"([\w, ]+):", view.help)[1].replace(" or ", ", ").split(", ")
        self.assertEqual(self.offers("render", "--view", ""), sorted(told))
        self.assertEqual(self.offers("render", "--view", "pe"), ["perspective"])

    def test_a_value_may_follow_an_equals_sign(self):
        self.assertEqual(self.offers("render", "--view", "="), ["front", "perspective", "side", "top"])
        self.assertEqual(self.offers("render", "--view", "=", "t"), ["top"])
        self.assertEqual(self.offers("render", "--view", "=", "top", "ball.ulk", ""), ["ball.png", "parts"])

    def test_nothing_is_offered_for_a_number(self):
        self.assertEqual(self.offers("render", "--size", ""), [])

    def test_scenes_are_offered_by_their_endings_and_folders_with_them(self):
        self.assertEqual(self.offers("check", ""), ["Part.STL", "ball.ulk", "my scene.ulk", "parts"])
        self.assertEqual(self.offers("check", "ball.ulk", "P"), ["Part.STL"])
        self.assertEqual(self.offers("check", "parts/"), ["parts/bolt.ulk"])
        self.assertEqual(self.offers("check", "~/pa"), ["~/parts"])
        self.assertEqual(self.offers("convert", "Part.STL", "b"), ["ball.ulk"])

    def test_the_second_file_of_render_is_a_picture(self):
        self.assertEqual(self.offers("render", "ball.ulk", ""), ["ball.png", "parts"])
        self.assertEqual(self.offers("render", "--size", "8x8", "--fit", "ball.ulk", "b"), ["ball.png"])

    def test_options_are_offered_when_there_are_files_enough(self):
        self.assertIn("--fit", self.offers("render", "ball.ulk", "ball.png", ""))

    def test_behind_two_dashes_every_word_is_a_file(self):
        self.assertEqual(self.offers("render", "--", "--view", ""), ["ball.png", "parts"])
        self.assertEqual(self.offers("check", "--", "-"), [])

    def test_nothing_is_offered_for_a_command_that_there_is_not(self):
        self.assertEqual(self.offers("nosuch", ""), [])
        self.assertEqual(self.offers("--version", ""), [])

    def test_nothing_is_offered_without_the_program(self):
        self.assertEqual(self.offers("check", "", program="/nonexistent/ulktool"), [])


class OtherForms(CompletionTestCase):
    def offers_of_try(self, *words):
        return self.offers("try", *words, program="~/stand_in")

    def test_an_option_begins_a_paragraph(self):
        self.assertEqual(self.offers_of_try("--"), ["--far", "--help", "--version", "--weld"])

    def test_the_value_of_an_option_may_be_a_scene(self):
        self.assertEqual(self.offers_of_try("ball.ulk", "-o", "b"), ["ball.ulk"])

    def test_a_value_that_may_be_left_out_is_a_number(self):
        self.assertEqual(self.offers_of_try("--weld", "b"), ["ball.ulk"])
        self.assertEqual(self.offers_of_try("--weld", "0.5", "b"), ["ball.ulk"])
        self.assertEqual(self.offers_of_try("--weld", "ball.ulk", "--f"), ["--far"])
        self.assertIn("-o", self.offers_of_try("--weld", "ball.ulk", ""))

    def test_the_value_of_an_option_is_no_file(self):
        self.assertEqual(self.offers_of_try("--far", "-1", "b"), ["ball.ulk"])


if __name__ == "__main__":
    unittest.main()
