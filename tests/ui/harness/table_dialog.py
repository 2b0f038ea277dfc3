"""A dialog with a table of numbers: its cells by their accessible names, and what a user does to them."""

from . import accessibility
from .dialog import Dialog
from .wait import wait_for


class TableDialog(Dialog):
    """Opened with the letter of its item in the Dialog menu."""

    def __init__(self, program, letter, title):
        program.choose("Dialog", "d", letter)
        super().__init__(program, title)
        self.look()

    def look(self):
        """Finds the cells anew. A table has those in and next to the view; the others come when it is scrolled."""
        self.cells = {node.name: node for node, role in self.node.walk() if role in ("spin button", "check box")}

    def spins(self):
        """The spin buttons' names in the order of their making."""
        return [name for name, node in self.cells.items() if node.role == "spin button"]

    def value(self, name):
        return self.cells[name].value("CurrentValue")

    def text(self, name):
        return self.cells[name].text

    def numbers(self, name):
        """(lowest, highest, step) of a spin button."""
        return tuple(self.cells[name].value(what) for what in ("MinimumValue", "MaximumValue", "MinimumIncrement"))

    def is_checked(self, name):
        return self.cells[name].has_state(accessibility.CHECKED)

    def rectangle(self, name):
        return self.cells[name].rectangle

    def focus(self, name):
        """Puts the keyboard into a number."""
        x, y, _, height = self.rectangle(name)
        self.program.click(x + 12, y + height // 2)
        wait_for(lambda: self.cells[name].is_focused, f"{name!r} did not get the keyboard")
        return self.cells[name]

    def focused(self):
        """The name of the control that has the keyboard."""
        return next((node.name for node, _ in self.node.walk() if node.is_focused), None)

    def wait_focused(self, name):
        wait_for(lambda: self.focused() == name, lambda: f"{self.focused()!r} has the keyboard and not {name!r}")

    def tab_to(self, name, key="Tab"):
        """Walks to a control with Tab or shift+Tab."""
        for _ in range(100):
            here = self.focused()
            if here == name:
                return
            self.program.keys(key)
            wait_for(lambda: self.focused() not in (here, None), f"{key} does not leave {here!r}")
        raise AssertionError(f"{key} does not lead to {name!r}")

    def enter(self, name, text):
        """Types a number and leaves the field."""
        self.fill(name, text)
        self.program.keys("Tab")
        wait_for(lambda: abs(self.value(name) - float(text)) < 1e-6, f"{name!r} did not take {text}")

    def press_key(self, name, key, expected):
        """Presses a key in a number and waits for what it makes of it."""
        self.focus(name)
        self.program.keys(key)
        wait_for(lambda: abs(self.value(name) - expected) < 1e-6,
                 lambda: f"{key} made {self.value(name)} of {name!r} and not {expected}")

    def toggle(self, name):
        before = self.is_checked(name)
        x, y, width, height = self.rectangle(name)
        self.program.click(x + width // 2, y + height // 2)
        wait_for(lambda: self.is_checked(name) != before, f"{name!r} was not toggled")

    def click(self, name):
        """Clicks a push button."""
        x, y, width, height = self.node.find("push button", name).rectangle
        self.program.click(x + width // 2, y + height // 2)

    def apply(self):
        """Apply, until it has been taken in: what is asked of the program afterwards is answered after it."""
        super().apply()
        wait_for(lambda: self.focused() == "Apply", "Apply was not pressed")

    def end(self, button):
        self.click(button)
        self.wait_gone()

    def buttons(self):
        """The labels of the answers from the left."""
        nodes = [node for node in self.node.find_all("push button") if node.name in ("OK", "Cancel", "Apply")]
        return [node.name for node in sorted(nodes, key=lambda node: node.rectangle[0])]
