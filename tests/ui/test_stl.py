"""STL files through the menu: what is saved by this ending, and what comes back."""

import struct

from harness import BACKGROUND, PROGRAM_NAME, UiTestCase, main, wait_for
from harness import commands as do


class Stl(UiTestCase):
    def count_of(self, path):
        """The triangles of a file, which holds nothing else."""
        content = path.read_bytes()
        count, = struct.unpack_from("<I", content, 80)
        self.assertEqual(len(content), 84 + 50 * count)
        return count

    def lit(self, viewport):
        return sum(count for colour, count in self.view.colours(viewport).items() if min(colour) > max(BACKGROUND))

    def test_saving_and_opening(self):
        program = self.start()
        for name in ("cube.ulk", "patch.ulk"):
            do.open_scene(program, self.sample(program, name), f"{name} - {PROGRAM_NAME}")
        before = do.model_labels(program)

        # All models in one file; the models keep the names of the files that they came from.
        both = program.folder / "both.stl"
        do.give_save_as(program, both)
        program.wait_title(f"both.stl - {PROGRAM_NAME}")
        self.assertGreater(self.count_of(both), 12)
        self.assertEqual(do.model_labels(program), before)

        # The current model alone.
        do.select_model(program, 0)
        program.wait_title(f"cube.ulk - {PROGRAM_NAME}")
        cube = program.folder / "cube.STL"
        do.give_save_current_as(program, cube)
        program.wait_title(f"cube.STL - {PROGRAM_NAME}")
        self.assertEqual(self.count_of(cube), 12)

        # What is opened is one polygon model, and it shows.
        do.delete_current(program)
        do.delete_current(program)
        program.wait_title(PROGRAM_NAME)
        wait_for(lambda: self.lit("perspective") == 0, "the deleted models still show")
        do.open_scene(program, cube, f"cube.STL - {PROGRAM_NAME}")
        self.assertEqual(do.model_labels(program), [f"v 0 Polygon {cube}"])
        # Such models are grey; nothing else in this view is brighter than the background.
        wait_for(lambda: self.lit("perspective") > 5000, "the cube does not show in perspective")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_files_that_can_not_be_read_or_written_are_told(self):
        program = self.start()
        missing = program.folder / "missing.stl"
        missing.symlink_to(program.folder / "nowhere")
        do.give_open(program, missing)
        self.assertEqual(program.message(do.OPEN_ERROR_TITLE),
                         ("Error", f"{missing}のオープンに失敗しました", ["OK"]))
        program.keys("Return")
        program.wait_window("file open error.")
        # The reader has no words of its own.
        self.assertEqual(program.dialog("file open error.").find("text").text, "")
        program.keys("alt+F4")
        program.wait_gone("file open error.")
        program.wait_main_active()
        self.assertEqual(program.stderr, f"{missing}: file open error.\n")

        do.open_scene(program, self.sample(program, "cube.ulk"), f"cube.ulk - {PROGRAM_NAME}")
        full = program.folder / "full.stl"
        full.symlink_to("/dev/full")
        do.give_save_as(program, full)
        self.assertEqual(program.message(do.OVERWRITE_TITLE)[0], "Question")
        program.keys("Return")
        program.wait_gone(do.OVERWRITE_TITLE)
        self.assertEqual(program.message(do.SAVE_ERROR_TITLE), ("Error", f"{full} の保存に失敗しました", ["OK"]))
        program.keys("Return")
        program.wait_gone(do.SAVE_ERROR_TITLE)
        program.wait_main_active()
        self.assertEqual(program.main_window.title, f"cube.ulk - {PROGRAM_NAME}")


if __name__ == "__main__":
    main()
