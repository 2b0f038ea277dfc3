"""The editing dialogs, as far as only the real window can show: that they open, what they hold, where edits go."""

from harness import BACKGROUND, PROGRAM_NAME, Screen, UiTestCase, main, wait_for
from harness import commands as do

# The letter of an item of the Dialog menu, and the title of what it opens.
POLYGON_DIALOGS = [("i", "環境設定"), ("v", "頂点設定"), ("c", "カラー設定"), ("x", "テクスチャ座標設定"),
                   ("t", "tangent(X軸法線)設定"), ("b", "binormal(Y軸法線)設定"), ("n", "normal(Z軸法線)設定"),
                   ("e", "エレメント設定"), ("o", "ポリゴン設定")]
NURBS_DIALOGS = [("i", "環境設定"), ("p", "制御点"), ("c", "RGBAカラー一覧"), ("w", "重み付け一覧"),
                 ("h", "横ノット列一覧"), ("v", "縦ノット列一覧"), ("o", "NURBS設定")]


class Dialogs(UiTestCase):
    def start_with(self, *samples):
        program = self.start()
        for name in samples:
            do.open_scene(program, self.sample(program, name), f"{name} - {PROGRAM_NAME}")
        return program

    def open_dialog(self, program, letter, title):
        program.choose("Dialog", "d", letter)
        program.wait_window(title)
        return program.dialog(title)

    def close(self, program, title, keys="Escape"):
        program.keys(keys)
        program.wait_gone(title)
        program.wait_main_active()

    def saved(self, program):
        """What a save writes now."""
        path = program.folder / "now.ulk"
        path.unlink(missing_ok=True)
        do.give_save_as(program, path)
        program.wait_title(f"now.ulk - {PROGRAM_NAME}")
        program.wait_main_active()
        return path.read_text().replace("\r", "")

    def check_buttons(self, program, dialogs):
        for letter, title in dialogs:
            self.open_dialog(program, letter, title)
            buttons = program.dialog_buttons(title)
            self.assertEqual([name for name in buttons if name in ("OK", "Cancel", "Apply")],
                             ["OK", "Cancel", "Apply"], title)
            self.close(program, title)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_every_dialog_of_a_polygon_model_opens_and_closes(self):
        self.check_buttons(self.start_with("cube.ulk"), POLYGON_DIALOGS)

    def test_every_dialog_of_a_nurbs_model_opens_and_closes(self):
        self.check_buttons(self.start_with("patch.ulk"), NURBS_DIALOGS)

    def test_the_vertex_dialog_writes_its_lines_into_the_model(self):
        program = self.start_with("cube.ulk")
        dialog = self.open_dialog(program, "v", "頂点設定")
        lines = dialog.find("text").text.splitlines()
        self.assertEqual(len(lines), 24)
        self.assertEqual(lines[0], "-0.5,-0.5,0.5")
        program.keys("ctrl+Home", "shift+End")
        program.type("1/4,2*3,-1")
        self.close(program, "頂点設定", "alt+o")
        positions = [line for line in self.saved(program).splitlines() if line.startswith("position")]
        self.assertEqual(positions[:2], ["position 0.25,6,-1", "position 0.5,-0.5,0.5"])

    def test_the_element_dialog_shows_restart_marks_and_takes_hexadecimal(self):
        program = self.start_with("cube.ulk")
        dialog = self.open_dialog(program, "e", "エレメント設定")
        self.assertEqual(dialog.find("text").text.split()[:6], ["0", "1", "2", "3", "-1", "4"])
        program.keys("ctrl+Home", "shift+End")
        program.type("0x10")
        self.close(program, "エレメント設定", "alt+o")
        elements = [line for line in self.saved(program).splitlines() if line.startswith("element")]
        self.assertEqual(elements[:5], ["element 16", "element 1", "element 2", "element 3", "element -1"])

    def test_a_point_is_edited_applied_and_undone(self):
        program = self.start_with("patch.ulk")
        before = self.saved(program)
        self.assertIn("position -0.5,-0.5,0.25\n", before)
        dialog = self.open_dialog(program, "p", "制御点")
        self.assertEqual(len(dialog.find_all("spin button")), 12)
        # The focus goes from cell to cell beginning with the first point: its mark, then x.
        program.keys("Tab", "ctrl+a")
        program.type("-0.75")
        program.keys("Tab", "alt+a")
        self.close(program, "制御点")
        self.assertIn("position -0.75,-0.5,0.25\n", self.saved(program))
        program.keys("ctrl+z")
        self.assertEqual(self.saved(program), before)

    def test_the_weight_dialog_has_no_view_buttons(self):
        program = self.start_with("patch.ulk")
        dialog = self.open_dialog(program, "w", "重み付け一覧")
        self.assertEqual(len(dialog.find_all("spin button")), 4)
        self.assertEqual({node.name for node in dialog.find_all("push button")}, {"OK", "Cancel", "Apply"})

    def test_a_view_button_of_the_knot_dialog_draws_the_basis_functions(self):
        program = self.start_with("patch.ulk")
        dialog = self.open_dialog(program, "h", "横ノット列一覧")
        self.assertEqual(len(dialog.find_all("spin button")), 8)
        x, y, width, height = dialog.find("push button", "1").rectangle
        program.click(x + width // 2, y + height // 2)
        viewer = program.wait_window("1")

        def plot():
            # Left out: the button row and the border of the window.
            left, top, width, _ = viewer.geometry
            return Screen().colours(left + 20, top + 20, width - 40, 360)

        # Two straight lines that cross in the upper half, grey on the background.
        wait_for(lambda: plot().get((128, 128, 128), 0) > 300, lambda: f"no plot: {len(plot())} colours")
        self.assertGreater(plot()[BACKGROUND], 100000)
        self.close_viewer(program)

    def close_viewer(self, program):
        program.keys("alt+o")
        program.wait_gone("1")
        program.bring_window("横ノット列一覧")
        self.close(program, "横ノット列一覧")
        do.leave(program)
        self.assert_ends_clean(program)


class AddedModels(UiTestCase):
    def add(self, program, letter, title):
        program.choose("Edit", "e", letter)
        program.wait_window(title)

    def test_cancel_takes_a_new_model_back(self):
        program = self.start()
        for letter, title in (("p", "ポリゴン設定"), ("n", "NURBS設定")):
            self.add(program, letter, title)
            program.keys("Escape")
            program.wait_gone(title)
            program.wait_main_active()
            self.assertEqual(do.model_labels(program), [], title)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_apply_keeps_a_new_model_through_cancel(self):
        program = self.start()
        for letter, title, labels in (("p", "ポリゴン設定", ["v 0 Polygon "]),
                                      ("n", "NURBS設定", ["  0 Polygon ", "v 1 Nurbs "])):
            self.add(program, letter, title)
            program.keys("alt+a")
            program.keys("Escape")
            program.wait_gone(title)
            program.wait_main_active()
            self.assertEqual(do.model_labels(program), labels)
        do.leave(program)
        self.assertEqual(program.wait_exit(), 0)

    def test_a_named_nurbs_model_gets_its_points(self):
        program = self.start()
        self.add(program, "n", "NURBS設定")
        program.keys("ctrl+a")
        program.type("new.ulk")
        for value in ("3", "4", "2", "2"):
            program.keys("Tab", "ctrl+a")
            program.type(value)
        program.keys("Tab", "alt+o")
        program.wait_gone("NURBS設定")
        program.wait_title(f"new.ulk - {PROGRAM_NAME}")
        path = program.folder / "out.ulk"
        do.give_save_as(program, path)
        program.wait_title(f"out.ulk - {PROGRAM_NAME}")
        self.assertTrue(path.read_text().startswith("begin nurbs_surface,3,2,4,2"))


if __name__ == "__main__":
    main()
