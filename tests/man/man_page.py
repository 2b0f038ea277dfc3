"""A manual page as the tests see it: its headings, and the terms that stand before its paragraphs.

The program's path is in the environment variable ULKTOOL, the folder of the built pages in ULK_MAN_DIR.
"""

import os
import pathlib
import re
import sys
from dataclasses import dataclass, field

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = os.environ["ULKTOOL"]
FOLDER = pathlib.Path(os.environ["ULK_MAN_DIR"])
NAMES = {"ulkedit": "1", "ulktool": "1", "ulk": "5"}
LANGUAGES = ("", "ja")

sys.path.insert(0, str(ROOT / "data/man"))


def path_of(name, language):
    return FOLDER / language / f"man{NAMES[name]}" / f"{name}.{NAMES[name]}"


def plain(line):
    """What is printed for a line that has fonts and dashes alone."""
    return re.sub(r"\\f[BIR]", "", line).replace("\\-", "-")


@dataclass
class Section:
    heading: str
    lines: list = field(default_factory=list)

    def terms(self):
        """The lines behind .TP, as they are written."""
        return [line for before, line in zip(self.lines, self.lines[1:]) if before == ".TP"]


def sections(name, language, macro):
    """What stands below each .SH, or each .SS, of a page."""
    found = []
    for line in path_of(name, language).read_text(encoding="utf-8").splitlines():
        if line.startswith(macro + " "):
            found.append(Section(plain(line[len(macro) + 1:])))
        elif line.startswith(".SH "):
            found.append(Section(""))
        elif found:
            found[-1].lines.append(line)
    return [section for section in found if section.heading]
