"""The toolbar row: its controls as the accessibility tree tells them, and what they switch."""

from harness import BACKGROUND, UiTestCase, main, wait_for
from harness import commands as do
from harness.accessibility import CHECKED, FOCUSABLE, FOCUSED
from harness.models import BLUE, GREEN, MAGENTA, RED, quad

GRID_STEP, FOLD_ANGLE = "方眼間隔", "折曲角度"
CONTROLS = [("toggle button", "制御点表示"), ("toggle button", "方眼表示"), ("spin button", GRID_STEP),
            ("radio button", "制御点選択"), ("radio button", "ぷにぷに"), ("radio button", "折曲ポリゴン選択"),
            ("radio button", "折目頂点選択1,0"), ("label", "折曲角度："), ("spin button", FOLD_ANGLE),
            ("push button", "折曲実行"), ("progress bar", "カットの進行状況")]
RADIOS = [name for role, name in CONTROLS if role == "radio button"]


class Controls(UiTestCase):
    def test_order_labels_and_first_values(self):
        program = self.start()
        row = [(node.role, node.name) for node in self.controls(program)]
        self.assertEqual(row, CONTROLS)
        places = [node.rectangle for node in self.controls(program)]
        self.assertEqual([place[0] for place in places], sorted(place[0] for place in places))
        # Packed side by side, each as wide as it needs to be.
        self.assertEqual([right[0] - left[0] - left[2] for left, right in zip(places, places[1:])], [0] * 10)

        self.assertEqual([name for _, name in CONTROLS if self.is_on(program, name)],
                         ["制御点表示", "方眼表示", "制御点選択"])
        self.assertEqual(self.spin_values(program, GRID_STEP), (0.1, 0.0, 10.0, 0.05))
        self.assertEqual(self.spin_values(program, FOLD_ANGLE), (0.0, -180.0, 180.0, 1.0))
        self.assertEqual(program.control("spin button", GRID_STEP).text, "0.10")
        self.assertEqual(program.control("spin button", FOLD_ANGLE).text, "0")
        self.assertEqual(program.control("progress bar", "カットの進行状況").value("CurrentValue"), 0.0)
        # The view has all keys.
        self.assertEqual([node.name for node in self.controls(program) if node.has_state(FOCUSABLE)], [])

    def controls(self, program):
        return program.control("toggle button", "制御点表示").parent.children

    def is_on(self, program, name):
        return next(node for node in self.controls(program) if node.name == name).has_state(CHECKED)

    def spin_values(self, program, name):
        spin = program.control("spin button", name)
        return tuple(spin.value(what) for what in ("CurrentValue", "MinimumValue", "MaximumValue",
                                                   "MinimumIncrement"))

    def test_spinning_and_choosing(self):
        program = self.start()
        program.spin(GRID_STEP, 2)
        wait_for(lambda: program.control("spin button", GRID_STEP).text == "0.20", "the step is not 0.20")
        # There is no wrapping at the ends.
        program.spin(GRID_STEP, -5)
        wait_for(lambda: program.control("spin button", GRID_STEP).text == "0.00", "the step is not 0.00")
        program.spin(FOLD_ANGLE, -2)
        wait_for(lambda: program.control("spin button", FOLD_ANGLE).text == "-2", "the angle is not -2")
        for chosen in (*RADIOS[1:], RADIOS[0]):
            program.press_control("radio button", chosen)
            wait_for(lambda: [name for name in RADIOS if self.is_on(program, name)] == [chosen],
                     f"{chosen} is not the only one that is on")


class Switches(UiTestCase):
    def test_points_and_grids(self):
        program = self.start()
        # Grids show without any model, in the three orthographic views only.
        self.assertEqual(set(self.view.colours("perspective")), {BACKGROUND})
        self.assertTrue(all(self.view.grid_pixels(viewport) > 500 for viewport in ("front", "side", "top")))
        self.open_model(program, quad())
        wait_for(lambda: self.view.dot("perspective", RED), "the points do not show")

        program.press_control("toggle button", "方眼表示")
        wait_for(lambda: not any(self.view.grid_pixels(viewport) for viewport in ("front", "side", "top")),
                 "the grids still show")
        program.press_control("toggle button", "制御点表示")
        wait_for(lambda: not any(self.view.dot("perspective", colour) for colour in (RED, GREEN, BLUE, MAGENTA)),
                 "the points still show in the perspective view")
        self.assertTrue(all(self.view.dot("front", colour) for colour in (RED, GREEN, BLUE, MAGENTA)))
        self.assertTrue(self.view.dot("side", MAGENTA) and self.view.dot("top", MAGENTA))

        # What does not show can not be picked; in the other views points always show.
        program.click(*self.view.at("perspective", -92, -92))
        program.click(*self.view.place("front", MAGENTA))
        self.rest_pointer(program)
        wait_for(lambda: self.view.dot("front", MAGENTA).size == 25, "the point was not marked")
        self.assertEqual(self.view.dot("front", RED).size, 9)

        program.press_control("toggle button", "制御点表示")
        wait_for(lambda: self.view.dot("perspective", RED), "the points do not come back")
        self.assertEqual(self.view.dot("perspective", RED)[0], 9)
        program.press_control("toggle button", "方眼表示")
        wait_for(lambda: self.view.grid_pixels("front") > 500, "the grids do not come back")

    def test_keys_reach_the_view_after_clicks_on_the_controls(self):
        program = self.start()
        self.open_model(program, quad())
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")
        fitted = self.view.dot("front", RED)
        for role, name in CONTROLS:
            if role in ("toggle button", "radio button"):
                program.press_control(role, name)
        program.spin(GRID_STEP, 1)
        # Into the number, too, where keys would write.
        x, y, _, height = program.control("spin button", GRID_STEP).rectangle
        program.click(x + 10, y + height // 2)
        program.drag(self.view.centre("front"), self.view.at("front", 40, 30), 1, "alt")
        self.rest_pointer(program)
        wait_for(lambda: self.view.dot("front", RED).x > fitted.x + 30, "the view was not panned")
        program.keys("Return")
        wait_for(lambda: self.view.dot("front", RED) == fitted, "Return did not fit the scene")
        self.assertEqual(program.control("spin button", GRID_STEP).text, "0.15")
        self.assertEqual([node.name for node, _ in program.tree().walk() if node.has_state(FOCUSED)
                          and node.role != "frame"], [])


class Fold(UiTestCase):
    TITLE = "折り畳みエラー"
    TEXT = "折り畳みに失敗しました.\n折目頂点を選択していないものと思われます."

    def test_folding_without_vertices_is_told(self):
        program = self.start()
        self.open_model(program, quad())
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")
        program.drag(self.view.centre("front"), self.view.at("front", 40, 30), 1, "alt")
        self.rest_pointer(program)
        wait_for(lambda: self.view.dot("front", RED).x > -60, "the view was not panned")
        panned = self.view.dot("front", RED)
        program.press_control("push button", "折曲実行")
        self.assertEqual(program.message(self.TITLE), ("Error", self.TEXT, ["OK"]))
        # Return ends the dialog and does not reach the view, which it would fit.
        program.keys("Return")
        program.wait_gone(self.TITLE)
        program.wait_main_active()
        # What is seen after a later click is seen after the key.
        program.press_control("toggle button", "方眼表示")
        self.rest_pointer(program)
        wait_for(lambda: self.view.grid_pixels("front") == 0, "the grid still shows")
        self.assertEqual(self.view.dot("front", RED), panned)
        do.leave(program)
        self.assert_ends_clean(program)


class HighResolution(UiTestCase):
    def test_what_is_under_the_pointer_is_picked(self):
        """On a screen of two device pixels to a logical one, points are marked and dragged where they show."""
        program = self.start(environment={"GDK_SCALE": "2"})
        self.open_model(program, quad(-0.4))
        # Only the top view lies wholly on the screen of the test.
        wait_for(lambda: self.view.dot("top", MAGENTA), "the points do not show")
        before = self.view.dot("top", MAGENTA)
        self.assertEqual(before.size, 36)
        _, _, width, _ = self.view.rectangle("top")
        self.assertGreaterEqual(width, 1024)

        # An odd place: events have no finer places than those of two device pixels.
        place = self.view.place("top", MAGENTA)
        program.click(*place)
        self.rest_pointer(program)
        wait_for(lambda: self.view.dot("top", MAGENTA).size == 100, "the point was not marked")
        self.assertEqual(self.view.dot("top", BLUE).size, 36)
        program.drag(place, (place[0] - 60, place[1] + 40), 1, "shift")
        self.rest_pointer(program)
        wait_for(lambda: abs(self.view.dot("top", MAGENTA).x - before.x + 60) < 2.01
                 and abs(self.view.dot("top", MAGENTA).y - before.y + 40) < 2.01,
                 lambda: f"from {before} to {self.view.dot('top', MAGENTA)}")


if __name__ == "__main__":
    main()
