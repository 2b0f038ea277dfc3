#!/usr/bin/env python3
"""Writes the English page ulktool(1): a frame written by hand, filled with what the program says of its commands.

Usage: make_ulktool_page.py FRAME PAGE PROGRAM

Whatever a command's table of options has is on the page, then. The lines %SYNOPSIS% and %COMMANDS% of the frame
are replaced. `tool_help` reads the help for the tests of the other pages, too.
"""

import itertools
import pathlib
import re
import subprocess
import sys
from dataclasses import dataclass, field


@dataclass
class Option:
    name: str    # with its dashes
    value: str   # as the help calls it, "[N]" when it may be left out; empty when there is none
    help: str


@dataclass
class Command:
    name: str
    usage: list  # the words behind the name, a bracketed option being one word
    help: str
    options: list = field(default_factory=list)
    example: str = ""

    @property
    def files(self):
        return list(itertools.takewhile(lambda word: word[0] not in "-[", self.usage))


def output_of(program, *words):
    return subprocess.run([program, *words], check=True, capture_output=True, text=True, timeout=60).stdout


def joined(lines):
    return " ".join(line.strip() for line in lines)


def usage_words(line):
    return re.findall(r"\[-(?:[^][]|\[[^]]*\])*\]|-\S+ [^\s[-]\S*|\S+", line)


def read_command(name, text):
    """The help of a command: its usage, what it does four blanks in, and a paragraph for each option."""
    paragraphs = [paragraph.splitlines() for paragraph in text.rstrip("\n").split("\n\n")]
    head = paragraphs.pop(0)
    begin = next(i for i, line in enumerate(head) if re.match(r" {4}\S", line))
    command = Command(name, usage_words(joined(head[:begin]).removeprefix(f"ulktool {name} ")), joined(head[begin:]))
    for title, *lines in paragraphs:
        if title.strip() == "Example:":
            command.example = joined(lines)
        elif re.match(r" {4}-", title):
            option, _, value = title.strip().partition(" ")
            command.options.append(Option(option, value, joined(lines)))
        else:
            raise ValueError(f"ulktool {name} --help: {title!r} begins neither an option nor the example")
    return command


def tool_help(program):
    """The commands of the program in the order of its help."""
    names = re.findall(r"^ulktool ([a-z]\S*) ", output_of(program, "--help"), re.MULTILINE)
    return [read_command(name, output_of(program, name, "--help")) for name in names]


def escaped(text):
    return text.replace("\\", "\\e").replace("-", "\\-")


def sentences(text):
    """A line for each sentence, so that the formatter puts the space between them."""
    # The dashes of options and of negative numbers are no hyphens.
    text = re.sub(r"(?<![\w-])-+\w[\w-]*", lambda match: match[0].replace("-", "\\-"), text.replace("\\", "\\e"))
    lines = re.sub(r"(?<=[.:?!]) (?=[A-Z])", "\n", text).splitlines()
    return "\n".join("\\&" + line if line[0] in ".'" else line for line in lines)


def marked(word):
    """Names of options in bold, names of values and files in italics, brackets and dots plain."""
    def font(match):
        return match[0] if match[0] == "..." else f"\\f{'B' if match[0][0] == '-' else 'I'}{escaped(match[0])}\\fR"
    return re.sub(r"\.\.\.|-[-\w]+|(?:(?!\.\.\.)[^][\s])+", font, word)


def synopsis_of(command):
    line = f"\\fBulktool {command.name}\\fR"
    length, lines = len(f"ulktool {command.name}"), []
    for word in command.usage:
        if length + 1 + len(word) > 70:
            lines.append(line)
            line, length = "       ", 7
        line += " " + marked(word)
        length += 1 + len(word)
    return "\n".join([*lines, line])


def section_of(command):
    parts = [f".SS {command.name} \\fI{' '.join(command.files)}\\fR", sentences(command.help)]
    for option in command.options:
        parts += [".TP", marked(f"{option.name} {option.value}".strip()), sentences(option.help)]
    if command.example:
        parts += [".PP", "Example:", ".PP", ".RS 4", ".nf", escaped(command.example), ".fi", ".RE"]
    return "\n".join(parts)


def page(frame, commands):
    for mark, of_command in (("%SYNOPSIS%\n", synopsis_of), ("%COMMANDS%\n", section_of)):
        if frame.count("\n" + mark) != 1:
            raise ValueError(f"the frame has to have one line {mark.strip()}")
        frame = frame.replace("\n" + mark, "\n" + "\n".join(map(of_command, commands)) + "\n")
    return frame


def main(frame_path, page_path, program):
    commands = tool_help(program)
    if not commands:
        sys.exit(f"{program} --help names no command")
    frame = pathlib.Path(frame_path).read_text(encoding="utf-8")
    pathlib.Path(page_path).write_text(page(frame, commands), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
