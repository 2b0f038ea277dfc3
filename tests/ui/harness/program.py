"""The program under test: its process, its windows, and the keys and clicks it is given."""

import contextlib
import os
import pathlib
import re
import subprocess
import tempfile

from . import accessibility
from .wait import wait_for


def xdotool(*arguments):
    done = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True)
    return done.stdout.strip() if done.returncode == 0 else ""


class Window:
    """A window on the screen, title bar and frame of the window manager not counted."""

    def __init__(self, identifier):
        self.identifier = identifier

    @property
    def title(self):
        return xdotool("getwindowname", self.identifier)

    @property
    def size(self):
        values = dict(line.split("=") for line in xdotool("getwindowgeometry", "--shell", self.identifier).split()
                      if "=" in line)
        return int(values["WIDTH"]), int(values["HEIGHT"])

    @property
    def is_active(self):
        return xdotool("getactivewindow") == self.identifier


class Program:
    """Starts the program. Standard output and error are kept in files, so that no pipe can fill up and block it."""

    def __init__(self, *arguments, path=None, folder=None, environment=None):
        self.path = str(path or os.environ["ULK_UI_PROGRAM"])
        self.name = pathlib.Path(self.path).name
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="run-", dir=os.environ["HOME"]))
        with open(self.folder / "stdout", "wb") as output, open(self.folder / "stderr", "wb") as errors:
            self.process = subprocess.Popen([self.path, *arguments], cwd=folder or self.folder, stdout=output,
                                            stderr=errors, stdin=subprocess.DEVNULL,
                                            env={**os.environ, **(environment or {})})
        self.main_window = None
        self._tree = None

    # ---- life

    def wait_started(self):
        """Waits for the main window, with the keyboard on it and its controls in the accessibility tree."""
        self.main_window = wait_for(self._first_window, self._told("no window has come"))
        wait_for(lambda: self.main_window.is_active, self._told("the window did not get the keyboard"))
        wait_for(lambda: self.menu_bar(),
                 self._told("no menu bar in the accessibility tree"))
        return self

    def _first_window(self):
        self._must_run()
        found = self.windows()
        return found[0] if found else None

    def _must_run(self):
        if self.process.poll() is not None:
            raise AssertionError(self._told(f"the program has ended with status {self.process.returncode}")())

    def _told(self, words):
        return lambda: f"{words}; on the error stream: {self.stderr!r}"

    def wait_exit(self):
        """The exit status."""
        wait_for(lambda: self.process.poll() is not None, self._told("the program still runs"))
        return self.process.returncode

    def end(self):
        """For the end of a test that failed: whatever still runs goes."""
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    @property
    def stdout(self):
        return (self.folder / "stdout").read_text(errors="replace")

    @property
    def stderr(self):
        """Without a complaint of the toolkit that keys cause which are released while a file chooser comes up."""
        text = (self.folder / "stderr").read_text(errors="replace")
        return re.sub(r"\n\(.*WIDGET_REALIZED_FOR_EVENT.*\n", "", text)

    # ---- windows

    def windows(self):
        identifiers = xdotool("search", "--onlyvisible", "--all", "--pid", self.process.pid, "--name", ".*")
        return [Window(identifier) for identifier in identifiers.split()]

    def window(self, title):
        return next((window for window in self.windows() if window.title == title), None)

    def wait_window(self, title):
        """Waits for a window of this title that has the keyboard."""
        def active():
            self._must_run()
            window = self.window(title)
            return window if window and window.is_active else None

        return wait_for(active, lambda: f"no active window {title!r} among {[w.title for w in self.windows()]}")

    def bring_window(self, title):
        """Waits for a window and gives it the keyboard, as a user would with a click on its title bar."""
        wait_for(lambda: self.window(title), f"no window {title!r}")
        xdotool("windowactivate", self.window(title).identifier)
        return self.wait_window(title)

    def resize(self, window, width, height):
        xdotool("windowsize", window.identifier, width, height)

    def wait_gone(self, title):
        wait_for(lambda: not self.window(title), f"the window {title!r} is still there")

    def wait_title(self, title):
        """Waits for the main window's title."""
        wait_for(lambda: self.main_window.title == title,
                 lambda: f"the title is {self.main_window.title!r} and not {title!r}")

    def wait_main_active(self):
        wait_for(lambda: self.main_window.is_active, "the main window did not get the keyboard back")

    # ---- input

    def keys(self, *keys):
        """Presses keys by their X names, with modifiers as in ctrl+l."""
        xdotool("key", "--clearmodifiers", "--delay", "20", *keys)

    def press_keys(self, *keys):
        """Presses keys on top of those that are held."""
        xdotool("key", "--delay", "20", *keys)

    def type(self, text):
        """Types a text; line feeds are the Return key."""
        for number, line in enumerate(text.split("\n")):
            if number > 0:
                self.keys("Return")
            if line:
                xdotool("type", "--clearmodifiers", "--delay", "10", "--", line)

    def move_pointer(self, x, y):
        xdotool("mousemove", x, y)

    @contextlib.contextmanager
    def held(self, key):
        """Keeps a key down, None for no key."""
        if key:
            xdotool("keydown", key)
        try:
            yield
        finally:
            if key:
                xdotool("keyup", key)

    def click(self, x, y, button=1, modifier=None):
        """Clicks at a place of the screen. Buttons 4 and 5 turn the wheel up and down by a notch."""
        xdotool("mousemove", x, y)
        with self.held(modifier):
            xdotool("click", button)

    def double_click(self, x, y, button=1):
        xdotool("mousemove", x, y, "click", "--repeat", 2, "--delay", 40, button)

    def drag(self, start, end, button=1, modifier=None, steps=8):
        """Moves the pointer with a button held, in steps like a hand does."""
        xdotool("mousemove", *start)
        with self.held(modifier):
            xdotool("mousedown", button)
            for step in range(1, steps + 1):
                xdotool("mousemove", *(round(a + (b - a) * step / steps) for a, b in zip(start, end)))
            xdotool("mouseup", button)

    # ---- file choosers

    def choose_file(self, title, path):
        """Types a path into a file chooser and accepts it."""
        self.wait_window(title)
        # Opens the entry where the chooser has none, and goes there where it has one.
        self.keys("ctrl+l")
        wait_for(lambda: self._path_entries(title), "the chooser shows no entry for a path")
        self.keys("ctrl+a")
        self.type(str(path))
        wait_for(lambda: any(entry.text == str(path) for entry in self._path_entries(title)),
                 f"the path {path} did not arrive in the chooser")
        self.accept_chooser(title)

    def accept_chooser(self, title):
        """Presses Return in a chooser. While it reads a folder its button is insensitive and Return does nothing.
        A chooser that is still there after Return may be taken away by a program that was busy till then."""
        chooser = self.wait_window(title)
        button = self.dialog(title).find("push button", "Open")

        def press():
            wait_for(lambda: button.is_sensitive or not chooser.is_active,
                     f"the button of the chooser {title!r} stays insensitive")
            if chooser.is_active:
                self.keys("Return")

        self._leave_chooser(title, press)

    def cancel_chooser(self, title):
        """Presses Escape in a chooser, which takes none while it fills its list."""
        self._leave_chooser(title, lambda: self.keys("Escape"))

    def _leave_chooser(self, title, press):
        chooser = self.wait_window(title)
        for _ in range(5):
            press()
            try:
                wait_for(lambda: not chooser.is_active, "", seconds=4)
                return
            except AssertionError:
                pass
        raise AssertionError(f"The chooser {title!r} stays.")

    def chooser_filters(self, title):
        """The names of the kinds of files that a chooser offers; the first is in force when it opens."""
        return [item.name for item in self.dialog(title).find("combo box").find_all("menu item")]

    def choose_filter(self, title, name):
        box = self.dialog(title).find("combo box")
        x, y, width, height = box.rectangle
        self.click(x + width // 2, y + height // 2)
        item = box.find("menu item", name)
        wait_for(lambda: item.is_showing, f"the chooser's list of kinds of files has not opened at {name}")
        x, y, width, height = item.rectangle
        self.click(x + width // 2, y + height // 2)
        wait_for(lambda: box.name == name, f"{name} was not chosen")

    def chooser_files(self, title):
        """The names of the files and folders that a chooser lists."""
        cells = [cell for cell in self.dialog(title).find("table", "Files").children if cell.role == "table cell"]
        return [part.name for cell in cells for part in cell.children if part.name]

    def _path_entries(self, title):
        return [entry for entry in self.dialog(title).find_all("text") if entry.is_showing]

    # ---- accessibility

    def tree(self):
        if self._tree is None:
            self._tree = accessibility.application(self.process.pid)
        return self._tree

    def menu_bar(self):
        tree = self.tree()
        return tree and tree.find("menu bar")

    def menu(self, label):
        """An item of the menu bar."""
        return next((item for item in self.menu_bar().children if item.name == label), None)

    def menu_items(self, *path):
        """The items below a menu, such as menu_items("Edit", "Select Model...")."""
        node = self.menu(path[0])
        for label in path[1:]:
            node = next(item for item in node.children if item.name == label)
        return node.children

    def menu_labels(self, *path):
        return [item.name for item in self.menu_items(*path)]

    def open_menu(self, label, mnemonic):
        """Opens a menu with Alt and its letter."""
        self.wait_main_active()
        self.keys("alt+" + mnemonic)
        wait_for(lambda: any(item.is_showing for item in self.menu(label).children),
                 f"the menu {label} did not open")

    def choose(self, label, mnemonic, *letters):
        """Opens a menu of the bar and presses the letters of an item, or of a submenu and its item."""
        self.open_menu(label, mnemonic)
        self.keys(*letters)

    def control(self, role, name):
        """A control of the toolbar row."""
        return self.tree().find(role, name)

    def press_control(self, role, name):
        """Clicks the middle of a control of the toolbar row."""
        x, y, width, height = self.control(role, name).rectangle
        self.click(x + width // 2, y + height // 2)

    def spin(self, name, notches, button=1):
        """Clicks the plus, or for a negative number the minus, of a spin button, which stand at its right end. The
        middle button, 2, goes by pages."""
        x, y, width, height = self.control("spin button", name).rectangle
        for _ in range(abs(notches)):
            self.click(x + width - (height // 2 if notches > 0 else height * 3 // 2), y + height // 2, button)

    def dialog(self, title):
        """The accessible of a dialog that shows."""
        return wait_for(lambda: next((node for node in self.tree().children if node.name == title), None),
                        f"no dialog {title!r} in the accessibility tree")

    def dialog_buttons(self, title):
        """The labels of the buttons that show."""
        return [node.name for node in self.dialog(title).find_all("push button") if node.is_showing]

    def message(self, title):
        """Waits for a message box; (kind, text, labels of the buttons). The kind is Error, Question, Information."""
        self.wait_window(title)
        box = wait_for(lambda: next((node for node in self.tree().children if node.role == "alert"), None),
                       f"no message box {title!r} in the accessibility tree")
        text = "\n".join(label.text for label in box.find_all("label") if label.text)
        return box.name, text, [button.name for button in box.find_all("push button") if button.is_showing]
