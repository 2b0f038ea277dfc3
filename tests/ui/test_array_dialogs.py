"""The tables of control points: what they show, what they write, and what is taken back."""

from harness import commands as do
from harness import main, wait_for
from harness.accessibility import SHOWING
from harness.models import colour_of, net, place_of
from harness.net_case import NetTestCase
from harness.table_dialog import TableDialog

POINTS, COLOURS = "制御点", "RGBAカラー一覧"
COLUMNS, ROWS = 3, 2
CELLS = [(column, row) for row in range(ROWS) for column in range(COLUMNS)]


def name_of(column, row, axis):
    return f"制御点 {column},{row} {axis}"


class Table(NetTestCase):
    def start_with_net(self):
        self.start_with(net(COLUMNS, ROWS))

    def open_points(self):
        return TableDialog(self.program, "p", POINTS)

    def open_colours(self):
        return TableDialog(self.program, "c", COLOURS)

    def undo(self):
        self.program.wait_main_active()
        self.program.keys("ctrl+z")


class PointTable(Table):
    def test_what_it_shows(self):
        self.start_with_net()
        dialog = self.open_points()
        names = [name_of(*cell, axis) for cell in CELLS for axis in "xyz"]
        self.assertEqual(sorted(dialog.spins()), sorted(names))
        for cell in CELLS:
            self.assertFalse(dialog.is_checked(name_of(*cell, "選択")))
            for axis, value in zip("xyz", place_of(*cell)):
                name = name_of(*cell, axis)
                self.assertAlmostEqual(dialog.value(name), value, 6)
                self.assertEqual(dialog.text(name), f"{value:.7f}")
                self.assertEqual(dialog.numbers(name), (-100, 100, 0.1))
        self.assertEqual(dialog.buttons(), ["OK", "Cancel", "Apply"])
        width, height = self.program.window(POINTS).size
        self.assertGreaterEqual(width, 640)
        self.assertGreaterEqual(height, 480)
        dialog.end("Cancel")
        self.end()

    def test_it_is_laid_out_like_the_net(self):
        self.start_with_net()
        dialog = self.open_points()
        left = {cell: dialog.rectangle(name_of(*cell, "x"))[0] for cell in CELLS}
        top = {cell: dialog.rectangle(name_of(*cell, "x"))[1] for cell in CELLS}
        for column in range(COLUMNS):
            # Columns from the left, rows from the bottom up.
            self.assertEqual(left[column, 0], left[column, 1])
            self.assertGreater(top[column, 0], top[column, 1])
            if column > 0:
                self.assertGreater(left[column, 0], left[column - 1, 0])
                self.assertEqual(top[column, 0], top[0, 0])
        for cell in CELLS:
            # A check button left of three numbers, one above the other.
            check = dialog.rectangle(name_of(*cell, "選択"))
            boxes = [dialog.rectangle(name_of(*cell, axis)) for axis in "xyz"]
            self.assertEqual({box[0] for box in boxes}, {left[cell]})
            self.assertEqual(check[0] + check[2], left[cell])
            self.assertEqual(check[1], boxes[0][1])
            self.assertEqual(check[1] + check[3], boxes[2][1] + boxes[2][3])
            self.assertEqual([box[1] for box in boxes[1:]], [box[1] + box[3] for box in boxes[:-1]])
        # The separator of a cell lies below it, across both of its columns.
        separators = sorted(node.rectangle for node in dialog.node.find_all("separator") if node.rectangle[2] > 50)
        for cell in CELLS:
            check, below = dialog.rectangle(name_of(*cell, "選択")), dialog.rectangle(name_of(*cell, "z"))
            self.assertTrue(any(x == check[0] and y == below[1] + below[3] and x + width == below[0] + below[2]
                                for x, y, width, _ in separators), (cell, separators))
        dialog.end("Cancel")

    def test_steps_pages_and_limits(self):
        self.start_with_net()
        dialog = self.open_points()
        name = name_of(1, 0, "x")
        dialog.press_key(name, "Up", 0.35)
        dialog.press_key(name, "Down", 0.25)
        dialog.press_key(name, "Page_Up", 1.25)
        dialog.enter(name, "99.95")
        dialog.press_key(name, "Up", 100)
        # It does not wrap.
        dialog.press_key(name, "Up", 100)
        dialog.enter(name, "-99.95")
        dialog.press_key(name, "Page_Down", -100)
        dialog.press_key(name, "Down", -100)
        dialog.end("Cancel")

    def test_tab_goes_from_point_to_point(self):
        self.start_with_net()
        dialog = self.open_points()
        expected = [name_of(*cell, part) for cell in CELLS for part in ("選択", "x", "y", "z")]
        # Behind the last point come the answers.
        for name in expected + ["OK", "Cancel", "Apply"]:
            dialog.wait_focused(name)
            self.program.keys("Tab")
        self.program.keys("Escape")
        self.program.wait_gone(POINTS)

    def test_ok_writes_one_step_of_undo(self):
        self.start_with_net()
        before = self.view.picture("perspective")
        dialog = self.open_points()
        dialog.enter(name_of(1, 0, "x"), "0.5")
        dialog.enter(name_of(2, 1, "z"), "-1.25")
        dialog.enter(name_of(2, 1, "y"), "3")
        dialog.end("OK")
        self.rest_pointer(self.program)
        changed = {1: (0.5, -0.25, 0), 5: (0.5, 3, -1.25)}
        self.assert_saved_with("position", changed)
        wait_for(lambda: self.view.picture("perspective") != before, "the view shows no change")
        after = self.view.picture("perspective")
        self.undo()
        self.assert_saved_with("position", {})
        wait_for(lambda: self.view.picture("perspective") == before, "the picture does not go back")
        self.program.keys("ctrl+y")
        self.assert_saved_with("position", changed)
        wait_for(lambda: self.view.picture("perspective") == after, "the picture does not come again")
        self.end()

    def test_apply_stays_open_and_cancel_keeps_it(self):
        self.start_with_net()
        dialog = self.open_points()
        dialog.enter(name_of(0, 0, "x"), "-2")
        dialog.apply()
        self.assertTrue(self.program.window(POINTS))
        self.assertEqual(dialog.value(name_of(0, 0, "x")), -2)
        dialog.enter(name_of(0, 0, "y"), "-3")
        dialog.apply()
        dialog.enter(name_of(0, 0, "z"), "-4")
        dialog.end("Cancel")
        self.assert_saved_with("position", {0: (-2, -3, 0)})
        # Each Apply is a step of its own.
        self.undo()
        self.assert_saved_with("position", {0: (-2, -0.25, 0)})
        self.undo()
        self.assert_saved_with("position", {})

    def test_cancel_changes_nothing(self):
        self.start_with_net()
        for way_out in ("Cancel", "Escape"):
            dialog = self.open_points()
            dialog.enter(name_of(0, 0, "x"), "-2")
            dialog.toggle(name_of(1, 0, "選択"))
            if way_out == "Cancel":
                dialog.end("Cancel")
            else:
                self.program.keys("Escape")
                self.program.wait_gone(POINTS)
            dialog = self.open_points()
            self.assertEqual(dialog.value(name_of(0, 0, "x")), 0)
            self.assertFalse(dialog.is_checked(name_of(1, 0, "選択")))
            dialog.end("Cancel")
        self.assert_saved_with("position", {})

    def test_ok_without_a_change_is_no_step(self):
        self.start_with_net()
        dialog = self.open_points()
        dialog.enter(name_of(0, 0, "x"), "-2")
        dialog.end("OK")
        dialog = self.open_points()
        # Into a number and out of it, which is no change either.
        dialog.focus(name_of(1, 1, "z"))
        self.program.keys("Tab")
        dialog.end("OK")
        self.assert_saved_with("position", {0: (-2, -0.25, 0)})
        self.undo()
        self.assert_saved_with("position", {})

    def test_marks_alone_are_an_empty_step(self):
        self.start_with_net()
        dialog = self.open_points()
        dialog.enter(name_of(0, 0, "x"), "-2")
        dialog.end("OK")
        colour = colour_of(2, 0)[:3]
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.dot("front", colour), "the point does not show")
        self.assertEqual(self.view.dot("front", colour).size, 9)

        dialog = self.open_points()
        dialog.toggle(name_of(2, 0, "選択"))
        dialog.end("OK")
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.dot("front", colour) and self.view.dot("front", colour).size == 25,
                 "the point is not marked")
        dialog = self.open_points()
        self.assertEqual([cell for cell in CELLS if dialog.is_checked(name_of(*cell, "選択"))], [(2, 0)])
        dialog.end("OK")

        # The first step back takes back nothing.
        self.undo()
        self.assert_saved_with("position", {0: (-2, -0.25, 0)})
        self.undo()
        self.assert_saved_with("position", {})
        dialog = self.open_points()
        self.assertTrue(dialog.is_checked(name_of(2, 0, "選択")))
        dialog.toggle(name_of(2, 0, "選択"))
        dialog.end("OK")
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.dot("front", colour).size == 9, "the point is still marked")

    def test_a_number_that_is_being_typed_is_applied(self):
        self.start_with_net()
        dialog = self.open_points()
        dialog.fill(name_of(1, 1, "y"), "1.5")
        self.program.keys("alt+a")
        wait_for(lambda: dialog.value(name_of(1, 1, "y")) == 1.5, "the number was not taken over")
        dialog.end("Cancel")
        self.assert_saved_with("position", {4: (0.25, 1.5, 0.125)})

    def test_points_beyond_the_range_move_to_its_limits(self):
        places = {0: (150, -0.25, 0), 4: (0.25, -1e6, 0.125)}
        text = net(COLUMNS, ROWS).replace("position 0,-0.25,0", "position 150,-0.25,0")
        self.start_with(text.replace("position 0.25,0,0.125", "position 0.25,-1e6,0.125"))
        self.assertEqual({index: self.untouched["position"][index] for index in places}, places)
        dialog = self.open_points()
        self.assertEqual(dialog.value(name_of(0, 0, "x")), 100)
        self.assertEqual(dialog.value(name_of(1, 1, "y")), -100)
        dialog.end("Cancel")
        self.assert_saved_with("position", {})
        dialog = self.open_points()
        dialog.end("OK")
        self.assert_saved_with("position", {0: (100, -0.25, 0), 4: (0.25, -100, 0.125)})
        self.undo()
        self.assert_saved_with("position", {})


class ColourTable(Table):
    def test_what_it_shows(self):
        self.start_with_net()
        dialog = self.open_colours()
        self.assertEqual(sorted(dialog.spins()), sorted(name_of(*cell, axis) for cell in CELLS for axis in "rgba"))
        for cell in CELLS:
            self.assertFalse(dialog.is_checked(name_of(*cell, "選択")))
            for axis, value in zip("rgba", colour_of(*cell)):
                name = name_of(*cell, axis)
                self.assertEqual(dialog.value(name), value)
                self.assertEqual(dialog.text(name), str(value))
                self.assertEqual(dialog.numbers(name), (0, 255, 1))
            boxes = [dialog.rectangle(name_of(*cell, axis)) for axis in "rgba"]
            self.assertEqual([box[1] for box in boxes[1:]], [box[1] + box[3] for box in boxes[:-1]])
            check = dialog.rectangle(name_of(*cell, "選択"))
            self.assertEqual((check[1], check[1] + check[3]), (boxes[0][1], boxes[3][1] + boxes[3][3]))
        self.assertGreater(dialog.rectangle(name_of(0, 0, "r"))[1], dialog.rectangle(name_of(0, 1, "r"))[1])
        self.assertEqual(dialog.buttons(), ["OK", "Cancel", "Apply"])
        self.assertGreaterEqual(self.program.window(COLOURS).size, (640, 480))
        dialog.end("Cancel")
        self.end()

    def test_steps_pages_and_limits(self):
        self.start_with_net()
        dialog = self.open_colours()
        name = name_of(0, 0, "r")
        dialog.press_key(name, "Up", 11)
        dialog.press_key(name, "Page_Up", 19)
        dialog.press_key(name, "Page_Down", 11)
        dialog.enter(name, "250")
        dialog.press_key(name, "Page_Up", 255)
        dialog.press_key(name, "Up", 255)
        dialog.enter(name, "1")
        dialog.press_key(name, "Page_Down", 0)
        dialog.press_key(name, "Down", 0)
        dialog.end("Cancel")

    def test_ok_writes_one_step_of_undo(self):
        self.start_with_net()
        dialog = self.open_colours()
        dialog.enter(name_of(1, 0, "r"), "255")
        dialog.enter(name_of(1, 0, "a"), "0")
        dialog.enter(name_of(0, 1, "g"), "7")
        dialog.end("OK")
        self.rest_pointer(self.program)
        self.assert_saved_with("color", {1: (255, 20, 170, 0), 3: (10, 7, 200, 255)})
        wait_for(lambda: self.view.dot("front", (10, 7, 200)), "the point does not show its new colour")
        self.undo()
        self.assert_saved_with("color", {})
        self.end()

    def test_apply_and_cancel(self):
        self.start_with_net()
        dialog = self.open_colours()
        dialog.enter(name_of(2, 1, "b"), "1")
        dialog.apply()
        dialog.enter(name_of(2, 1, "b"), "2")
        dialog.end("Cancel")
        self.assert_saved_with("color", {5: (90, 80, 1, 255)})
        dialog = self.open_colours()
        dialog.end("OK")
        # The OK without a change was no step.
        self.undo()
        self.assert_saved_with("color", {})

    def test_marks_are_those_of_the_points(self):
        self.start_with_net()
        dialog = self.open_colours()
        dialog.toggle(name_of(1, 1, "選択"))
        dialog.end("OK")
        dialog = self.open_points()
        self.assertEqual([cell for cell in CELLS if dialog.is_checked(name_of(*cell, "選択"))], [(1, 1)])
        dialog.end("Cancel")


class Sizes(Table):
    def test_a_net_without_points_has_an_empty_dialog(self):
        self.start_with("begin nurbs_surface,0,2,0,2\r\nresolution 5,5\r\nend\r\n")
        for letter, title in (("p", POINTS), ("c", COLOURS)):
            for button in ("Apply", "OK"):
                dialog = TableDialog(self.program, letter, title)
                self.assertEqual(dialog.cells, {})
                self.assertEqual(dialog.buttons(), ["OK", "Cancel", "Apply"])
                if button == "Apply":
                    dialog.apply()
                dialog.end("OK" if button == "OK" else "Cancel")
        do.leave(self.program)
        self.assertEqual(self.program.wait_exit(), 0)
        self.assertNotIn("CRITICAL", self.program.stderr)

    def test_a_net_of_one_point(self):
        self.start_with(net(1, 1))
        dialog = self.open_points()
        self.assertEqual(sorted(dialog.spins()), sorted(name_of(0, 0, axis) for axis in "xyz"))
        dialog.enter(name_of(0, 0, "z"), "1")
        dialog.end("OK")
        self.assert_saved_with("position", {0: (0, -0.25, 1)})
        dialog = self.open_colours()
        dialog.enter(name_of(0, 0, "a"), "5")
        dialog.end("OK")
        self.undo()
        self.undo()
        self.assertEqual(self.saved(), self.untouched)

    def test_cells_that_were_out_of_view(self):
        """Tab reaches the cells of a large net wherever they are, and what is written there is kept."""
        self.start_with(net(12, 10))
        dialog = self.open_points()
        dialog.wait_focused(name_of(0, 0, "選択"))
        # To the end of the first row, which begins out of view, and on to the beginning of the second.
        self.program.keys(*["Tab"] * (4 * 12 + 1))
        dialog.wait_focused(name_of(0, 1, "x"))
        dialog.look()
        self.assertTrue(dialog.cells[name_of(0, 1, "x")].has_state(SHOWING))
        # Back over all of that and over the three answers, behind which the last point comes.
        self.program.keys(*["shift+Tab"] * (4 * 12 + 1 + 3 + 1))
        dialog.wait_focused(name_of(11, 9, "z"))
        dialog.look()
        last = dialog.cells[name_of(11, 9, "z")]
        wait_for(lambda: last.has_state(SHOWING), "the last point does not show")
        self.program.keys("ctrl+a")
        self.program.type("9")
        self.program.keys("shift+Tab")
        wait_for(lambda: dialog.value(name_of(11, 9, "z")) == 9, "the number was not taken over")
        self.program.keys(*["shift+Tab"] * 8)
        dialog.wait_focused(name_of(9, 9, "y"))
        dialog.end("OK")
        self.assert_saved_with("position", {119: (2.75, 2, 9)})
        self.end()

    def test_a_large_net_has_widgets_for_what_is_in_view(self):
        self.start_with(net(64, 12))
        dialog = self.open_points()
        dialog.wait_focused(name_of(0, 0, "選択"))
        self.assertLess(len(dialog.spins()), 300)
        self.assertEqual(dialog.value(name_of(1, 0, "x")), 0.25)
        self.assertNotIn(name_of(63, 11, "x"), dialog.cells)
        dialog.enter(name_of(0, 0, "x"), "-1")
        # Over the three answers to the last point.
        dialog.tab_to("Apply", "shift+Tab")
        self.program.keys(*["shift+Tab"] * 3)
        dialog.wait_focused(name_of(63, 11, "z"))
        dialog.look()
        self.assertLess(len(dialog.spins()), 300)
        self.program.keys("ctrl+a")
        self.program.type("2/4")
        self.program.keys("Tab")
        wait_for(lambda: dialog.value(name_of(63, 11, "z")) == 0.5, "the number was not taken over")
        dialog.end("OK")
        self.assert_saved_with("position", {0: (-1, -0.25, 0), 767: (15.75, 2.5, 0.5)})
        self.end()


if __name__ == "__main__":
    main()
