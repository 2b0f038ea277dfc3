"""An editing dialog on the screen: its controls as a screen reader finds them, and the hand that fills them in."""

from .wait import wait_for

OK, CANCEL, APPLY = "OK", "Cancel", "Apply"
# The letters that the labels of the buttons underline.
MNEMONICS = {OK: "o", CANCEL: "c", APPLY: "a"}
CONTROLS = ("text", "spin button", "push button")


class Dialog:
    def __init__(self, program, title):
        self.program, self.title = program, title
        self.window = program.wait_window(title)
        self.node = program.dialog(title)

    def controls(self):
        """What can be filled in or pressed, in the order of the tree: (role, name)."""
        return [(role, node.name) for node, role in self.node.walk() if role in CONTROLS and node.is_showing]

    def control(self, name):
        return next(node for node, role in self.node.walk() if role in CONTROLS and node.name == name)

    def spin_values(self, name):
        """(value, lowest, highest, step) of a spin button."""
        node = self.control(name)
        return tuple(node.value(what) for what in ("CurrentValue", "MinimumValue", "MaximumValue", "MinimumIncrement"))

    def labels(self):
        """The texts of the labels, without those of the buttons."""
        return [node.text for node in self.node.find_all("label") if node.parent.role != "push button"]

    def fields(self):
        """What stands in the controls, by their names."""
        return {node.name: node.text for node, role in self.node.walk() if role in ("text", "spin button")}

    def focus(self, name):
        node = self.control(name)
        x, y, width, height = node.rectangle
        # Left of the buttons of a number, and in the first line of a text.
        self.program.click(x + min(width // 4, 40), y + min(height // 2, 12))
        wait_for(lambda: node.is_focused, f"{name} does not get the keyboard")
        return node

    def fill(self, name, text):
        """Replaces what stands in a control by typing; a line feed is the Return key."""
        node = self.focus(name)
        self.program.keys("ctrl+a")
        if text:
            self.program.type(text)
        else:
            self.program.keys("Delete")
        wait_for(lambda: node.text == text, lambda: f"{name} shows {node.text!r} and not {text!r}")
        return node

    def press(self, button):
        """Presses a button by its underlined letter."""
        self.program.keys("alt+" + MNEMONICS[button])

    def apply(self):
        """Clicks Apply, after which the dialog stays. What follows from the hand comes after what it does; who looks
        at the effect at once has to wait for it.

        Not by its letter: the toolkit shows a button pressed for a moment then, and what is typed or clicked meanwhile
        is lost.
        """
        x, y, width, height = self.control(APPLY).rectangle
        self.program.click(x + width // 2, y + height // 2)

    def accept(self):
        self.press(OK)
        self.wait_gone()

    def cancel(self):
        self.press(CANCEL)
        self.wait_gone()

    def close(self):
        """Closes the window as the window manager does."""
        self.program.keys("alt+F4")
        self.wait_gone()

    def wait_gone(self):
        self.program.wait_gone(self.title)
        self.program.wait_main_active()
