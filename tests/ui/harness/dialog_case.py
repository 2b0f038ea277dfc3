"""What every dialog of settings keeps to."""

from .case import UiTestCase
from .wait import wait_for


class DialogTestCase(UiTestCase):
    def assert_labelled(self, dialog):
        """Labels stand in the order of the controls, left of them, and each names its own."""
        named = [(role, name) for role, name in dialog.controls() if role != "push button"]
        for role, name in named:
            control = dialog.control(name)
            self.assertEqual(control.labels, [name])
            label = next(node for node in dialog.node.find_all("label") if node.text == name)
            self.assertLessEqual(label.rectangle[0] + label.rectangle[2], control.rectangle[0], name)
            # In its row, whatever their heights.
            middle = label.rectangle[1] + label.rectangle[3] // 2
            self.assertTrue(control.rectangle[1] <= middle < control.rectangle[1] + control.rectangle[3], name)

    def assert_tab_order(self, program, dialog):
        """Tab visits every control in the order in which they stand, and comes back to the first."""
        order = [name for _, name in dialog.controls()]
        dialog.focus(order[0])
        for name in [*order[1:], order[0]]:
            program.keys("Tab")
            wait_for(lambda: dialog.control(name).is_focused, f"Tab does not lead to {name}")

    def assert_steps(self, program, dialog, name, start, keys, end):
        """Types a number and presses keys that step on from it."""
        node = dialog.fill(name, start)
        program.keys(*keys)
        wait_for(lambda: node.text == end, lambda: f"{name}: {keys} lead from {start} to {node.text}")

    def assert_count(self, program, dialog, name, highest):
        """A whole number in steps of 1 and 10 that stops at its ends."""
        self.assert_steps(program, dialog, name, "5", ("Page_Up", "Up"), "16")
        self.assert_steps(program, dialog, name, "1", ("Down", "Down"), "0")
        self.assert_steps(program, dialog, name, str(highest), ("Up",), str(highest))
