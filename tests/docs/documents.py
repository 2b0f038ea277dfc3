"""Reads the documents for users, and the labels that the program shows, for the tests that compare them."""

import pathlib
import re
from collections import Counter

ROOT = pathlib.Path(__file__).resolve().parents[2]
SHOWING_FOLDERS = ("src/app/window", "src/dialogs")
MENU_BAR = "src/app/window/ViewMenuBar"

JAPANESE = re.compile(r"[\u3040-\u30ff\u3400-\u9fff]")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
# Literals that nobody sees: names of headers, for screen readers, of places of errors and of the icon, and kinds of data.
NOT_SHOWN = re.compile(r'#include "[^"]*"|get_accessible\(\)->set_name\("[^"]*"\)|(?:grCheckError|try_command|set_default_icon_name)\("[^"]*"'
                       r'|"[a-z]+/[a-z-]+"')


def without_comments(code):
    return re.sub(r'("(?:[^"\\\n]|\\.)*")|//[^\n]*|/\*.*?\*/', r"\1", code, flags=re.DOTALL)


def sources(folder):
    return sorted(path for path in (ROOT / folder).rglob("*") if path.suffix in (".h", ".cpp"))


def labels_in(code):
    """What code shows, line by line: its literals, without the marks of mnemonics, and the buttons of the toolkit."""
    code = NOT_SHOWN.sub("", without_comments(code))
    lines = [line.replace("_", "").strip() for text in LITERAL.findall(code) for line in text.split("\\n")]
    # Single letters are axes, colours and the mark of the current model.
    found = {line for line in lines if re.search(r"[^\W\d]{2}", line)}
    for button in re.findall(r"\b(?:Gtk::Stock::|Gtk::BUTTONS_)(\w+)", code):
        found.add(button if button == "OK" else button.capitalize())
    return found


def labels_shown():
    return set().union(*(labels_in(path.read_text()) for folder in SHOWING_FOLDERS for path in sources(folder)))


def menu_labels():
    """The names of the menus, and those of their items."""
    header = without_comments((ROOT / f"{MENU_BAR}.h").read_text())
    code = without_comments((ROOT / f"{MENU_BAR}.cpp").read_text())
    on_the_bar = dict(re.findall(r'\b(\w+_item)\{"([^"]+)", true\}', header))
    items = [on_the_bar.pop("select_model_item"), *re.findall(r'{"([^"]+)", &ViewWindow::', code)]
    return {label.replace("_", "") for label in on_the_bar.values()}, {label.replace("_", "") for label in items}


def any_of(words):
    """A regular expression for one of the words, and for the longest where several begin."""
    return "|".join(re.escape(word) for word in sorted(words, key=len, reverse=True))


def anchor(heading):
    """What links call a heading."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


class Section:
    """A heading and what stands below it, up to the next heading."""

    def __init__(self, level, title):
        self.level, self.title = level, title
        self.prose, self.code_blocks = [], []

    @property
    def text(self):
        return "\n".join(self.prose)

    @property
    def pictures(self):
        return re.findall(r"!\[[^\]]*\]\(([^)]*)\)", self.text)

    @property
    def links(self):
        return re.findall(r"(?<!!)\[[^\]]*\]\(([^)]*)\)", self.text)

    @property
    def code_spans(self):
        return Counter(re.findall(r"`([^`]+)`", self.text))

    @property
    def words(self):
        """The text without pictures, code spans and the targets of links."""
        text = re.sub(r"!\[[^\]]*\]\([^)]*\)|`[^`]+`", "", self.text)
        return re.sub(r"\]\([^)]*\)", "]", text)

    @property
    def numbers(self):
        """Those outside of emphasis, which translates labels."""
        return Counter(re.findall(r"-?\d+(?:\.\d+)?", re.sub(r"(?<!\*)\*[^*]+\*(?!\*)", "", self.words)))

    @property
    def tables(self):
        """The number of cells of each row."""
        return [len(re.sub(r"`[^`]+`", "", line).strip("|").split("|")) for line in self.prose if line.startswith("|")]

    @property
    def list_marks(self):
        return re.findall(r"^(?:> )?(-|\d+\.) ", self.text, re.MULTILINE)


class Document:
    """A text in Markdown, as sections; the line in which it offers its other language is kept apart."""

    def __init__(self, text):
        self.sections, self.languages = [], None
        block = None
        previous = ""
        for line in text.splitlines():
            if re.match(r" {4,}\S", line) and (block is not None or not previous):
                if block is None:
                    block = []
                    self.sections[-1].code_blocks.append(block)
                block.append(line)
            elif line or block is None:
                block = None
                self.read(line)
            previous = line

    def read(self, line):
        heading = re.fullmatch(r"(#+) (.*)", line)
        if heading:
            self.sections.append(Section(len(heading[1]), heading[2]))
        elif len(self.sections) == 1 and self.languages is None and line:
            self.languages = line
        else:
            self.sections[-1].prose.append(line)

    @property
    def anchors(self):
        return [anchor(section.title) for section in self.sections]

    @property
    def text(self):
        return "\n".join(section.text for section in self.sections)


def quoted_in_japanese(text):
    """What stands between the quotation marks of a Japanese text, a line each."""
    return "\n".join(re.findall(r"「([^」]*)」", text))


def labels_quoted(text, labels):
    """The Japanese labels in a text that has no other Japanese in it, and the Japanese that is no label."""
    pattern = re.compile(any_of(label for label in labels if JAPANESE.search(label)))
    return Counter(pattern.findall(text)), [line for line in pattern.sub("", text).splitlines() if JAPANESE.search(line)]


def menu_paths(text, menus, items):
    """The commands named as MENU > ITEM, and what follows the names of menus without being an item."""
    found, wrong = Counter(), []
    for match in re.finditer(rf"\b({any_of(menus)}) > (?:({any_of(items)})(?![A-Za-z])|.{{0,30}})", text):
        if match[2]:
            found[match[0]] += 1
        else:
            wrong.append(match[0])
    return found, wrong
