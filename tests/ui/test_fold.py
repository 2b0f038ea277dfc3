"""Folding: polygons are marked and the axis is picked with the mouse, the angle is set and the button pressed."""

import math

from harness import PROGRAM_NAME, UiTestCase, main, wait_for
from harness import commands as do
from harness.models import BLUE, FIT_ROOM, GREEN, MAGENTA, QUAD_REACH, RED, quad

SELECTION, CLIPPING, FOLDING = "制御点選択", "折曲ポリゴン選択", "折目頂点選択1,0"
FOLD_ANGLE, FOLD_BUTTON = "折曲角度", "折曲実行"
ERROR_TITLE = "折り畳みエラー"
ERROR_TEXT = "折り畳みに失敗しました.\n折目頂点を選択していないものと思われます."


def numbers(content, key):
    """The values of all lines of a key in a saved scene."""
    lines = content.decode("ascii").split("\r\n")
    return [tuple(float(value) for value in line.split(" ", 1)[1].split(",")) for line in lines
            if line.startswith(key + " ")]


class FoldCase(UiTestCase):
    def choose(self, mode):
        self.program.press_control("radio button", mode)

    def set_angle(self, degrees):
        """Of 15 degrees and their multiples: the pages of the number."""
        self.program.spin(FOLD_ANGLE, degrees // 15, button=2)
        wait_for(lambda: self.program.control("spin button", FOLD_ANGLE).text == str(degrees),
                 f"the angle is not {degrees}")

    def fold(self):
        before = self.view.picture("perspective")
        self.program.press_control("push button", FOLD_BUTTON)
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.picture("perspective") != before, "the picture has not changed")
        self.assertIsNone(self.program.window(ERROR_TITLE))

    def marked(self):
        """The polygons that the program has told as newly marked."""
        return [line for line in self.program.stdout.splitlines() if line.startswith("select polygon ")]

    def wait_marked(self, count):
        wait_for(lambda: len(self.marked()) == count,
                 lambda: f"{count} marked polygons expected: {self.marked()}")

    def saved(self):
        """The bytes of the scene as it is now."""
        path = self.program.folder / "folded.ulk"
        do.give_save_as(self.program, path)
        self.program.wait_title(f"folded.ulk - {PROGRAM_NAME}")
        return path.read_bytes()

    def assert_positions(self, content, expected):
        found = numbers(content, "position")
        self.assertEqual(len(found), len(expected))
        for number, (is_at, should_be) in enumerate(zip(found, expected)):
            for a, b in zip(is_at, should_be):
                self.assertAlmostEqual(a, b, delta=1e-5, msg=f"vertex {number}: {is_at}, expected {should_be}")


class Sheet(FoldCase):
    """Two triangles, red below the axis from green to blue, magenta above it."""

    def start_with_axis(self):
        self.program = self.start()
        self.open_model(self.program, quad())
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")
        self.choose(FOLDING)
        for colour, button in ((GREEN, 3), (BLUE, 1)):
            self.rest_pointer(self.program)
            self.program.click(*self.view.place("front", colour), button)

    def mark_upper_triangle(self):
        self.choose(CLIPPING)
        self.program.click(*self.view.at("perspective", 60, 60))
        self.wait_marked(1)

    def test_the_marked_triangle_turns_and_is_saved(self):
        self.start_with_axis()
        self.mark_upper_triangle()
        self.set_angle(60)
        before = {colour: self.view.dot("front", colour) for colour in (RED, GREEN, BLUE, MAGENTA)}
        self.fold()

        # The axis points to the upper left; what lies above it turns to the back. Half of the way to the axis is left.
        def places():
            return {colour: self.view.dot("front", colour) for colour in before}
        wait_for(lambda: places()[MAGENTA] and abs(places()[MAGENTA].x - before[MAGENTA].x / 2) < 1.01
                 and abs(places()[MAGENTA].y - before[MAGENTA].y / 2) < 1.01,
                 lambda: f"from {before} to {places()}")
        self.assertEqual({colour: dot for colour, dot in places().items() if colour != MAGENTA},
                         {colour: dot for colour, dot in before.items() if colour != MAGENTA})
        # The side view shows how far: to the right is the back, and the flat scene was fitted as one unit deep.
        _, _, _, height = self.view.rectangle("side")
        r, way = QUAD_REACH, QUAD_REACH * math.sqrt(2) * math.sin(math.radians(60))
        self.assertAlmostEqual(self.view.dot("side", MAGENTA).x, way * height / 2, delta=1.01)

        content = self.saved()
        self.assertTrue(content.startswith(b"begin polygon_surface,6,7\r\n"), content[:40])
        self.assertEqual(numbers(content, "element"), [(0,), (1,), (2,), (-1,), (5,), (4,), (3,)])
        self.assert_positions(content, [(-r, -r, 0), (r, -r, 0), (-r, r, 0), (r / 2, r / 2, -way), (r, -r, 0),
                                        (-r, r, 0)])
        do.leave(self.program)
        self.assert_ends_clean(self.program)

    def test_moves_before_it_can_not_be_taken_back(self):
        self.start_with_axis()
        self.mark_upper_triangle()
        self.choose(SELECTION)
        start = self.view.dot("front", RED)
        x, y = self.view.place("front", RED)
        self.program.click(x, y)
        self.program.drag((x, y), (x + 30, y - 10), 1, "shift")
        self.wait_red(start.x + 30, start.y + 10)
        self.set_angle(-15)
        self.fold()
        self.wait_red(start.x + 30, start.y + 10)
        self.program.keys("ctrl+z")
        # What is seen after a later gesture is seen after the key.
        self.program.drag(self.view.centre("front"), self.view.at("front", 20, 0), 1, "alt")
        self.wait_red(start.x + 50, start.y + 10)

    def wait_red(self, x, y):
        self.rest_pointer(self.program)
        wait_for(lambda: math.dist(self.view.dot("front", RED)[1:], (x, y)) < 1.5,
                 lambda: f"expected the point at {x}, {y}, found {self.view.dot('front', RED)}")

    def test_without_marked_polygons_it_is_told(self):
        self.start_with_axis()
        self.set_angle(30)
        corner = self.view.dot("front", MAGENTA)
        self.program.press_control("push button", FOLD_BUTTON)
        self.assertEqual(self.program.message(ERROR_TITLE), ("Error", ERROR_TEXT, ["OK"]))
        self.program.keys("Return")
        self.program.wait_gone(ERROR_TITLE)
        self.program.wait_main_active()
        # It works with marks, and is told again when they and the axis are there but the axis is a point.
        self.mark_upper_triangle()
        self.assertEqual(self.view.dot("front", MAGENTA), corner)
        self.fold()
        self.choose(FOLDING)
        self.program.click(*self.view.place("front", GREEN))
        self.program.press_control("push button", FOLD_BUTTON)
        self.assertEqual(self.program.message(ERROR_TITLE), ("Error", ERROR_TEXT, ["OK"]))


class Net(FoldCase):
    TOP_SQUARE = (28, 150, 150)
    SQUARE_BELOW = (126, 70, 150)

    def test_a_square_of_the_net_is_folded_up(self):
        """The sample scene: the uppermost of its squares of 0.3 turns about its lower edge towards the viewer."""
        self.program = self.start()
        do.open_scene(self.program, self.sample(self.program, "net.ulk"), f"net.ulk - {PROGRAM_NAME}")
        middle = wait_for(lambda: self.view.dot("perspective", self.TOP_SQUARE), "the points do not show")
        square = middle.y - self.view.dot("perspective", self.SQUARE_BELOW).y

        # Both triangles of its four quads, which are parted from the lower left to the upper right.
        self.choose(CLIPPING)
        for right, up in ((-0.25, -0.25), (-0.25, 0.25), (0.25, -0.25), (0.25, 0.25)):
            for way in (-1 / 12, 1 / 12):
                self.program.click(*self.view.at("perspective", (right + way) * square,
                                                 middle.y + (up - way) * square))
        self.wait_marked(8)

        self.choose(FOLDING)
        _, _, _, height = self.view.rectangle("front")
        up = 0.3 / (1.2 * FIT_ROOM) * height / 2
        aside = 0.15 / (0.9 * FIT_ROOM) * height / 2
        self.program.click(*self.view.at("front", -aside, up), 3)
        self.program.click(*self.view.at("front", aside, up), 1)
        self.set_angle(90)
        self.fold()
        # From the front its points stand on the edge that stays; nothing of the scene is higher.
        wait_for(lambda: self.view.dot("front", self.TOP_SQUARE) is None
                 or abs(self.view.dot("front", self.TOP_SQUARE).y - up) < 2, "the square is not upright")

        flat = numbers((self.program.folder / "net.ulk").read_bytes(), "position")
        content = self.saved()
        self.assertTrue(content.startswith(b"begin polygon_surface,42,"), content[:40])
        copies = [(x, y, z) for x, y, z in flat if abs(y - 0.3) < 1e-6 and abs(x) < 0.16]
        self.assertEqual(len(copies), 3)
        self.assert_positions(content, [(x, min(y, 0.3), max(0, y - 0.3)) for x, y, z in flat] + copies)


if __name__ == "__main__":
    main()
