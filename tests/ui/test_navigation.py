"""The camera by Alt and the mouse: what moves in the picture, and how far."""

import math

from harness import UiTestCase, main, wait_for
from harness.models import BLUE, FIT_ROOM, GREEN, MAGENTA, QUAD_REACH, RED, quad

ORTHOGRAPHIC = ("front", "side", "top")
COLOURS = (RED, GREEN, BLUE, MAGENTA)
BACK = -0.4
UNITS_PER_PIXEL = 0.0625
UNITS_PER_NOTCH = 0.25


class Navigation(UiTestCase):
    def dots(self, *viewports):
        return {(viewport, colour): self.view.dot(viewport, colour) for viewport in viewports for colour in COLOURS}

    def assert_dots(self, what, expected, tolerance=1.01):
        """Waits until the points stand at (x, y) of `expected`, a dictionary by viewport and colour."""
        def far():
            bad = {}
            for (viewport, colour), (x, y) in expected.items():
                dot = self.view.dot(viewport, colour)
                if dot is None or abs(dot.x - x) > tolerance or abs(dot.y - y) > tolerance:
                    bad[viewport, colour] = (x, y), dot
            return bad
        wait_for(lambda: not far(), lambda: f"{what}: expected and found: {far()}")

    def settle(self, viewport, picture):
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.picture(viewport) == picture, f"the {viewport} view did not come back")


class Perspective(Navigation):
    def setUp(self):
        self.program = self.start()
        self.open_model(self.program, quad())
        wait_for(lambda: self.view.dot("perspective", RED), "the points do not show")
        _, _, width, height = self.view.rectangle("perspective")
        # How many pixels a unit has at the distance 1: the field of view spans the diagonal.
        aspect = width / height
        self.pixels = height / 2 / (math.tan(math.pi / 4) / math.hypot(aspect, 1))
        # All corners of the quad are seen at the same distance, which the fit has chosen.
        self.distance = self.pixels * QUAD_REACH / self.view.dot("perspective", MAGENTA).x
        self.picture = self.view.picture("perspective")

    def corners(self, move):
        """Where the corners show after each point, the eye at the origin, went through `move`."""
        corners = {RED: (-1, -1), GREEN: (1, -1), BLUE: (-1, 1), MAGENTA: (1, 1)}
        expected = {}
        for colour, (right, up) in corners.items():
            x, y, z = move(QUAD_REACH * right, QUAD_REACH * up, 0)
            expected["perspective", colour] = self.pixels * x / -z, self.pixels * y / -z
        return expected

    def fit_again(self):
        self.program.keys("Return")
        self.settle("perspective", self.picture)

    def drag(self, way, button, start=(0, -150), steps=4):
        """Drags with Alt from an empty place, `way` to the right and up."""
        self.program.drag(self.view.at("perspective", *start),
                          self.view.at("perspective", start[0] + way[0], start[1] + way[1]), button, "alt", steps)

    def test_alt_turns_moves_and_rolls(self):
        ortho_pictures = [self.view.picture(viewport) for viewport in ORTHOGRAPHIC]
        distance = self.distance

        def turned_about_y(x, y, z, angle):
            return x * math.cos(angle) + z * math.sin(angle), y, -x * math.sin(angle) + z * math.cos(angle)

        self.drag((40, 0), button=3)
        self.assert_dots("a turn to the right by a degree for each pixel", self.corners(
            lambda x, y, z: (lambda p: (p[0], p[1], p[2] - distance))(turned_about_y(x, y, z, math.radians(40)))))
        self.fit_again()

        self.drag((0, 30), button=3)
        angle = math.radians(-30)
        self.assert_dots("a turn upward", self.corners(
            lambda x, y, z: (x, y * math.cos(angle) - z * math.sin(angle),
                             y * math.sin(angle) + z * math.cos(angle) - distance)))
        self.fit_again()

        self.drag((24, 0), button=2)
        angle = math.radians(24)
        self.assert_dots("a roll by a degree for each pixel", self.corners(
            lambda x, y, z: (x * math.cos(angle) - y * math.sin(angle), x * math.sin(angle) + y * math.cos(angle),
                             z - distance)))
        self.fit_again()

        self.drag((0, -8), button=2)
        self.assert_dots("a step back", self.corners(
            lambda x, y, z: (x, y, z - distance - 8 * UNITS_PER_PIXEL)))
        self.fit_again()

        self.drag((4, 2), button=1)
        self.assert_dots("a pan with nothing under the pointer", self.corners(
            lambda x, y, z: (x + 4 * UNITS_PER_PIXEL, y + 2 * UNITS_PER_PIXEL, z - distance)))
        self.fit_again()

        # The wheel up is a step back.
        place = self.view.at("perspective", 0, -150)
        self.program.click(*place, button=4, modifier="alt")
        self.assert_dots("a notch of the wheel up", self.corners(
            lambda x, y, z: (x, y, z - distance - UNITS_PER_NOTCH)))
        self.program.click(*place, button=5, modifier="alt")
        self.program.click(*place, button=5, modifier="alt")
        self.assert_dots("a notch of the wheel down", self.corners(
            lambda x, y, z: (x, y, z - distance + UNITS_PER_NOTCH)))
        self.fit_again()

        # The other views have seen nothing of all this.
        self.assertEqual([self.view.picture(viewport) for viewport in ORTHOGRAPHIC], ortho_pictures)

    def test_alt_left_keeps_the_surface_under_the_pointer(self):
        before = self.dots("perspective")
        self.drag((50, 30), button=1, start=(-20, 10))
        self.assert_dots("a pan of the surface", {key: (dot.x + 50, dot.y + 30) for key, dot in before.items()})
        # Also after the view was turned, on the axis that the turn keeps in its place.
        self.fit_again()
        self.drag((30, 0), button=3)
        wait_for(lambda: self.dots("perspective") != before, "the view did not turn")
        before = self.dots("perspective")
        self.drag((0, 40), button=1, start=(0, 0))
        moved = {key: (dot.x, dot.y + 40) for key, dot in before.items()}
        # The corners are nearer to the eye than the middle, or further away from it: they move a little more or less.
        self.assert_dots("a pan of a turned surface", moved, tolerance=15)
        middle = [sum(dot.y for dot in self.dots("perspective").values()) / 4, sum(y for _, y in moved.values()) / 4]
        self.assertAlmostEqual(*middle, delta=3)

    def test_keys_and_buttons_that_move_nothing(self):
        # Alt opened the menu that opened the file; its release there counts.
        for modifier, button in ((None, 2), ("ctrl", 1), ("ctrl", 3), ("shift", 2)):
            self.program.drag(self.view.at("perspective", 0, -150), self.view.at("perspective", 40, -120), button,
                              modifier)
        self.program.click(*self.view.centre("perspective"), button=4)
        # What follows is seen in the end, so what went before has been handled.
        self.drag((4, 2), button=1)
        wait_for(lambda: self.view.picture("perspective") != self.picture, "the pan does not show")
        self.assert_dots("only the pan", self.corners(
            lambda x, y, z: (x + 4 * UNITS_PER_PIXEL, y + 2 * UNITS_PER_PIXEL, z - self.distance)))

    def test_alt_is_repaired_by_the_release_of_tab(self):
        """Alt+Tab takes the window away before the release of Alt comes, but after that of Tab."""
        with self.program.held("alt"):
            self.program.press_keys("Tab")
            # Alt counts no longer: this marks a point and moves no camera.
            self.program.drag(self.view.place("front", RED), self.view.at("front", 0, 150))
            wait_for(lambda: self.view.dot("front", RED).size == 25, "the point was not marked")
        self.assert_dots("the camera has not moved", {("front", RED): self.fitted("front", RED)})

    def fitted(self, viewport, colour):
        dot = self.view.dot(viewport, colour)
        return math.copysign(192 / FIT_ROOM / 2, dot.x), math.copysign(192 / FIT_ROOM / 2, dot.y)


class Orthographic(Navigation):
    def setUp(self):
        self.program = self.start()
        # The upper corners lie further back, which the side and the top view show.
        self.open_model(self.program, quad(BACK))
        wait_for(lambda: self.view.dot("top", MAGENTA), "the points do not show")
        self.fitted = self.dots(*ORTHOGRAPHIC)
        self.pictures = {viewport: self.view.picture(viewport) for viewport in ORTHOGRAPHIC}

    def assert_moved(self, what, **ways):
        """`ways` tells per viewport how far (right, up) all points moved from where the fit puts them."""
        self.assert_dots(what, {(viewport, colour): (dot.x + ways[viewport][0], dot.y + ways[viewport][1])
                                for (viewport, colour), dot in self.fitted.items() if dot})

    def assert_zoomed(self, what, factor):
        self.assert_dots(what, {key: (dot.x * factor, dot.y * factor) for key, dot in self.fitted.items() if dot})

    def drag(self, viewport, way, button, steps=4, start=(-30, 40)):
        self.program.drag(self.view.at(viewport, *start),
                          self.view.at(viewport, start[0] + way[0], start[1] + way[1]), button, "alt", steps)

    def fit_again(self):
        self.program.keys("Return")
        for viewport, picture in self.pictures.items():
            self.settle(viewport, picture)

    def test_the_fit_shows_the_box_from_the_front_the_right_and_above(self):
        _, _, _, height = self.view.rectangle("front")
        reach = height / 2 / FIT_ROOM / 2
        depth = height / 2 / FIT_ROOM
        self.assert_dots("from the front: x to the right, y up", {
            ("front", RED): (-reach, -reach), ("front", GREEN): (reach, -reach),
            ("front", BLUE): (-reach, reach), ("front", MAGENTA): (reach, reach)})
        # Of points that fall upon each other the last one shows.
        self.assert_dots("from the right: back to the right, y up", {
            ("side", GREEN): (0, -reach), ("side", MAGENTA): (depth, reach)})
        self.assert_dots("from above: x to the right, back up", {
            ("top", RED): (-reach, 0), ("top", GREEN): (reach, 0),
            ("top", BLUE): (-reach, depth), ("top", MAGENTA): (reach, depth)})

    def test_alt_left_pans_all_three(self):
        perspective = self.view.picture("perspective")
        self.drag("front", (30, 20), button=1)
        self.assert_moved("pan in front", front=(30, 20), side=(0, 20), top=(30, 0))
        self.fit_again()
        self.drag("side", (-24, -16), button=1)
        self.assert_moved("pan at the side", front=(0, -16), side=(-24, -16), top=(0, -24))
        self.fit_again()
        self.drag("top", (-20, 12), button=1)
        self.assert_moved("pan from above", front=(-20, 0), side=(12, 0), top=(-20, 12))
        self.fit_again()
        # The view of the press rules, wherever the mouse goes.
        self.drag("front", (60, 20), button=1, start=(250, 40))
        self.assert_moved("pan across the border", front=(60, 20), side=(0, 20), top=(60, 0))
        self.fit_again()
        self.assertEqual(self.view.picture("perspective"), perspective)

    def test_alt_middle_and_the_wheel_zoom_all_three(self):
        for viewport in ORTHOGRAPHIC:
            # One motion event: the factors of several would multiply.
            self.drag(viewport, (10, -16), button=2, steps=1)
            self.assert_zoomed(f"16 pixels down in the {viewport} view", 0.75)
            self.fit_again()
        place = self.view.at("side", 10, 10)
        self.program.click(*place, button=4, modifier="alt")
        self.assert_zoomed("a notch up", 1.0625)
        self.program.click(*place, button=5, modifier="alt")
        self.assert_zoomed("a notch down again", 1.0625 * 0.9375)
        self.fit_again()

    def test_alt_right_does_nothing(self):
        for viewport in ORTHOGRAPHIC:
            self.drag(viewport, (30, 20), button=3)
        self.drag("front", (5, 0), button=1)
        self.assert_moved("only the pan", front=(5, 0), side=(0, 0), top=(5, 0))


if __name__ == "__main__":
    main()
