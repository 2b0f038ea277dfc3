"""Starting, the empty scene, the name of the program, and the two ways to leave."""

import os
import pathlib

from harness import BACKGROUND, PROGRAM_NAME, SAMPLES, UiTestCase, main, wait_for
from harness import commands as do
from harness.program import xdotool


class StartAndQuit(UiTestCase):
    def test_closing_the_window_ends_the_program_silently(self):
        program = self.start()
        program.keys("alt+F4")
        self.assert_ends_clean(program)
        self.assertEqual(program.stdout, "")

    def test_exit_ends_the_program_silently(self):
        program = self.start()
        do.leave(program)
        self.assert_ends_clean(program)

    def test_a_file_name_on_the_command_line_opens_nothing(self):
        program = self.start(str(SAMPLES / "cube.ulk"))
        self.assertEqual(do.model_labels(program), [])
        # The toolkit's title for a window that was given none.
        self.assertEqual(program.main_window.title, PROGRAM_NAME)
        self.assertEqual(self.view.coloured("front"), 0)

    def test_the_c_locale_does_not_keep_the_japanese_texts_from_the_window(self):
        program = self.start(environment={"LC_ALL": "C"})
        program.choose("File", "f", "o")
        program.wait_window(do.OPEN_TITLE)
        program.keys("Escape")
        program.wait_gone(do.OPEN_TITLE)
        do.leave(program)
        self.assert_ends_clean(program)


class EmptyScene(UiTestCase):
    def test_grids_stand_in_the_three_orthographic_views_only(self):
        self.start()
        self.assertEqual(set(self.view.colours("perspective")), {BACKGROUND})
        _, _, width, height = self.view.rectangle("perspective")
        self.assertGreaterEqual(width, 512)
        self.assertEqual(height, 384)
        for viewport in ("top", "front", "side"):
            colours = self.view.colours(viewport)
            self.assertIn(BACKGROUND, colours)
            self.assertGreater(sum(n for colour, n in colours.items() if colour != BACKGROUND), 500, viewport)
            self.assertEqual(self.view.coloured(viewport), 0, viewport)

    def test_the_grid_toggle_hides_the_grids(self):
        program = self.start()
        program.press_control("toggle button", "方眼表示")
        self.rest_pointer(program)
        for viewport in ("top", "front", "side"):
            wait_for(lambda: set(self.view.colours(viewport)) == {BACKGROUND}, f"the {viewport} grid stays")

    def test_the_dialog_menu_has_no_popup(self):
        program = self.start()
        self.assertEqual(program.menu_labels("Dialog"), [])
        program.keys("alt+d")
        # A popup is a window of its own.
        self.assertEqual([window.title for window in program.windows()], [PROGRAM_NAME])
        program.keys("Escape")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_the_list_of_models_has_an_empty_popup(self):
        program = self.start()
        program.open_menu("Edit", "e")
        self.assertEqual(len(program.windows()), 2)
        program.keys("s")
        wait_for(lambda: len(program.windows()) == 3, "the list of models does not open")
        self.assertEqual(do.model_labels(program), [])
        program.keys("Escape", "Escape", "Escape")
        wait_for(lambda: len(program.windows()) == 1, "the menus stay open")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_commands_for_models_do_nothing_harmful(self):
        program = self.start()
        # The deletion puts the program's name into the title, which at the start is the toolkit's own.
        xdotool("set_window", "--name", "nothing yet", program.main_window.identifier)
        program.wait_title("nothing yet")
        do.polygonize(program)
        do.delete_current(program)
        program.wait_title(PROGRAM_NAME)
        do.cut(program)
        self.assertEqual(program.message("ポリゴン編集"),
                         ("Information", "ポリゴンの自動カットが終了しました。", ["OK"]))
        program.keys("Return")
        program.wait_gone("ポリゴン編集")
        self.assertEqual(do.model_labels(program), [])
        do.leave(program)
        self.assert_ends_clean(program)


class Menus(UiTestCase):
    def test_the_fixed_menus_have_their_items(self):
        program = self.start()
        self.assertEqual([item.name for item in program.menu_bar().children], ["File", "Edit", "Dialog", "View"])
        self.assertEqual(program.menu_labels("File"), ["Open", "SaveAs", "SaveCurrentModelAs", "eXit"])
        self.assertEqual(program.menu_labels("Edit"),
                         ["Add Polygon", "Add Nurbs", "Delete current Model", "Polygonize", "Cut the Model",
                          "Select Model..."])
        self.assertEqual(program.menu_labels("View"), ["FullScreen", "Maximize"])

    def test_the_fold_button_without_a_fold_line_tells_so(self):
        program = self.start()
        program.press_control("push button", "折曲実行")
        self.assertEqual(program.message("折り畳みエラー"),
                         ("Error", "折り畳みに失敗しました.\n折目頂点を選択していないものと思われます.", ["OK"]))
        program.keys("Return")
        program.wait_gone("折り畳みエラー")


class ProgramName(UiTestCase):
    """The title without a model is the program's name, which shows once a command has set the title."""

    def assert_title(self, file_name, title):
        folder = pathlib.Path(os.environ["HOME"]) / f"named-{file_name}"
        folder.mkdir()
        path = folder / file_name
        path.symlink_to(os.environ["ULK_UI_PROGRAM"])
        program = self.start(path=path)
        do.delete_current(program)
        program.wait_title(title)
        do.leave(program)
        self.assertEqual(program.wait_exit(), 0)

    def test_an_extension_is_cut(self):
        self.assert_title("view.exe", "view")

    def test_only_the_last_extension_is_cut(self):
        self.assert_title("a.b.exe", "a.b")

    def test_a_name_without_extension_stays(self):
        self.assert_title("view", "view")

    def test_exe_is_cut_once_more_after_the_extension(self):
        self.assert_title("a.Exe.exe", "a")


class WindowSize(UiTestCase):
    def test_fullscreen_and_maximize_toggle(self):
        program = self.start()
        window = program.main_window
        first = window.size
        # The view asks for its least size; the toolbar row may want the window wider.
        _, _, *view_size = self.view.area()
        self.assertEqual(view_size[1], 768)
        self.assertGreaterEqual(view_size[0], 1024)
        self.assertEqual(view_size[0], first[0])

        program.choose("View", "v", "f")
        wait_for(lambda: window.size == (1280, 1024), lambda: f"not full screen: {window.size}")
        program.choose("View", "v", "f")
        wait_for(lambda: window.size == first, lambda: f"still full screen: {window.size}")

        program.choose("View", "v", "m")
        wait_for(lambda: window.size[0] == 1280 and window.size[1] < 1024, lambda: f"not maximized: {window.size}")
        program.choose("View", "v", "m")
        wait_for(lambda: window.size == first, lambda: f"still maximized: {window.size}")


if __name__ == "__main__":
    main()
