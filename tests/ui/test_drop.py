"""Files that are dropped on the window."""

import pathlib

from harness import PROGRAM_NAME, UiTestCase, main
from harness import commands as do


class Drop(UiTestCase):
    def test_files_open_in_order_as_by_the_menu(self):
        program = self.start()
        cube, torus = self.sample(program, "cube.ulk"), self.sample(program, "torus.ulk", "a b\u3042%.ulk")
        self.assertTrue(self.drop(program, pathlib.Path(cube).as_uri(), pathlib.Path(torus).as_uri()))
        program.wait_title(f"a b\u3042%.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"  0 Polygon {cube}", f"v 1 Nurbs {torus}"])
        do.leave(program)
        self.assert_ends_clean(program)

    def assert_told(self, program, shown, messages):
        """Both messages about a file that does not open, in the order of the menu's command."""
        self.assertEqual(program.message(do.OPEN_ERROR_TITLE), ("Error", f"{shown}のオープンに失敗しました", ["OK"]))
        program.keys("Return")
        program.wait_window("file open error.")
        self.assertEqual(program.dialog("file open error.").find("text").text, messages)
        program.keys("alt+F4")
        program.wait_gone("file open error.")

    def test_a_file_that_fails_is_told_and_the_next_one_opens(self):
        program = self.start()
        bad, cube = self.file(program, "bad.ulk", "nonsense\n"), self.sample(program, "cube.ulk")
        self.assertTrue(self.drop(program, bad.as_uri(), pathlib.Path(cube).as_uri()))
        self.assert_told(program, bad, "unknown line: nonsense\n")
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {cube}"])

    def test_what_is_no_local_file_is_told_like_a_file_that_can_not_be_opened(self):
        program = self.start()
        words = ("https://example.org/cube.ulk", "file://elsewhere.example.org/cube.ulk", "file:///no/such.ulk",
                 "file:///")
        self.assertTrue(self.drop(program, *words))
        for shown in (*words[:1], "/cube.ulk", "/no/such.ulk", "/"):
            self.assert_told(program, shown, f"{shown}: file open error.\n")
        program.wait_main_active()
        self.assertEqual(do.model_labels(program), [])

    def test_nothing_is_taken_while_a_dialog_is_open(self):
        program = self.start()
        cube = self.sample(program, "cube.ulk")
        dialog = do.add_polygon(program)
        # Where the dialog does not cover the window.
        self.assertFalse(self.drop(program, pathlib.Path(cube).as_uri(), at=(-200, 150)))
        dialog.cancel()
        program.wait_main_active()
        self.assertEqual(do.model_labels(program), [])
        self.assertTrue(self.drop(program, pathlib.Path(cube).as_uri()))
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")


if __name__ == "__main__":
    main()
