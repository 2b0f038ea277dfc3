"""The tables of weights and knots, and the plots of basis functions."""

import math

from harness import BACKGROUND, PROGRAM_NAME, Screen, UiTestCase, main, wait_for
from harness import commands as do
from harness.accessibility import SHOWING
from harness.models import net, read_net
from harness.table_dialog import TableDialog

WEIGHTS, ROW_KNOTS, COLUMN_KNOTS = "重み付け一覧", "横ノット列一覧", "縦ノット列一覧"
WEIGHT, ROW_KNOT, COLUMN_KNOT = "重み", "横ノット", "縦ノット"
CURVE = (127, 128)


def name_of(kind, row, element):
    return f"{kind} {row},{element}"


def view_of(row):
    return f"ノット列 {row} の基底関数"


def basis(i, order, t, knots):
    """The basis function of the modeller: at a knot two of order 1 are 1, and nothing is divided by zero."""
    if order == 1:
        return float(knots[i] != knots[i + 1] and knots[i] <= t <= knots[i + 1])
    low = basis(i, order - 1, t, knots)
    if low and knots[i + order - 1] != knots[i]:
        low *= (t - knots[i]) / (knots[i + order - 1] - knots[i])
    high = basis(i + 1, order - 1, t, knots)
    if high and knots[i + order] != knots[i + 1]:
        high *= (knots[i + order] - t) / (knots[i + order] - knots[i + 1])
    return low + high


class Knots(UiTestCase):
    def start_with(self, text):
        self.program = self.start()
        self.open_model(self.program, text)
        self.saves = 0
        self.untouched = self.saved()

    def open(self, letter):
        return TableDialog(self.program, letter, {"w": WEIGHTS, "h": ROW_KNOTS, "v": COLUMN_KNOTS}[letter])

    def saved(self):
        self.saves += 1
        path = self.program.folder / f"saved{self.saves}.ulk"
        do.give_save_as(self.program, path)
        self.program.wait_title(f"{path.name} - {PROGRAM_NAME}")
        self.program.wait_main_active()
        return read_net(path)

    def assert_saved_with(self, key, changes):
        expected = {**self.untouched, key: list(self.untouched[key])}
        for index, value in changes.items():
            expected[key][index] = value
        self.assertEqual(self.saved(), expected)

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

    # ---- the viewer

    def open_view(self, dialog, row):
        dialog.tab_to(view_of(row), "shift+Tab")
        self.program.keys("space")
        self.program.wait_window(str(row))
        self.rest_pointer(self.program)
        viewer = self.program.dialog(str(row))
        return viewer, next(node for node, _ in viewer.walk() if node.name == "基底関数")

    def close_view(self, row):
        self.program.keys("Escape")
        self.program.wait_gone(str(row))

    def assert_plots(self, plot, count, order, knots):
        """The picture is that of the basis functions, to a pixel."""
        wait_for(lambda: not self.plot_errors(plot, count, order, knots),
                 lambda: self.plot_errors(plot, count, order, knots)[:10], seconds=8)

    def plot_errors(self, plot, count, order, knots):
        left, top, width, height = plot.rectangle
        screen, errors = Screen(), []
        heights = [[(basis(i, order, x / width, knots) + 1) * height / 2 for x in range(width)] for i in range(count)]
        for x in range(width - 1):
            spans = [sorted(line[x:x + 2]) for line in heights]
            drawn = set()
            for y in range(height):
                pixel = screen.pixel(left + x, top + height - 1 - y)
                # The button below the plot casts a shadow of a shade.
                if max(abs(channel - grey) for channel, grey in zip(pixel, BACKGROUND)) > 2:
                    drawn.add(y)
                    if pixel[0] not in CURVE or len(set(pixel)) != 1:
                        errors.append(f"{pixel} at {x}, {y}")
            for low, high in spans:
                wanted = range(max(math.floor(low) - 1, 0), min(math.floor(high) + 2, height))
                if len(wanted) and low < height and drawn.isdisjoint(wanted):
                    errors.append(f"nothing at {x} from {low} to {high}")
            stray = [y for y in drawn if not any(low - 1.01 <= y <= high + 1.01 for low, high in spans)]
            if stray:
                errors.append(f"{stray} at {x}")
        return errors


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
        do.leave(self.program)
        self.assert_ends_clean(self.program)

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

    def test_tab_follows_the_table(self):
        self.start_with(net(2, 2))
        dialog = self.open("h")
        # The first row, at the bottom, has the keyboard at first.
        dialog.wait_focused(name_of(ROW_KNOT, 0, 0))
        dialog.tab_to(view_of(1), "shift+Tab")
        expected = [view_of(1)] + [name_of(ROW_KNOT, 1, n) for n in range(4)]
        expected += [view_of(0)] + [name_of(ROW_KNOT, 0, n) for n in range(4)]
        for name in expected:
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
            self.assertFalse(dialog.cells[name_of(kind, *high)].has_state(SHOWING))
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
        do.leave(self.program)
        self.assert_ends_clean(self.program)

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

    def test_a_number_that_is_being_typed_is_applied(self):
        self.start_with(net(3, 2))
        dialog = self.open("w")
        dialog.type(name_of(WEIGHT, 1, 1), "1.75")
        self.program.keys("alt+o")
        self.program.wait_gone(WEIGHTS)
        self.assert_saved_with("weight", {4: 1.75})


class Viewer(Knots):
    CUBIC = [0, 0, 0, 0, 0.25, 0.5, 0.5, 1, 1, 1, 1]

    def test_what_it_is(self):
        self.start_with(net(7, 3, 4, 2, knot1=self.CUBIC))
        dialog = self.open("h")
        viewer, plot = self.open_view(dialog, 2)
        self.assertEqual([node.name for node in viewer.find_all("push button")], ["OK"])
        self.assertEqual(plot.rectangle[2:], (400, 400))
        self.assert_plots(plot, 7, 4, self.CUBIC)
        x, y, width, height = viewer.find("push button", "OK").rectangle
        self.program.click(x + width // 2, y + height // 2)
        self.program.wait_gone("2")
        dialog.end("OK")
        self.assertEqual(self.saved(), self.untouched)
        do.leave(self.program)
        self.assert_ends_clean(self.program)

    def test_it_plots_what_stands_in_the_dialog(self):
        self.start_with(net(4, 3, 3, 2))
        knots = [0, 0, 0, 0.5, 1, 1, 1]
        dialog = self.open("h")
        dialog.enter(name_of(ROW_KNOT, 1, 3), "0.25")
        _, plot = self.open_view(dialog, 1)
        self.assert_plots(plot, 4, 3, knots[:3] + [0.25] + knots[4:])
        self.close_view(1)
        # The other rows are as they were.
        _, plot = self.open_view(dialog, 0)
        self.assert_plots(plot, 4, 3, knots)
        self.close_view(0)
        # Nothing of it came into the model.
        dialog.end("Cancel")
        self.assertEqual(self.saved(), self.untouched)
        dialog = self.open("h")
        self.assertEqual(dialog.value(name_of(ROW_KNOT, 1, 3)), 0.5)
        dialog.end("Cancel")

    def test_it_follows_its_size(self):
        self.start_with(net(4, 3, 3, 2))
        dialog = self.open("h")
        _, plot = self.open_view(dialog, 0)
        window = self.program.window("0")
        width, height = window.size
        self.program.resize(window, width + 150, height + 60)
        wait_for(lambda: plot.rectangle[2:] == (550, 460), lambda: f"the plot is {plot.rectangle}")
        self.assert_plots(plot, 4, 3, [0, 0, 0, 0.5, 1, 1, 1])
        self.close_view(0)
        dialog.end("Cancel")

    def test_knots_of_columns_have_their_own_order_and_count(self):
        self.start_with(net(2, 5, 2, 4, knot2=[-0.5, -0.25, 0, 0, 0.5, 1, 1.25, 1.5, 2]))
        dialog = self.open("v")
        _, plot = self.open_view(dialog, 1)
        self.assert_plots(plot, 5, 4, [-0.5, -0.25, 0, 0, 0.5, 1, 1.25, 1.5, 2])
        self.close_view(1)
        dialog.end("Cancel")

    def test_orders_above_the_counts(self):
        self.start_with(net(2, 1, 5, 3, knot1=[0, 0, 0.25, 0.5, 0.5, 1, 1], knot2=[0, 0.5, 0.75, 1]))
        dialog = self.open("h")
        _, plot = self.open_view(dialog, 0)
        self.assert_plots(plot, 2, 5, [0, 0, 0.25, 0.5, 0.5, 1, 1])
        self.close_view(0)
        dialog.end("Cancel")
        dialog = self.open("v")
        _, plot = self.open_view(dialog, 1)
        self.assert_plots(plot, 1, 3, [0, 0.5, 0.75, 1])
        self.close_view(1)
        dialog.end("Cancel")

    def test_the_view_goes_on_after_it(self):
        """The plot has a GL context of its own: the models keep their objects when it goes."""
        self.start_with(net(3, 2))
        before = self.view.picture("perspective")
        dialog = self.open("h")
        for _ in range(3):
            self.open_view(dialog, 0)
            self.close_view(0)
        dialog.enter(name_of(ROW_KNOT, 0, 2), "0.5")
        dialog.end("OK")
        self.rest_pointer(self.program)
        self.program.press_control("toggle button", "方眼表示")
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.grid_pixels("front") == 0, "the grid still shows")
        wait_for(lambda: self.view.picture("perspective") == before, "the surface has changed")
        do.leave(self.program)
        self.assert_ends_clean(self.program)


if __name__ == "__main__":
    main()
