"""Marking points and polygons, moving and denting, undo and redo: gestures and what the picture then shows."""

from harness import Screen, UiTestCase, main, wait_for
from harness.models import BLUE, FIT_ROOM, GREEN, MAGENTA, QUAD_REACH, RED, patch, quad

COLOURS = (RED, GREEN, BLUE, MAGENTA)
# Pixels of a point.
UNMARKED, MARKED = 9, 25

SELECTION, PUNISH, CLIPPING, FOLDING = "制御点選択", "ぷにぷに", "折曲ポリゴン選択", "折目頂点選択1,0"


class Marking(UiTestCase):
    def start_with(self, model):
        self.program = self.start()
        self.open_model(self.program, model)
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")

    def click_at(self, viewport, colour, button=1, right=0, up=0):
        """Clicks at a point, or so many pixels away from it."""
        self.rest_pointer(self.program)
        x, y = self.view.place(viewport, colour)
        self.program.click(x + right, y - up, button)

    def wait_marks(self, *marked):
        """Waits until these points and no others are large, in the front view and in the perspective one."""
        wanted = {(viewport, colour): MARKED if colour in marked else UNMARKED
                  for viewport in ("front", "perspective") for colour in COLOURS}

        def sizes():
            self.rest_pointer(self.program)
            dots = {key: self.view.dot(*key) for key in wanted}
            return {key: dot and dot.size for key, dot in dots.items()}
        wait_for(lambda: sizes() == wanted, lambda: f"expected {wanted}, found {sizes()}")

    def places(self, viewport="front"):
        self.rest_pointer(self.program)
        return {colour: self.view.dot(viewport, colour) for colour in COLOURS}

    def wait_moved(self, before, ways, viewport="front"):
        """Waits until points stand as far from `before` as `ways` tells by colour, the others where they were."""
        def far():
            now = self.places(viewport)
            bad = {}
            for colour, dot in before.items():
                right, up = ways.get(colour, (0, 0))
                if now[colour] is None or abs(now[colour].x - dot.x - right) > 1.01 or \
                        abs(now[colour].y - dot.y - up) > 1.01:
                    bad[colour] = dot, (right, up), now[colour]
            return bad
        wait_for(lambda: not far(), lambda: f"before, expected way and now: {far()}")

    def drag_from(self, viewport, colour, right, up, modifier="shift", button=1):
        self.rest_pointer(self.program)
        x, y = self.view.place(viewport, colour)
        self.program.drag((x, y), (x + right, y - up), button, modifier)


class Points(Marking):
    def test_marking_and_unmarking(self):
        self.start_with(quad())
        self.wait_marks()
        self.click_at("front", RED)
        self.wait_marks(RED)
        # The left button reaches a pixel further than the pointer, the right one two.
        self.click_at("front", GREEN, right=3)
        self.click_at("front", BLUE, right=1, up=1)
        self.wait_marks(RED, BLUE)
        self.click_at("front", RED, button=3, right=4)
        self.click_at("front", BLUE, button=3, right=2, up=2)
        self.wait_marks(RED)
        # Points are marked in the perspective view as well.
        self.click_at("perspective", MAGENTA)
        self.wait_marks(RED, MAGENTA)
        # The middle button and the left one with Ctrl mark nothing.
        self.click_at("front", GREEN, button=2)
        place = self.view.place("front", BLUE)
        self.program.click(*place, modifier="ctrl")
        self.program.double_click(*self.view.centre("side"), button=3)
        self.wait_marks()

        # Dragging paints, from above through whatever lies behind each other.
        start, end = self.view.place("front", RED), self.view.place("front", GREEN)
        self.program.drag(start, end)
        self.wait_marks(RED, GREEN)
        self.program.drag(start, end, button=3)
        self.wait_marks()
        self.click_at("top", MAGENTA)
        self.wait_marks(GREEN, MAGENTA)

    def test_moving_and_taking_back(self):
        self.start_with(quad(-0.4))
        start, side = self.places(), self.places("side")
        self.click_at("front", RED)
        self.click_at("front", BLUE)
        self.wait_marks(RED, BLUE)
        self.drag_from("front", RED, 40, 24)
        self.wait_moved(start, {RED: (40, 24), BLUE: (40, 24)})
        self.click_at("front", BLUE, button=3)
        self.wait_marks(RED)
        first = self.places()
        self.drag_from("front", RED, -20, 10)
        self.wait_moved(first, {RED: (-20, 10)})
        second = self.places()

        self.program.keys("ctrl+z")
        self.wait_moved(first, {})
        self.program.keys("ctrl+z")
        self.wait_moved(start, {})
        # There is no more to take back; Shift makes other keys of these.
        self.program.keys("ctrl+z")
        self.program.keys("ctrl+y")
        self.wait_moved(first, {})
        self.program.keys("ctrl+shift+y")
        self.program.keys("ctrl+y")
        self.wait_moved(second, {})
        self.program.keys("ctrl+z", "ctrl+z")
        self.wait_moved(start, {})
        # Nothing of this has moved anything back or forth.
        self.assertEqual(self.places("side")[MAGENTA], side[MAGENTA])
        self.assertEqual(self.places("side")[RED][1:], side[GREEN][1:])

        # A drag without way leaves nothing to take back.
        x, y = self.view.place("front", RED)
        self.program.drag((x, y), (x, y), 1, "shift")
        self.program.keys("ctrl+y")
        self.wait_moved(first, {})

    def test_moving_in_the_perspective_view(self):
        self.start_with(quad())
        self.click_at("perspective", RED)
        self.wait_marks(RED)
        before = self.places("perspective")
        self.drag_from("perspective", RED, 30, -20)
        self.wait_moved(before, {RED: (30, -20)}, "perspective")

    def test_the_wheel_with_shift_moves_along_z(self):
        self.start_with(quad(-0.4))
        self.click_at("front", MAGENTA)
        self.click_at("front", GREEN)
        self.wait_marks(GREEN, MAGENTA)
        before = self.places("top")
        _, _, _, height = self.view.rectangle("top")
        # The whole depth of the fitted box is QUAD_REACH here.
        notch = 0.5 * height / 2 / (QUAD_REACH * FIT_ROOM)
        self.program.click(*self.view.centre("front"), button=5, modifier="shift")
        # A notch down goes half a unit towards the front, which is down from above.
        wait_for(lambda: self.places("top")[MAGENTA] is not None
                 and abs(self.places("top")[MAGENTA].y - (before[MAGENTA].y - notch)) < 1.01,
                 lambda: f"a notch of {notch} pixels from {before} gave {self.places('top')}")

    def test_the_toolbars_step_snaps(self):
        self.start_with(quad())
        self.click_at("front", MAGENTA)
        self.wait_marks(MAGENTA)
        start = self.places()
        # The step shows as 0.10, but does not snap before it is changed.
        self.drag_from("front", MAGENTA, 7, 5)
        self.wait_moved(start, {MAGENTA: (7, 5)})
        self.program.keys("ctrl+z")
        self.wait_moved(start, {})

        self.program.spin("方眼間隔", 1)
        wait_for(lambda: self.program.control("spin button", "方眼間隔").text == "0.15", "the step is not 0.15")
        _, _, _, height = self.view.rectangle("front")
        step = 0.15 / (2 * QUAD_REACH * FIT_ROOM) * height / 2
        self.drag_from("front", MAGENTA, 40, 40)
        self.wait_moved(start, {MAGENTA: (step, step)})

    def test_setting_the_step_to_what_it_shows_does_not_snap(self):
        self.start_with(quad())
        self.click_at("front", MAGENTA)
        self.wait_marks(MAGENTA)
        start = self.places()
        spin = self.program.control("spin button", "方眼間隔")
        spin.put_value(0.1)
        self.drag_from("front", MAGENTA, 7, 5)
        self.wait_moved(start, {MAGENTA: (7, 5)})
        self.program.keys("ctrl+z")
        self.wait_moved(start, {})

        # Another number, put there in the same way, is a change.
        spin.put_value(0.15)
        wait_for(lambda: spin.text == "0.15", "the step is not 0.15")
        _, _, _, height = self.view.rectangle("front")
        step = 0.15 / (2 * QUAD_REACH * FIT_ROOM) * height / 2
        self.drag_from("front", MAGENTA, 40, 40)
        self.wait_moved(start, {MAGENTA: (step, step)})


class Dent(Marking):
    def test_a_surface_gives_way(self):
        self.start_with(patch())
        self.program.press_control("radio button", PUNISH)
        self.click_at("front", BLUE)
        self.wait_marks(BLUE)
        before = self.places()
        picture = self.view.picture("perspective")
        # The way counts from the pick to the release, and only the release matters.
        place = self.view.place("front", BLUE)
        self.program.drag((place[0] + 90, place[1] - 5), (place[0] + 30, place[1] - 20), 1, "shift")
        wait_for(lambda: self.view.picture("perspective") != picture, "the surface has not changed")
        now = self.places()
        self.assertAlmostEqual(now[BLUE].x - before[BLUE].x, 30, delta=1.01)
        self.assertAlmostEqual(now[BLUE].y - before[BLUE].y, 20, delta=1.01)
        # The others give way to the other side.
        self.assertTrue(all(now[colour].x <= before[colour].x for colour in (RED, GREEN, MAGENTA)), (before, now))
        # A dent is no step that could be taken back.
        self.program.keys("ctrl+z")
        self.click_at("front", BLUE, button=3)
        self.wait_marks()
        self.wait_moved(now, {})

    def test_a_polygon_model_stays(self):
        self.start_with(quad())
        self.program.press_control("radio button", PUNISH)
        self.click_at("front", BLUE)
        self.wait_marks(BLUE)
        before = self.places()
        self.drag_from("front", BLUE, 30, 20)
        self.click_at("front", RED)
        self.wait_marks(RED, BLUE)
        self.wait_moved(before, {})


REPORT = """\
select polygon model_id: 0, polygon_id: 0
element id: 0, 1, 2
vertex id: 0, 1, 2
vertex value: 
"""
CORNERS_IN_HEXADECIMAL = """\
vertex value(hex): 
pos3( becccccd, becccccd, 0)
pos3( 3ecccccd, becccccd, 0)
pos3( becccccd, 3ecccccd, 0)
"""


class Polygons(Marking):
    def colour_at(self, place):
        self.rest_pointer(self.program)
        left, top, width, height = place[0] - 1, place[1] - 1, 3, 3
        colours = list(Screen().colours(left, top, width, height))
        return tuple(sum(colour[i] for colour in colours) / len(colours) for i in range(3))

    def test_marking_polygons(self):
        self.start_with(quad())
        self.program.press_control("radio button", CLIPPING)
        # Near corners, away from the highlight in the middle, which shows on marked polygons too.
        lower, upper = self.view.at("perspective", -78, -78), self.view.at("perspective", 78, 78)
        plain = self.colour_at(lower), self.colour_at(upper)

        # In the other views there are no polygons to mark.
        self.program.click(*self.view.at("front", -50, -50))
        self.program.click(*lower)
        # The grey of the background comes through and adds to the colour.
        wait_for(lambda: self.colour_at(lower)[1] > plain[0][1] + 20,
                 lambda: f"the polygon is not translucent: {plain[0]}, {self.colour_at(lower)}")
        self.assertEqual(self.colour_at(upper), plain[1])
        report = self.program.stdout
        self.assertTrue(report.startswith(REPORT), report)
        self.assertTrue(report.endswith(CORNERS_IN_HEXADECIMAL), report)
        self.assertEqual(len(report.splitlines()), 11)

        # Dragging paints; what is marked already is not reported again.
        self.program.drag(lower, upper)
        wait_for(lambda: self.colour_at(upper)[1] > plain[1][1] + 20, "the second polygon is not translucent")
        self.assertEqual(self.program.stdout.count("select polygon"), 2)
        self.assertEqual(self.program.stdout.count("select polygon model_id: 0, polygon_id: 1\n"), 1)

        self.program.click(*upper, button=3)
        wait_for(lambda: self.colour_at(upper) == plain[1], "the second polygon is still marked")
        self.assertNotEqual(self.colour_at(lower), plain[0])
        self.program.click(*upper)
        wait_for(lambda: self.colour_at(upper) != plain[1], "the second polygon is not marked again")
        self.program.double_click(*self.view.centre("front"), button=3)
        wait_for(lambda: (self.colour_at(lower), self.colour_at(upper)) == plain, "the marks were not cleared")
        # Points were not marked by any of this.
        self.wait_marks()


class FoldVertices(Marking):
    def test_the_line_between_two_vertices(self):
        # One triangle only: the line from the green to the magenta corner lies on the background.
        self.start_with(quad(elements=(0, 1, 2, -1)))
        self.program.press_control("radio button", FOLDING)
        self.click_at("front", GREEN)
        self.assertFalse(self.line_shows())
        self.click_at("front", MAGENTA, button=3)
        wait_for(self.line_shows, "no line shows")

        # It goes with the points of the perspective view.
        self.program.press_control("toggle button", "制御点表示")
        wait_for(lambda: not self.line_shows(), "the line still shows")
        self.program.press_control("toggle button", "制御点表示")
        wait_for(self.line_shows, "the line does not come back")

        self.program.double_click(*self.view.centre("front"), button=3)
        wait_for(lambda: not self.line_shows(), "the line was not cleared")
        self.wait_marks()

    def line_shows(self):
        self.rest_pointer(self.program)
        x, y = self.view.at("perspective", self.corner.x, 0)
        return max(min(colour) for colour in Screen().colours(x - 3, y - 1, 7, 3)) > 100

    def start_with(self, model):
        super().start_with(model)
        self.corner = self.view.dot("perspective", GREEN)


class Keys(Marking):
    def test_i_prints_the_models(self):
        self.start_with(quad())
        self.program.keys("i")
        wait_for(lambda: "e[3]" in self.program.stdout, lambda: f"no dump: {self.program.stdout!r}")
        lines = self.program.stdout.splitlines()
        self.assertEqual(lines[:2], ["vertices: 4", "elements: 4"])
        self.assertEqual([line.split()[0] for line in lines[2:]], ["e[0]:0", "e[1]:1", "e[2]:2", "e[3]:3"])


if __name__ == "__main__":
    main()
