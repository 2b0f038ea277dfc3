"""Graphics cards report how old a buffer is, and the toolkit then repaints what was asked for and no more."""

import os

from harness import UiTestCase, main, wait_for
from harness.models import RED, quad
from harness.program import xdotool


class BufferAge(UiTestCase):
    def test_a_drag_leaves_no_row_of_a_view_as_it_was(self):
        program = self.start(environment={"LD_PRELOAD": os.environ["ULK_UI_BUFFER_AGE"]})
        self.open_model(program, quad())
        wait_for(lambda: self.view.dot("front", RED), "the points do not show")
        for viewport, (right, up) in (("front", (31, 17)), ("side", (23, 29))):
            start = self.view.at(viewport, 5, 5)
            program.drag(start, (start[0] + right, start[1] - up), 1, "alt")
        self.rest_pointer(program)
        dragged = self.settled()

        # A window that comes back is painted as a whole.
        window = program.main_window.identifier
        xdotool("windowminimize", "--sync", window)
        xdotool("windowactivate", "--sync", window)
        program.wait_main_active()
        self.rest_pointer(program)
        whole = self.settled()
        for viewport in dragged:
            self.assertEqual(dragged[viewport], whole[viewport], f"the {viewport} view is not all of one frame")

    def settled(self):
        """The pictures of the views when they change no more."""
        last = {}

        def unchanged():
            now = {viewport: self.view.picture(viewport) for viewport in ("top", "front", "side", "perspective")}
            same = now == dict(last)
            last.update(now)
            return same
        wait_for(unchanged, "the views do not come to rest", seconds=20)
        return dict(last)


if __name__ == "__main__":
    main()
