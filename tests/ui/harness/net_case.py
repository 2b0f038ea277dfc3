"""What the tests of a NURBS surface's tables share: a surface that is opened, and what a file holds of it later."""

from . import commands as do
from .case import PROGRAM_NAME, UiTestCase
from .models import read_net


class NetTestCase(UiTestCase):
    def start_with(self, text):
        """Opens a surface; what its text holds is `untouched`."""
        self.program = self.start()
        self.open_model(self.program, text)
        self.saves = 0
        self.untouched = read_net(self.program.folder / "model.ulk")

    def saved(self):
        """What a file holds that is saved now."""
        self.saves += 1
        path = self.program.folder / f"saved{self.saves}.ulk"
        do.give_save_as(self.program, path)
        self.program.wait_title(f"{path.name} - {PROGRAM_NAME}")
        self.program.wait_main_active()
        return read_net(path)

    def assert_saved_with(self, key, changes):
        """What is saved now differs from `untouched` in these numbers of a key alone, by their places."""
        expected = {**self.untouched, key: list(self.untouched[key])}
        for index, value in changes.items():
            expected[key][index] = value
        self.assertEqual(self.saved(), expected)

    def end(self):
        do.leave(self.program)
        self.assert_ends_clean(self.program)
