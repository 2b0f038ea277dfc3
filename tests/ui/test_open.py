"""Opening scenes: titles, models, menus, what shows, and what is said about files that can not be read."""

import os
import threading
import time

from harness import BACKGROUND, PROGRAM_NAME, Display, UiTestCase, main, wait_for
from harness import commands as do
from harness.accessibility import SELECTED
from harness.models import quad
from harness.view import GRID

NURBS_ITEMS = ["EnvironmentDialog", "PointDialog", "ColorDialog", "WeightDialog", "Horizontal KnotDialog",
               "Vertical KnotDialog", "OptionDialog"]
POLYGON_ITEMS = ["EnvironmentDialog", "VertexDialog", "ColorDialog", "TexCoordDialog", "Tangent(X軸法線)Dialog",
                 "Binormal(Y軸法線)Dialog", "Normal(Z軸法線)Dialog", "ElementDialog", "OptionDialog"]


class Open(UiTestCase):
    def test_the_theme_of_the_desktop_does_not_shine_through(self):
        """A surface, half opaque, and points without any opacity look the same on a light and on a dark desktop."""
        pictures = []
        for theme in ("Adwaita", "Adwaita:dark"):
            program = self.start(environment={"GTK_THEME": theme})
            self.open_model(program, quad(-0.4).replace("color 255,0,0,255", "color 255,0,0,0", 1))
            self.rest_pointer(program)
            wait_for(lambda: self.view.coloured("perspective") > 1000, "the surface does not show")
            time.sleep(1)
            pictures.append(self.view.picture("perspective"))
            do.leave(program)
            self.assert_ends_clean(program)
        self.assertEqual(*pictures)

    def test_the_pointer_is_busy_while_a_file_is_read(self):
        program = self.start()
        display = Display()
        self.addCleanup(display.close)
        # A comment of a quarter of a gigabyte, which takes no place on the disk. It takes about a second.
        path = self.file(program, "long.ulk", b"#")
        os.truncate(path, 1 << 28)
        program.move_pointer(640, 512)
        arrow = display.pointer
        pointers = set()
        told = threading.Event()

        def look():
            while not told.wait(0.02):
                pointers.add(display.pointer)
        looking = threading.Thread(target=look)
        looking.start()
        try:
            do.give_open(program, path)
            program.message(do.OPEN_ERROR_TITLE)
        finally:
            told.set()
            looking.join()
        wait_for(lambda: display.pointer == arrow, "the pointer has not become the usual one")
        # One shape, or several where it is a picture that moves.
        self.assertNotEqual(pointers - {arrow}, set())

    def test_opening_selecting_polygonizing_and_deleting(self):
        program = self.start()
        cube, torus = self.sample(program, "cube.ulk"), self.sample(program, "torus.ulk")

        # A polygon model.
        do.open_scene(program, cube, f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {cube}"])
        self.assertEqual(program.menu_labels("Dialog"), POLYGON_ITEMS)
        wait_for(lambda: self.view.coloured("perspective") > 5000, "the cube does not show in perspective")
        for viewport in ("top", "front", "side"):
            points = sum(count for colour, count in self.view.colours(viewport).items()
                         if colour not in (BACKGROUND, GRID))
            # Eight corners, of which two lie behind each other; a point is three pixels wide.
            self.assertEqual(points, 4 * 9, f"control points in the {viewport} view")

        # A second file adds to the scene, and its first model becomes the current one.
        do.open_scene(program, torus, f"torus.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"  0 Polygon {cube}", f"v 1 Nurbs {torus}"])
        self.assertEqual(program.menu_labels("Dialog"), NURBS_ITEMS)

        do.select_model(program, 0)
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {cube}", f"  1 Nurbs {torus}"])
        self.assertEqual(program.menu_labels("Dialog"), POLYGON_ITEMS)

        do.select_model(program, 1)
        program.wait_title(f"torus.ulk - {PROGRAM_NAME}")
        do.polygonize(program)
        wait_for(lambda: do.model_labels(program) == [f"  0 Polygon {cube}", f"v 1 Polygon {torus}"],
                 lambda: f"not polygonized: {do.model_labels(program)}")
        self.assertEqual(program.menu_labels("Dialog"), POLYGON_ITEMS)

        do.select_model(program, 0)
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        do.delete_current(program)
        program.wait_title(f"torus.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {torus}"])

        do.delete_current(program)
        program.wait_title(PROGRAM_NAME)
        self.assertEqual(do.model_labels(program), [])
        self.assertEqual(program.menu_labels("Dialog"), [])
        wait_for(lambda: set(self.view.colours("perspective")) == {BACKGROUND}, "the deleted model still shows")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_the_row_that_goes_with_a_deleted_last_model_is_the_new_last_one(self):
        program = self.start()
        cube, patch = self.sample(program, "cube.ulk"), self.sample(program, "patch.ulk")
        do.open_scene(program, cube, f"cube.ulk - {PROGRAM_NAME}")
        do.open_scene(program, patch, f"patch.ulk - {PROGRAM_NAME}")
        do.delete_current(program)
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Nurbs {patch}"])

    def test_an_underscore_in_a_name_is_shown(self):
        program = self.start()
        path = self.sample(program, "patch.ulk", copy_as="a_b.ulk")
        do.open_scene(program, path, f"a_b.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Nurbs {path}"])

    def test_every_model_of_a_long_list_has_its_row(self):
        program = self.start()
        block = (self.sample(program, "patch.ulk")).read_bytes()
        path = self.file(program, "twelve.ulk", block * 12)
        do.open_scene(program, path, f"twelve.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program),
                         [f"{'v ' if index == 0 else '  '}{index} Nurbs {path}" for index in range(12)])

    def test_models_that_begin_with_one_digit_share_its_key(self):
        program = self.start()
        block = self.sample(program, "patch.ulk").read_bytes()
        path = self.file(program, "twelve.ulk", block * 12)
        do.open_scene(program, path, f"twelve.ulk - {PROGRAM_NAME}")

        def current():
            return [index for index, label in enumerate(do.model_labels(program)) if label.startswith("v ")]

        # The key goes from one of them to the next, and Return chooses.
        for presses, chosen in ((1, 1), (2, 10), (3, 11), (4, 1)):
            before = current()
            program.choose("Edit", "e", "s", *"1" * presses)
            wait_for(lambda: do.model_items(program)[chosen].has_state(SELECTED),
                     f"{presses} presses do not lead to model {chosen}")
            self.assertEqual(current(), before)
            program.keys("Return")
            wait_for(lambda: current() == [chosen], lambda: f"the current model is {current()} and not {chosen}")
        # No other begins with this one.
        program.choose("Edit", "e", "s", "2")
        wait_for(lambda: current() == [2], lambda: f"the current model is {current()} and not 2")

    def test_a_name_is_shown_from_behind_its_first_colon(self):
        program = self.start()
        do.open_scene(program, self.sample(program, "patch.ulk", copy_as="a:b.ulk"), f"b.ulk - {PROGRAM_NAME}")

    def test_cancel_in_the_chooser_changes_nothing(self):
        program = self.start()
        program.choose("File", "f", "o")
        program.wait_window(do.OPEN_TITLE)
        self.assertEqual([name for name in program.dialog_buttons(do.OPEN_TITLE) if name in ("Open", "Cancel")],
                         ["Open", "Cancel"])
        program.cancel_chooser(do.OPEN_TITLE)
        program.wait_gone(do.OPEN_TITLE)
        self.assertEqual(do.model_labels(program), [])
        self.assertEqual(program.main_window.title, PROGRAM_NAME)


class OpenFailure(UiTestCase):
    def give_broken(self, program, path, log):
        """Opens a file that does not load and reads the two dialogs that tell so."""
        do.give_open(program, path)
        self.assertEqual(program.message(do.OPEN_ERROR_TITLE), ("Error", f"{path}のオープンに失敗しました", ["OK"]))
        program.keys("Return")
        program.wait_window("file open error.")
        dialog = program.dialog("file open error.")
        self.assertEqual(dialog.find("text").text, log)
        self.assertEqual(program.dialog_buttons("file open error."), ["OK"])
        program.keys("alt+F4")
        program.wait_gone("file open error.")
        program.wait_main_active()

    def test_a_broken_file_is_told_and_leaves_the_scene(self):
        program = self.start()
        broken = self.file(program, "broken.ulk",
                           "what\r\nbegin polygon_surface,3,4\r\nposition\r\nposition 1,2,3\r\nend\r\n")
        log = ("unknown line: what\r\n"
               "2: position parm is not set. position\r\n"
               "4: vertex(1) < 3: too few vertex.\n4: element(0) < 4: too few element.\n"
               "4: tangent(0) < 3: too few tangent.\n4: binormal(0) < 3: too few binormal.\n"
               "4: normal(0) < 3: too few normal.\n")
        self.give_broken(program, broken, log)
        program.wait_title(PROGRAM_NAME)
        self.assertEqual(do.model_labels(program), [])
        self.assertEqual(program.stderr, f"{broken}: file open error.\n")

        cube = self.sample(program, "cube.ulk")
        do.open_scene(program, cube, f"cube.ulk - {PROGRAM_NAME}")
        self.give_broken(program, broken, log)
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {cube}"])

    def test_an_empty_file_fails_with_an_empty_error_dialog(self):
        program = self.start()
        self.give_broken(program, self.file(program, "empty.ulk"), "")


if __name__ == "__main__":
    main()
