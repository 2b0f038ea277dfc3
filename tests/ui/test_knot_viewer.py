"""The plots of basis functions, compared with the functions' own values."""

import math
import time

from harness import BACKGROUND, Screen, main, wait_for
from harness.models import net
from harness.net_case import NetTestCase
from harness.table_dialog import TableDialog

# The letters of the tables in the Dialog menu, and their titles.
ROW_KNOTS, COLUMN_KNOTS = ("h", "横ノット列一覧"), ("v", "縦ノット列一覧")
CURVE = (127, 128)


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


class Viewer(NetTestCase):
    CUBIC = [0, 0, 0, 0, 0.25, 0.5, 0.5, 1, 1, 1, 1]

    def open(self, table):
        return TableDialog(self.program, *table)

    def open_view(self, dialog, row, with_keys=True):
        name = f"ノット列 {row} の基底関数"
        if with_keys:
            dialog.tab_to(name, "shift+Tab")
            self.program.keys("space")
        else:
            dialog.click(name)
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

    def test_what_it_is(self):
        self.start_with(net(7, 3, 4, 2, knot1=self.CUBIC))
        dialog = self.open(ROW_KNOTS)
        viewer, plot = self.open_view(dialog, 2, with_keys=False)
        self.assertEqual([node.name for node in viewer.find_all("push button")], ["OK"])
        self.assertEqual(plot.rectangle[2:], (400, 400))
        self.assert_plots(plot, 7, 4, self.CUBIC)
        x, y, width, height = viewer.find("push button", "OK").rectangle
        self.program.click(x + width // 2, y + height // 2)
        self.program.wait_gone("2")
        dialog.end("OK")
        self.assertEqual(self.saved(), self.untouched)
        self.end()

    def test_it_plots_what_stands_in_the_dialog(self):
        self.start_with(net(4, 3, 3, 2))
        knots = [0, 0, 0, 0.5, 1, 1, 1]
        dialog = self.open(ROW_KNOTS)
        dialog.enter("横ノット 3,1", "0.25")
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
        dialog = self.open(ROW_KNOTS)
        self.assertEqual(dialog.value("横ノット 3,1"), 0.5)
        dialog.end("Cancel")

    def test_it_follows_its_size(self):
        self.start_with(net(4, 3, 3, 2))
        dialog = self.open(ROW_KNOTS)
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
        dialog = self.open(COLUMN_KNOTS)
        _, plot = self.open_view(dialog, 1)
        self.assert_plots(plot, 5, 4, [-0.5, -0.25, 0, 0, 0.5, 1, 1.25, 1.5, 2])
        self.close_view(1)
        dialog.end("Cancel")

    def test_orders_above_the_counts(self):
        self.start_with(net(2, 1, 5, 3, knot1=[0, 0, 0.25, 0.5, 0.5, 1, 1], knot2=[0, 0.5, 0.75, 1]))
        dialog = self.open(ROW_KNOTS)
        _, plot = self.open_view(dialog, 0)
        self.assert_plots(plot, 2, 5, [0, 0, 0.25, 0.5, 0.5, 1, 1])
        self.close_view(0)
        dialog.end("Cancel")
        dialog = self.open(COLUMN_KNOTS)
        _, plot = self.open_view(dialog, 1)
        self.assert_plots(plot, 1, 3, [0, 0.5, 0.75, 1])
        self.close_view(1)
        dialog.end("Cancel")

    def test_the_view_goes_on_after_it(self):
        """The plot has a GL context of its own: the models keep their objects when it goes."""
        self.start_with(net(3, 2))
        self.rest_pointer(self.program)
        # What the chooser covered, with which the surface was saved, is painted by then.
        time.sleep(1)
        before = self.view.picture("perspective")
        dialog = self.open(ROW_KNOTS)
        for _ in range(3):
            self.open_view(dialog, 0)
            self.close_view(0)
        dialog.enter("横ノット 2,0", "0.5")
        dialog.end("OK")
        self.rest_pointer(self.program)
        self.program.press_control("toggle button", "方眼表示")
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.grid_pixels("front") == 0, "the grid still shows")
        wait_for(lambda: self.view.picture("perspective") == before, "the surface has changed")
        self.end()


if __name__ == "__main__":
    main()
