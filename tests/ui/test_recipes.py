"""The recipes of the manual, from the first command to what is on the screen."""

import pathlib

from harness import BACKGROUND, UiTestCase, main, wait_for
from harness import commands as do
from harness.table_dialog import TableDialog

MANUAL = (pathlib.Path(__file__).parents[2] / "docs" / "manual.md").read_text()
VERTICES = ["-0.5,-0.5,0", "0.5,-0.5,0", "0.5,0.5,0", "-0.5,0.5,0", "0,0,0.7"]
ELEMENTS = "0, 1, 4, -1, 1, 2, 4, -1, 2, 3, 4, -1, 3, 0, 4, -1"


class Recipes(UiTestCase):
    def surface(self):
        """The pixels of the perspective view that are not the ground; points are few."""
        return sum(count for colour, count in self.view.colours("perspective").items() if colour != BACKGROUND)

    def test_a_pyramid_from_nothing(self):
        self.assertIn("set 頂点数 to 5 and エレメント数 to 16", MANUAL)
        self.assertIn("".join(f"       {line}\n" for line in VERTICES), MANUAL)
        self.assertIn(ELEMENTS, MANUAL)
        program = self.start()
        dialog = do.add_polygon(program)
        dialog.fill("頂点数", "5")
        dialog.fill("エレメント数", "16")
        dialog.accept()
        dialog = do.open_dialog(program, "v", "頂点設定")
        dialog.fill("頂点設定", "\n".join(VERTICES))
        dialog.accept()
        dialog = do.open_dialog(program, "e", "エレメント設定")
        dialog.fill("エレメント設定", "\n".join(ELEMENTS.split(", ")))
        dialog.accept()
        program.wait_main_active()
        program.keys("Return")
        wait_for(lambda: self.surface() > 5000, lambda: f"{self.surface()} pixels show the pyramid")
        normals = [line for line in do.save_text(program) if line.startswith("normal ")]
        self.assertEqual(len(normals), 5)
        self.assertNotIn("normal 0,0,0", normals)
        self.assertEqual(program.stderr, "")

    def test_a_hill_from_nothing(self):
        self.assertIn("set both numbers of control points to 5 and both orders to 3", MANUAL)
        self.assertIn("set the third number of the point in the middle to 1", MANUAL)
        program = self.start()
        dialog = do.add_nurbs(program)
        for name, text in (("X制御点数", "5"), ("Y制御点数", "5"), ("X階数(次数+1)", "3"), ("Y階数(次数+1)", "3")):
            dialog.fill(name, text)
        dialog.accept()
        table = TableDialog(program, "p", "制御点")
        table.enter("制御点 2,2 z", "1")
        table.end("OK")
        program.wait_main_active()
        program.keys("Return")
        wait_for(lambda: self.surface() > 5000, lambda: f"{self.surface()} pixels show the hill")
        self.assertIn("position 0,0,1", do.save_text(program))
        self.assertEqual(program.stderr, "")


if __name__ == "__main__":
    main()
