#!/usr/bin/env python3
"""The pages ulktool(1) tell of every command of the program, with its files and options, and of nothing else."""

import unittest

from man_page import LANGUAGES, PROGRAM, plain, sections

import make_ulktool_page

COMMANDS = make_ulktool_page.tool_help(PROGRAM)


class UlktoolPages(unittest.TestCase):
    def test_the_help_of_the_program_was_understood(self):
        options = {command.name: [option.name for option in command.options] for command in COMMANDS}
        self.assertIn("--view", options["render"])
        self.assertIn("--json", options["check"])
        for command in COMMANDS:
            self.assertTrue(command.files and command.help and command.example, command)

    def test_every_command_has_its_section(self):
        wanted = [" ".join([command.name, *command.files]) for command in COMMANDS]
        for language in LANGUAGES:
            with self.subTest(language=language):
                self.assertEqual([section.heading for section in sections("ulktool", language, ".SS")], wanted)

    def test_every_option_has_its_paragraph(self):
        for language in LANGUAGES:
            told = {section.heading.split()[0]: section for section in sections("ulktool", language, ".SS")}
            for command in COMMANDS:
                with self.subTest(language=language, command=command.name):
                    self.assertIn(command.name, told)
                    self.assertEqual([plain(term) for term in told[command.name].terms()],
                                     [f"{option.name} {option.value}".strip() for option in command.options])


class Help(unittest.TestCase):
    """The reading of the help, on one of each form."""

    def test_a_command_is_its_usage_its_text_its_options_and_an_example(self):
        command = make_ulktool_page.read_command("try", (
            "ulktool try IN FILE... --far X,Y -o OUT\n"
            "        [--weld [T]] [--flat]\n"
            "    Does this.\n"
            "    --flat stands here as a word.\n"
            "\n    --far X,Y\n        How far.\n        Two lines.\n"
            "\n    -o OUT\n        Where.\n"
            "\n    --weld [T]\n        Joins.\n"
            "\n    --flat\n        Levels.\n"
            "\n    Example:\n        ulktool try a b\n"))
        self.assertEqual(command.files, ["IN", "FILE..."])
        self.assertEqual(command.usage, ["IN", "FILE...", "--far X,Y", "-o OUT", "[--weld [T]]", "[--flat]"])
        self.assertEqual(command.help, "Does this. --flat stands here as a word.")
        self.assertEqual([(option.name, option.value, option.help) for option in command.options],
                         [("--far", "X,Y", "How far. Two lines."), ("-o", "OUT", "Where."), ("--weld", "[T]", "Joins."),
                          ("--flat", "", "Levels.")])
        self.assertEqual(command.example, "ulktool try a b")

    def test_what_the_formatter_would_take_for_its_own_is_printed_as_it_stands(self):
        self.assertEqual(make_ulktool_page.sentences(".ulk is \\udc80. From -0.5 with --no-points. 'x'"),
                         "\\&.ulk is \\eudc80.\nFrom \\-0.5 with \\-\\-no\\-points. 'x'")
        self.assertEqual(make_ulktool_page.marked("[--weld [T]]"), "[\\fB\\-\\-weld\\fR [\\fIT\\fR]]")
        self.assertEqual(make_ulktool_page.marked("FILE..."), "\\fIFILE\\fR...")


if __name__ == "__main__":
    unittest.main()
