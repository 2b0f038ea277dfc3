"""The kinds of files that both file choosers offer, and what each of them lets through."""

import os
import pathlib

from harness import UiTestCase, main, wait_for
from harness import commands as do

SCENES, MESHES = "ulkファイル", "stlファイル"
FILES = ("a.ulk", "b.stl", "c.txt", "dulk", "e.ulk.txt", "PART.STL", "Scene.Ulk")
# The bytes are no UTF-8; the toolkit shows them as well as it can.
STRANGE = b"\xa4\xab.ulk"


class Filters(UiTestCase):
    def assert_filters(self, letter, title):
        program = self.start()
        for name in FILES:
            (pathlib.Path(os.environ["HOME"]) / name).write_bytes(b"")
        with open(os.path.join(os.fsencode(os.environ["HOME"]), STRANGE), "wb"):
            pass
        program.choose("File", "f", letter)
        program.wait_window(title)
        self.assertEqual(program.chooser_filters(title), [SCENES, MESHES])
        program.keys("alt+Home")
        self.wait_listed(program, title, ["a.ulk", "Scene.Ulk"], 1)
        program.choose_filter(title, MESHES)
        self.wait_listed(program, title, ["b.stl", "PART.STL"], 0)
        program.choose_filter(title, SCENES)
        self.wait_listed(program, title, ["a.ulk", "Scene.Ulk"], 1)
        program.cancel_chooser(title)
        program.wait_gone(title)

    def wait_listed(self, program, title, names, strange):
        def listed():
            shown = program.chooser_files(title)
            return (sorted(name for name in shown if name in FILES),
                    sum("\N{REPLACEMENT CHARACTER}" in name for name in shown))
        expected = (sorted(names), strange)
        wait_for(lambda: listed() == expected, lambda: f"the chooser lists {listed()} and not {expected}")

    def test_open_offers_scenes_and_then_meshes(self):
        self.assert_filters("o", do.OPEN_TITLE)

    def test_save_offers_scenes_and_then_meshes(self):
        self.assert_filters("a", do.SAVE_TITLE)


if __name__ == "__main__":
    main()
