"""The kinds of files that both file choosers offer, and what each of them lets through."""

import os
import pathlib

from harness import UiTestCase, main, wait_for
from harness import commands as do

SCENES, MESHES = "ulkファイル", "stlファイル"
FILES = ("a.ulk", "b.stl", "c.txt", "dulk", "e.ulk.txt")


class Filters(UiTestCase):
    def assert_filters(self, letter, title):
        program = self.start()
        for name in FILES:
            (pathlib.Path(os.environ["HOME"]) / name).write_bytes(b"")
        program.choose("File", "f", letter)
        program.wait_window(title)
        self.assertEqual(program.chooser_filters(title), [SCENES, MESHES])
        program.keys("alt+Home")
        self.wait_listed(program, title, ["a.ulk"])
        program.choose_filter(title, MESHES)
        self.wait_listed(program, title, ["b.stl"])
        program.choose_filter(title, SCENES)
        self.wait_listed(program, title, ["a.ulk"])
        program.cancel_chooser(title)
        program.wait_gone(title)

    def wait_listed(self, program, title, names):
        def listed():
            return [name for name in program.chooser_files(title) if name in FILES]
        wait_for(lambda: listed() == names, lambda: f"the chooser lists {listed()} and not {names}")

    def test_open_offers_scenes_and_then_meshes(self):
        self.assert_filters("o", do.OPEN_TITLE)

    def test_save_offers_scenes_and_then_meshes(self):
        self.assert_filters("a", do.SAVE_TITLE)


if __name__ == "__main__":
    main()
