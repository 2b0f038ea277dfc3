"""The tables of weights and knots: what they show and what they write."""

from harness import commands as do
from harness import main, wait_for
from harness.accessibility import SHOWING
from harness.models import net
from harness.net_case import NetTestCase
from harness.table_dialog import TableDialog

WEIGHTS, ROW_KNOTS, COLUMN_KNOTS = "重み付け一覧", "横ノット列一覧", "縦ノット列一覧"
WEIGHT, ROW_KNOT, COLUMN_KNOT = "重み", "横ノット", "縦ノット"


def name_of(kind, row, element):
    """By its column and row in the table, in which the vectors of columns stand upright."""
    return f"{kind} {row},{element}" if kind == COLUMN_KNOT else f"{kind} {element},{row}"


def view_of(row):
    return f"ノット列 {row} の基底関数"


class Knots(NetTestCase):
    def open(self, letter):
        return TableDialog(self.program, letter, {"w": WEIGHTS, "h": ROW_KNOTS, "v": COLUMN_KNOTS}[letter])

    def assert_shows(self, dialog, kind, table):
        """The dialog has the numbers of a table of rows, and no others."""
        wanted = {name_of(kind, row, element): value
                  for row, values in enumerate(table) for element, value in enumerate(values)}
        self.assertEqual(set(dialog.spins()), set(wanted))
        for name, value in wanted.items():
            self.assertAlmostEqual(dialog.value(name), value, 6)
            self.assertEqual(dialog.text(name), f"{dialog.value(name):.7f}")
            self.assertEqual(dialog.numbers(name), (-100, 100, 0.025))

    def views(self, dialog):
        return [node.name for node in dialog.node.find_all("push button") if node.name.startswith("ノット列")]

    def left(self, dialog, *cell):
        return dialog.rectangle(name_of(*cell))[0]

    def top(self, dialog, *cell):
        return dialog.rectangle(name_of(*cell))[1]


class Tables(Knots):
    def test_weights(self):
        self.start_with(net(3, 2))
        dialog = self.open("w")
        self.assert_shows(dialog, WEIGHT, [[1, 1.125, 1.25], [2, 2.125, 2.25]])
        self.assertEqual(self.views(dialog), [])
        self.assertEqual(dialog.buttons(), ["OK", "Cancel", "Apply"])
        # The first row stands at the bottom.
        for element in range(3):
            self.assertGreater(self.top(dialog, WEIGHT, 0, element), self.top(dialog, WEIGHT, 1, element))
            self.assertEqual(self.left(dialog, WEIGHT, 0, element), self.left(dialog, WEIGHT, 1, element))
            self.assertEqual(self.top(dialog, WEIGHT, 0, element), self.top(dialog, WEIGHT, 0, 0))
        self.assertLess(self.left(dialog, WEIGHT, 0, 0), self.left(dialog, WEIGHT, 0, 1))
        self.assertLess(self.left(dialog, WEIGHT, 0, 1), self.left(dialog, WEIGHT, 0, 2))
        # Two pixels between rows, none between columns.
        x, y, width, height = dialog.rectangle(name_of(WEIGHT, 1, 0))
        self.assertEqual(self.top(dialog, WEIGHT, 0, 0), y + height + 2)
        self.assertEqual(self.left(dialog, WEIGHT, 1, 1), x + width)
        dialog.end("Cancel")
        self.end()

    def test_knots_of_rows(self):
        self.start_with(net(2, 2, knot1=[0, 0.125, 0.75, 1]))
        dialog = self.open("h")
        self.assert_shows(dialog, ROW_KNOT, [[0, 0.125, 0.75, 1]] * 2)
        self.assertEqual(sorted(self.views(dialog)), [view_of(0), view_of(1)])
        for row in range(2):
            # Each row begins with its button.
            x, y, width, height = dialog.node.find("push button", view_of(row)).rectangle
            self.assertEqual((x + width, y), (self.left(dialog, ROW_KNOT, row, 0), self.top(dialog, ROW_KNOT, row, 0)))
            lefts = [self.left(dialog, ROW_KNOT, row, element) for element in range(4)]
            self.assertEqual(lefts, sorted(set(lefts)))
        self.assertGreater(self.top(dialog, ROW_KNOT, 0, 0), self.top(dialog, ROW_KNOT, 1, 0))
        dialog.end("Cancel")

    def test_knots_of_columns(self):
        self.start_with(net(3, 2, 2, 2, knot2=[0, 0.125, 0.75, 1]))
        dialog = self.open("v")
        self.assert_shows(dialog, COLUMN_KNOT, [[0, 0.125, 0.75, 1]] * 3)
        self.assertEqual(sorted(self.views(dialog)), [view_of(0), view_of(1), view_of(2)])
        for row in range(3):
            tops = [self.top(dialog, COLUMN_KNOT, row, element) for element in range(4)]
            # From the bottom up, with the button above all.
            self.assertEqual(tops, sorted(set(tops), reverse=True))
            x, y, _, height = dialog.node.find("push button", view_of(row)).rectangle
            self.assertEqual(x, self.left(dialog, COLUMN_KNOT, row, 0))
            self.assertEqual(y + height + 2, tops[3])
        lefts = [self.left(dialog, COLUMN_KNOT, row, 0) for row in range(3)]
        self.assertEqual(lefts, sorted(set(lefts)))
        dialog.end("Cancel")

    def test_steps_pages_and_limits(self):
        self.start_with(net(2, 2))
        dialog = self.open("w")
        name = name_of(WEIGHT, 0, 0)
        dialog.press_key(name, "Up", 1.025)
        dialog.press_key(name, "Down", 1)
        dialog.press_key(name, "Page_Up", 1.1)
        dialog.enter(name, "99.99")
        dialog.press_key(name, "Up", 100)
        dialog.press_key(name, "Up", 100)
        dialog.enter(name, "-99.99")
        dialog.press_key(name, "Page_Down", -100)
        dialog.press_key(name, "Down", -100)
        dialog.end("Cancel")

    def test_tab_goes_along_each_knot_vector_and_then_to_the_next(self):
        self.start_with(net(2, 2))
        for letter, kind in (("h", ROW_KNOT), ("v", COLUMN_KNOT)):
            dialog = self.open(letter)
            # The first knot has the keyboard at first; the button of its vector comes before it.
            dialog.wait_focused(name_of(kind, 0, 0))
            self.program.keys("shift+Tab")
            expected = [view_of(0)] + [name_of(kind, 0, n) for n in range(4)]
            expected += [view_of(1)] + [name_of(kind, 1, n) for n in range(4)]
            for name in expected + ["OK", "Cancel", "Apply"]:
                dialog.wait_focused(name)
                self.program.keys("Tab")
            dialog.wait_focused(view_of(0))
            dialog.end("Cancel")

    def test_tab_goes_along_each_row_of_weights(self):
        self.start_with(net(3, 2))
        dialog = self.open("w")
        expected = [name_of(WEIGHT, row, element) for row in range(2) for element in range(3)]
        for name in expected + ["OK", "Cancel", "Apply", expected[0]]:
            dialog.wait_focused(name)
            self.program.keys("Tab")
        dialog.end("Cancel")

    def test_the_first_row_shows_when_there_are_many(self):
        self.start_with(net(4, 40))
        for letter, kind, low, high in (("w", WEIGHT, (0, 0), (39, 0)), ("h", ROW_KNOT, (0, 0), (39, 0)),
                                        ("v", COLUMN_KNOT, (0, 0), (0, 41))):
            dialog = self.open(letter)
            wait_for(lambda: dialog.cells[name_of(kind, *low)].has_state(SHOWING), f"{kind}: the first row does not show")
            _, top, _, height = dialog.rectangle(name_of(kind, *low))
            self.assertLessEqual(top + height, dialog.node.find("push button", "OK").rectangle[1])
            self.assertNotIn(name_of(kind, *high), dialog.cells)
            dialog.end("Cancel")

    def test_rows_without_knots_have_their_view_buttons(self):
        self.start_with("begin nurbs_surface,0,0,3,2\r\nresolution 5,5\r\nend\r\n")
        dialog = self.open("h")
        self.assertEqual((dialog.cells, len(self.views(dialog))), ({}, 3))
        dialog.end("Cancel")

    def test_a_surface_without_points_has_empty_tables(self):
        self.start_with("begin nurbs_surface,0,2,0,2\r\nresolution 5,5\r\nend\r\n")
        for letter in "whv":
            dialog = self.open(letter)
            self.assertEqual((dialog.cells, self.views(dialog)), ({}, []))
            dialog.apply()
            dialog.end("OK")
        do.leave(self.program)
        self.assertEqual(self.program.wait_exit(), 0)
        self.assertNotIn("CRITICAL", self.program.stderr)


class Writing(Knots):
    def test_ok_and_apply_write(self):
        self.start_with(net(3, 2))
        before = self.view.picture("perspective")
        dialog = self.open("w")
        dialog.enter(name_of(WEIGHT, 1, 2), "20")
        dialog.apply()
        self.assertTrue(self.program.window(WEIGHTS))
        dialog.enter(name_of(WEIGHT, 0, 1), "0.5")
        dialog.end("OK")
        self.rest_pointer(self.program)
        self.assert_saved_with("weight", {5: 20, 1: 0.5})
        # Colours lie elsewhere on the surface now.
        wait_for(lambda: self.view.picture("perspective") != before, "the view shows no change")
        self.untouched = self.saved()

        dialog = self.open("h")
        dialog.enter(name_of(ROW_KNOT, 1, 2), "0.25")
        dialog.end("OK")
        self.assert_saved_with("knot1", {7: 0.25})
        self.untouched = self.saved()

        dialog = self.open("v")
        dialog.enter(name_of(COLUMN_KNOT, 2, 1), "-0.5")
        dialog.end("OK")
        self.assert_saved_with("knot2", {9: -0.5})
        self.end()

    def test_it_is_no_step_of_undo(self):
        self.start_with(net(3, 2))
        points = TableDialog(self.program, "p", "制御点")
        points.enter("制御点 0,0 x", "-2")
        points.end("OK")
        dialog = self.open("w")
        dialog.enter(name_of(WEIGHT, 0, 0), "7")
        dialog.end("OK")
        self.program.keys("ctrl+z")
        self.assert_saved_with("weight", {0: 7})

    def test_cancel_leaves_the_model(self):
        self.start_with(net(3, 2))
        for letter, name in (("w", name_of(WEIGHT, 0, 0)), ("h", name_of(ROW_KNOT, 0, 2)),
                             ("v", name_of(COLUMN_KNOT, 0, 1))):
            dialog = self.open(letter)
            before = dialog.value(name)
            dialog.enter(name, "3")
            dialog.end("Cancel")
            dialog = self.open(letter)
            self.assertEqual(dialog.value(name), before)
            dialog.end("OK")
        self.assertEqual(self.saved(), self.untouched)

    def test_values_beyond_the_range_are_written_back_clamped(self):
        self.start_with(net(3, 2, knot1=[-1000, 0, 0.5, 1, 250]))
        dialog = self.open("h")
        self.assertEqual([dialog.value(name_of(ROW_KNOT, 0, n)) for n in range(5)], [-100, 0, 0.5, 1, 100])
        dialog.end("Cancel")
        self.assertEqual(self.saved(), self.untouched)
        dialog = self.open("h")
        dialog.apply()
        dialog.end("Cancel")
        self.assert_saved_with("knot1", {0: -100, 4: 100, 5: -100, 9: 100})

    def test_numbers_too_small_to_show_are_written_when_they_are_touched(self):
        self.start_with(net(3, 2).replace("weight 1.125", "weight 1e-08"))
        name = name_of(WEIGHT, 0, 1)
        dialog = self.open("w")
        self.assertEqual(dialog.text(name), "0.0000000")
        # The keyboard goes through the cell and leaves it alone.
        dialog.focus(name)
        self.program.keys("Tab")
        dialog.end("OK")
        self.assertEqual(self.saved(), self.untouched)

        dialog = self.open("w")
        dialog.enter(name, "0")
        dialog.end("OK")
        self.assert_saved_with("weight", {1: 0})

    def test_a_number_that_is_typed_again_is_the_one_that_was_typed_last(self):
        self.start_with(net(3, 2).replace("weight 1.125", "weight 1e-08"))
        name = name_of(WEIGHT, 0, 1)
        dialog = self.open("w")
        for text in ("0.1", "0"):
            dialog.enter(name, text)
            dialog.apply()
        dialog.end("OK")
        self.assert_saved_with("weight", {1: 0})

    def test_a_number_that_is_being_typed_is_applied(self):
        self.start_with(net(3, 2))
        dialog = self.open("w")
        dialog.fill(name_of(WEIGHT, 1, 1), "1.75")
        self.program.keys("alt+o")
        self.program.wait_gone(WEIGHTS)
        self.assert_saved_with("weight", {4: 1.75})


if __name__ == "__main__":
    main()
