"""Keys and motions as people make them: modifiers that are let go elsewhere, and brushes that are drawn fast."""

import subprocess

from harness import UiTestCase, main, wait_for
from harness.models import RED, quad
from harness.program import xdotool

CLIPPING = "折曲ポリゴン選択"
TRIANGLES = 44
MOTIONS = 1000


def row_of_triangles():
    """Triangles side by side, each apart from the next one, across the middle of the perspective view."""
    lines = [f"begin polygon_surface,{3 * TRIANGLES},{4 * TRIANGLES}"]
    for i in range(TRIANGLES):
        left, right = (2 * i / TRIANGLES - 1, 2 * (i + 0.9) / TRIANGLES - 1)
        lines += ["color 255,255,255,255"] + [f"position {x:g},{y:g},0"
                                              for x, y in ((left, -0.2), (right, -0.2), (left, 0.2))]
    for i in range(TRIANGLES):
        lines += [f"element {index}" for index in (3 * i, 3 * i + 1, 3 * i + 2, -1)]
    lines += ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * (3 * TRIANGLES)
    return "\r\n".join(lines + ["end", ""])


class Brushes(UiTestCase):
    def test_a_fast_brush_meets_every_polygon_on_its_way(self):
        program = self.start()
        self.open_model(program, row_of_triangles())
        program.press_control("radio button", CLIPPING)
        left, _, width, _ = self.view.rectangle("perspective")
        _, row = self.view.centre("perspective")
        path = [(left + round((width - 1) * i / MOTIONS), row - 5) for i in range(MOTIONS + 1)]
        moves = [word for x, y in path for word in ("mousemove", str(x), str(y))]
        subprocess.run(["xdotool", "mousemove", str(path[0][0]), str(path[0][1]), "mousedown", "1", *moves,
                        "mouseup", "1"], check=True)
        wait_for(lambda: program.stdout.count("select polygon") == TRIANGLES,
                 lambda: f"{program.stdout.count('select polygon')} of {TRIANGLES} polygons")


class Modifiers(UiTestCase):
    def setUp(self):
        self.program = self.start()
        self.open_model(self.program, quad())
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")

    def assert_mouse_selects(self):
        """Without a modifier a drag selects points; with Alt it would move the view."""
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")
        place = self.view.place("front", RED)
        self.program.click(*place)
        self.rest_pointer(self.program)
        wait_for(lambda: self.view.dot("front", RED).size > 9, "the point is not selected")

    def test_alt_is_over_when_its_key_is_let_go_under_shift(self):
        # As many layouts are switched. The key that went down as Alt comes up as Meta.
        for word, key in (("keydown", "Alt_L"), ("keydown", "Shift_L"), ("keyup", "Alt_L"), ("keyup", "Shift_L")):
            xdotool(word, key)
        self.assert_mouse_selects()

    def test_alt_is_over_when_another_window_has_had_the_keyboard(self):
        window = self.program.main_window.identifier
        xdotool("keydown", "Alt_L")
        xdotool("windowminimize", "--sync", window)
        xdotool("keyup", "Alt_L")
        xdotool("windowactivate", "--sync", window)
        self.program.wait_main_active()
        self.assert_mouse_selects()


if __name__ == "__main__":
    main()
