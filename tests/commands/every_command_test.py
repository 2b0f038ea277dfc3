#!/usr/bin/env python3
"""Every command is run by the event storm and described in the manual: a new one that is forgotten fails here.

A command of the scene editor is a public operation of ulkedit_t that changes something: not const, and returning
no reference or pointer. The storm runs it when it calls `editor.NAME(`. A command of the menus is a row of
ViewMenuBar::build; the window tests compare the labels of each menu with those that show.
"""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEADER = ROOT / "src/app/editor/ulkedit.h"
STORM = ROOT / "tests/gl/app/editor/event_storm_test.cpp"
MENU_BAR = ROOT / "src/app/window/ViewMenuBar.cpp"
MANUAL = ROOT / "docs/manual.md"
FIXTURE = ROOT / "tests/gl/app/editor/editor_test.h"

# Commands that the storm runs through an operation of its fixture; SetUp runs before the first event.
RUN_BY_THE_FIXTURE = {"init": "SetUp", "reshape": "resize", "note_edit": "edit_point"}


def without_comments(code):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", code, flags=re.DOTALL)


def public_part(code, name):
    """What stands in a class between its opening brace and `private:`."""
    match = re.search(rf"\bclass {name}\b[^;{{]*{{(.*?)\n  private:", code, re.DOTALL)
    if match is None:
        raise AssertionError(f"no class {name} with a private part in {HEADER}")
    return match.group(1)


def without_bodies(code):
    """Inline bodies become a semicolon, and default values in braces go."""
    code = re.sub(r"\s*=\s*{[^{}]*}", "", code)
    while "{" in code:
        shorter = re.sub(r"{[^{}]*}", ";", code)
        if shorter == code:
            raise AssertionError(f"braces that do not match in {HEADER}")
        code = shorter
    return code


def commands_of(code):
    public = without_bodies(public_part(without_comments(code), "ulkedit_t"))
    found = []
    for declaration in public.split(";"):
        text = " ".join(re.sub(r"\b(public|protected):", "", declaration).split())
        match = re.fullmatch(r"(?:\[\[\w+\]\] )?(?P<type>.*?[\w>&*])\s+(?P<name>\w+)\(.*\)(?P<after>[^()]*)", text)
        if match and match["type"] != "explicit" and match["type"][-1] not in "&*" and "const" not in match["after"]:
            found.append(match["name"])
    return found


class Commands(unittest.TestCase):
    def test_the_event_storm_runs_every_command_of_the_editor(self):
        commands = commands_of(HEADER.read_text())
        # Proves that the header was understood: these are of each form that it has.
        for name in ("init", "mouse_button", "set_grid_step", "set_grid", "cut_current"):
            self.assertIn(name, commands)
        storm = without_comments(STORM.read_text())
        forgotten = [name for name in commands
                     if name not in RUN_BY_THE_FIXTURE and not re.search(rf"\beditor\.{name}\(", storm)]
        self.assertEqual(forgotten, [], f"{STORM.name} never calls these commands of ulkedit_t")

    def test_the_fixture_runs_what_the_storm_leaves_to_it(self):
        fixture = without_comments(FIXTURE.read_text())
        storm = without_comments(STORM.read_text())
        for name, operation in RUN_BY_THE_FIXTURE.items():
            self.assertIn(name, commands_of(HEADER.read_text()))
            body = re.search(rf"^    void {operation}\(.*?^    }}", fixture, re.DOTALL | re.MULTILINE)
            self.assertTrue(body and f"editor.{name}(" in body[0], f"{operation} does not call {name}")
            self.assertTrue(operation == "SetUp" or re.search(rf"\b{operation}\(", storm),
                            f"{STORM.name} never calls {operation}")

    def test_the_manual_names_every_item_of_the_menus(self):
        code = without_comments(MENU_BAR.read_text())
        labels = [label.replace("_", "") for label in re.findall(r'{"([^"]+)", &ViewWindow::\w+', code)]
        self.assertEqual(len(labels), code.count("&ViewWindow::"))
        self.assertIn("Open", labels)
        manual = MANUAL.read_text()
        self.assertEqual([label for label in labels if label not in manual], [], "not in the manual")


class Header(unittest.TestCase):
    """The reading of the header, on one of each form."""

    def test_commands_are_the_public_operations_that_change_something(self):
        self.assertEqual(commands_of("""
class other_t {
  public:
    void not_of_ours();
  private:
};
class ulkedit_t {
  public:
    explicit ulkedit_t(const char* argv0);
    ulkedit_t(const ulkedit_t&) = delete;
    ulkedit_t& operator=(const ulkedit_t&) = delete;
    ~ulkedit_t();
    void one();  // void commented_out();
    [[nodiscard]] bool two(int x,
                           const std::vector<int>& y = {});
    void three(bool on) { if (on) { flag = on; } }
    void four(const sigc::slot<void, double>& receiver);
    std::optional<int> five();
    bool is_running() const { return running; }
    model_t* current();
    const model_list_t& models() const { return list; }
    environment_t& environment() { return surroundings; }
    fold_pick_t picks[2];
    bool switch_on = false;

  private:
    void six();
};
"""), ["one", "two", "three", "four", "five"])


if __name__ == "__main__":
    unittest.main()
