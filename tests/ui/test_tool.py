"""What ulktool makes of a scene is to the last byte what the window saves after the same command."""

import os
import pathlib
import subprocess

from harness import PROGRAM_NAME, UiTestCase, main, wait_for
from harness import commands as do
from harness.models import BLUE, GREEN, quad

TOOL = pathlib.Path(os.environ["ULK_UI_PROGRAM"]).with_name("ulktool")
CUT_TITLE = "ポリゴン編集"


class SameAsTool(UiTestCase):
    def start_with(self, path):
        self.program = self.start()
        self.scene = self.sample(self.program, path) if isinstance(path, str) else path(self.program)
        do.open_scene(self.program, self.scene, f"{pathlib.Path(self.scene).name} - {PROGRAM_NAME}")

    def assert_saves_what_the_tool_makes(self, *command):
        by_tool = self.program.folder / "by_tool.ulk"
        done = subprocess.run([TOOL, command[0], self.scene, *command[1:], "-o", by_tool], capture_output=True,
                              text=True, timeout=120)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        by_window = self.program.folder / "by_window.ulk"
        do.give_save_as(self.program, by_window)
        self.program.wait_title(f"by_window.ulk - {PROGRAM_NAME}")
        self.program.wait_main_active()
        # Not compared by the test's own method: a message with all lines takes minutes.
        self.assertTrue(by_window.read_bytes() == by_tool.read_bytes(), "the files differ")
        self.assertNotEqual(by_tool.read_bytes(), pathlib.Path(self.scene).read_bytes())
        do.leave(self.program)
        self.assertEqual(self.program.wait_exit(), 0)

    def test_cut(self):
        self.start_with("cut.ulk")
        do.cut(self.program)
        wait_for(lambda: self.program.window(CUT_TITLE), "the cut does not end", seconds=120)
        self.program.message(CUT_TITLE)
        self.program.keys("Return")
        self.program.wait_gone(CUT_TITLE)
        self.program.wait_main_active()
        self.assert_saves_what_the_tool_makes("cut", "--cutter", "0")

    def test_fold(self):
        self.start_with(lambda program: self.file(program, "quad.ulk", quad()))
        wait_for(lambda: self.view.dot("front", GREEN), "the points do not show")
        self.program.press_control("radio button", "折目頂点選択1,0")
        for colour, button in ((GREEN, 3), (BLUE, 1)):
            self.rest_pointer(self.program)
            self.program.click(*self.view.place("front", colour), button)
        self.program.press_control("radio button", "折曲ポリゴン選択")
        self.program.click(*self.view.at("perspective", 60, 60))
        wait_for(lambda: "select polygon " in self.program.stdout, "the polygon is not marked")
        self.program.spin("折曲角度", 4, button=2)
        wait_for(lambda: self.program.control("spin button", "折曲角度").text == "60", "the angle is not 60")
        before = self.view.picture("perspective")
        self.program.press_control("push button", "折曲実行")
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.picture("perspective") != before, "the picture has not changed")
        self.assert_saves_what_the_tool_makes("fold", "--model", "0", "--polygons", "1", "--axis", "1,2",
                                              "--angle", "60")

    def test_polygonize(self):
        self.start_with("vase.ulk")
        do.polygonize(self.program)
        self.assert_saves_what_the_tool_makes("polygonize", "--model", "0")


if __name__ == "__main__":
    main()
