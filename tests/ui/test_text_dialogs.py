"""The dialogs that show the vertices and the strips of a mesh as text."""

from harness import UiTestCase, main, wait_for
from harness import commands as do
from harness.models import MAGENTA, RED, quad
from harness.screen import Screen

ELEMENT_TITLE = "エレメント設定"
QUAD_TEXT = "-0.4,-0.4,0\n0.4,-0.4,0\n-0.4,0.4,0\n0.4,0.4,0\n"
# Letter in the menu, title, text of the quad, key of a saved line, what is typed for the second vertex, what is saved.
ATTRIBUTES = (
    ("v", "頂点設定", QUAD_TEXT, "position", "7,8,9", "position 7,8,9"),
    ("c", "カラー設定", "1,0,0,1\n0,1,0,1\n0,0,1,1\n1,0,1,1\n", "color", "0.2,0.4,0.6,0.8", "color 51,102,153,204"),
    ("x", "テクスチャ座標設定", "0,0\n0,0\n0,0\n0,0\n", "texcoord", "0.25,0.75", "texcoord 0.25,0.75"),
    ("t", "tangent(X軸法線)設定", "1,0,0\n" * 4, "tangent", "2,3,4", "tangent 2,3,4"),
    ("b", "binormal(Y軸法線)設定", "0,1,0\n" * 4, "binormal", "5,6,7", "binormal 5,6,7"),
    ("n", "normal(Z軸法線)設定", "0,0,1\n" * 4, "normal", "8,9,10", "normal 8,9,10"),
)
YELLOW = (255, 255, 0)


class TextDialogCase(UiTestCase):
    def start_with(self, model):
        program = self.start()
        self.open_model(program, model)
        return program

    def vertices(self, program):
        return do.open_dialog(program, "v", "頂点設定")

    def elements(self, program):
        return do.open_dialog(program, "e", ELEMENT_TITLE)

    def saved(self, program, key):
        """The values of the saved lines of a key."""
        return [line.split(" ", 1)[1] for line in do.save_text(program) if line.startswith(key + " ")]

    def assert_is_a_page(self, dialog):
        self.assertEqual(dialog.controls(), [("text", dialog.title), ("push button", "OK"), ("push button", "Cancel"),
                                             ("push button", "Apply")])
        width, height = dialog.window.size
        self.assertGreaterEqual(width, 640)
        self.assertGreaterEqual(height, 480)
        # One can type at once.
        wait_for(lambda: dialog.control(dialog.title).is_focused, "the text does not have the keyboard")


class Vertices(TextDialogCase):
    def test_every_attribute_has_its_dialog(self):
        program = self.start_with(quad())
        for letter, title, text, key, typed, line in ATTRIBUTES:
            dialog = do.open_dialog(program, letter, title)
            self.assert_is_a_page(dialog)
            self.assertEqual(dialog.control(title).text, text)
            lines = text.splitlines()
            dialog.fill(title, "\n".join([lines[0], typed, *lines[2:]]))
            dialog.accept()
        saved = do.save_text(program)
        for letter, title, text, key, typed, line in ATTRIBUTES:
            self.assertEqual([row for row in saved if row.startswith(key + " ")][1], line)
        # Each has written its own attribute and nothing else.
        changed = [line for *_, line in ATTRIBUTES]
        self.assertEqual([line for line in saved if line.startswith(("position", "texcoord")) and line not in changed],
                         ["texcoord 0,0", "position -0.4,-0.4,0", "texcoord 0,0", "position -0.4,0.4,0",
                          "texcoord 0,0", "position 0.4,0.4,0"])
        do.leave(program)
        self.assert_ends_clean(program)

    def test_apply_shows_in_the_views_and_is_not_undone_by_cancel(self):
        program = self.start_with(quad())
        # Where it is not covered by the dialog.
        place = self.view.place("front", RED)
        dialog = do.open_dialog(program, "c", "カラー設定")
        dialog.fill("カラー設定", "1,1,0,1\n")
        dialog.apply()
        wait_for(lambda: Screen().pixel(*place) == YELLOW, "the point does not show its new colour")
        # The text stays as it was left.
        self.assertEqual(dialog.control("カラー設定").text, "1,1,0,1\n")
        dialog.fill("カラー設定", "0,0,0,1\n")
        dialog.cancel()
        self.assertEqual(self.saved(program, "color")[0], "255,255,0,255")

    def test_cancelling_and_closing_write_nothing(self):
        program = self.start_with(quad())
        for leave in ("cancel", "close"):
            dialog = self.vertices(program)
            dialog.fill("頂点設定", "9,9,9\n")
            getattr(dialog, leave)()
        self.assertEqual(self.saved(program, "position"), QUAD_TEXT.split())

    def test_sums_are_worked_out(self):
        program = self.start_with(quad())
        dialog = self.vertices(program)
        dialog.fill("頂点設定", "1/3,2*(1+2)), -1 + 4\n.5,0.5\n\n1,2,3,4,5")
        dialog.accept()
        # A field that begins with no number is 0, and what it begins with is stepped over like a comma. A field that is
        # not there is 0 too; more than three are not looked at.
        self.assertEqual(self.saved(program, "position"), ["0.333333,6,3", "0,5,0.5", "0,0,0", "1,2,3"])
        self.assertEqual(program.stderr, "46 \n.: warning: invalid char detect.\n")

    def test_numbers_are_shown_with_six_digits_and_taken_so(self):
        program = self.start_with(quad().replace("position -0.4,-0.4,0", "position 1/3,20000000/3,1/300000"))
        dialog = self.vertices(program)
        self.assertTrue(dialog.control("頂点設定").text.startswith("0.333333,6.66667e+06,3.33333e-06\n"))
        dialog.accept()
        # What is left of a third beyond six digits is gone: three times it is no longer one.
        dialog = self.vertices(program)
        dialog.accept()
        self.assertEqual(self.saved(program, "position")[0], "0.333333,6.66667e+06,3.33333e-06")

    def test_fewer_lines_leave_the_rest_and_more_are_ignored(self):
        program = self.start_with(quad())
        dialog = self.vertices(program)
        node = dialog.focus("頂点設定")
        # The last two lines are taken away as in any editor.
        program.keys("ctrl+End", "shift+Up", "shift+Up", "Delete")
        wait_for(lambda: node.text == "-0.4,-0.4,0\n0.4,-0.4,0\n", lambda: f"the text is {node.text!r}")
        program.keys("ctrl+Home")
        program.type("1")
        wait_for(lambda: node.text == "1-0.4,-0.4,0\n0.4,-0.4,0\n", lambda: f"the text is {node.text!r}")
        dialog.accept()
        self.assertEqual(self.saved(program, "position"), ["0.6,-0.4,0", "0.4,-0.4,0", "-0.4,0.4,0", "0.4,0.4,0"])

        dialog = self.vertices(program)
        dialog.fill("頂点設定", "1,1,1\n2,2,2\n3,3,3\n4,4,4\n5,5,5\nrubbish\n")
        dialog.accept()
        self.assertEqual(self.saved(program, "position"), ["1,1,1", "2,2,2", "3,3,3", "4,4,4"])
        self.assertEqual(program.stderr, "")

    def test_an_empty_text_changes_nothing(self):
        program = self.start_with(quad())
        dialog = self.vertices(program)
        dialog.fill("頂点設定", "")
        dialog.accept()
        self.assertEqual(self.saved(program, "position"), QUAD_TEXT.split())

    def test_garbage_is_survived(self):
        program = self.start_with(quad())
        dialog = self.vertices(program)
        dialog.control("頂点設定").put_text("日本語,(((,)))\n2*(3,*/,\t1\n1/0,-1/0,0/0\n" + "(" * 2000)
        dialog.accept()
        infinite = self.saved(program, "position")[2].split(",")
        self.assertEqual(infinite[:2], ["inf", "-inf"])
        self.assertIn(infinite[2], ("nan", "-nan"))
        do.leave(program)
        self.assertEqual(program.wait_exit(), 0)

    def test_no_step_of_undo_is_made(self):
        program = self.start_with(quad())
        dialog = self.vertices(program)
        dialog.fill("頂点設定", "0,0,0\n")
        dialog.accept()
        program.keys("ctrl+z")
        self.assertEqual(self.saved(program, "position")[0], "0,0,0")

    def test_a_hundred_thousand_vertices_are_edited(self):
        count = 100000
        text = "".join(f"{number},0,0\n" for number in range(count))
        program = self.start()
        self.open_model(program, "\r\n".join(
            [f"begin polygon_surface,{count},3", *(f"position {number},0,0" for number in range(count)), "element 0",
             "element 1", "element 2", *["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * count, "end", ""]))
        dialog = self.vertices(program)
        self.assertEqual(dialog.control("頂点設定").text, text)
        program.keys("ctrl+End", "Up", "Delete")
        program.type("7")
        wait_for(lambda: dialog.control("頂点設定").text.endswith("\n79999,0,0\n"), "the last line is not the edited one")
        dialog.accept()
        positions = self.saved(program, "position")
        self.assertEqual((len(positions), positions[0], positions[-1]), (count, "0,0,0", "79999,0,0"))


class Elements(TextDialogCase):
    def test_strips_are_an_index_on_each_line(self):
        program = self.start_with(quad(elements=(0, 1, 2, -1, 1, 3, 2)).replace("surface,4,4", "surface,4,7"))
        dialog = self.elements(program)
        self.assert_is_a_page(dialog)
        self.assertEqual(dialog.control(ELEMENT_TITLE).text, "0\n1\n2\n-1\n1\n3\n2\n")
        dialog.accept()
        self.assertEqual(self.saved(program, "element"), ["0", "1", "2", "-1", "1", "3", "2"])

    def test_hexadecimal_and_octal_spellings(self):
        program = self.start_with(quad())
        dialog = self.elements(program)
        dialog.fill(ELEMENT_TITLE, "0x10\n010\n-1\n0xFFFFFFFE")
        dialog.accept()
        self.assertEqual(self.saved(program, "element"), ["16", "8", "-1", "4294967294"])
        # Indices beyond the vertices draw nothing.
        wait_for(lambda: self.view.dot("front", MAGENTA), "the points are gone")
        self.assertEqual(program.stderr, "")

    def test_words_are_zero_and_missing_lines_leave_the_rest(self):
        program = self.start_with(quad())
        dialog = self.elements(program)
        dialog.fill(ELEMENT_TITLE, "two\n\n1")
        dialog.accept()
        self.assertEqual(self.saved(program, "element"), ["0", "0", "1", "3"])

    def test_apply_shows_in_the_view_and_stays_after_cancel(self):
        program = self.start_with(quad())
        wait_for(lambda: self.view.coloured("perspective") > 1000, "the surface does not show")
        dialog = self.elements(program)
        dialog.fill(ELEMENT_TITLE, "-1\n-1\n-1\n-1")
        dialog.apply()
        dialog.cancel()
        wait_for(lambda: self.view.coloured("perspective") < 1000, "the surface still shows")
        self.assertEqual(self.saved(program, "element"), ["-1"] * 4)
        do.leave(program)
        self.assert_ends_clean(program)


if __name__ == "__main__":
    main()
