"""Saving: both commands, the question before a file is replaced, and files that can not be written."""

import pathlib
import resource

from harness import PROGRAM_NAME, UiTestCase, main
from harness import commands as do

CUBE = b"begin polygon_surface,24,30\r\n"
PATCH = b"begin nurbs_surface,2,2,2,2\r\n"


class Save(UiTestCase):
    def start_with(self, *samples):
        program = self.start()
        for name in samples:
            do.open_scene(program, self.sample(program, name), f"{name} - {PROGRAM_NAME}")
        return program

    def answer_overwrite(self, program, path, key):
        self.assertEqual(program.message(do.OVERWRITE_TITLE),
                         ("Question", f"{path} に上書き保存してもよろしいですか?", ["OK", "Cancel"]))
        program.keys(key)
        program.wait_gone(do.OVERWRITE_TITLE)

    def assert_told(self, program, text):
        self.assertEqual(program.message(do.SAVE_ERROR_TITLE), ("Error", text, ["OK"]))
        program.keys("Return")
        program.wait_gone(do.SAVE_ERROR_TITLE)
        program.wait_main_active()

    def test_save_as_writes_all_models_and_names_the_file_in_the_title(self):
        program = self.start_with("cube.ulk", "patch.ulk")
        path = program.folder / "both.ulk"
        do.give_save_as(program, path)
        program.wait_title(f"both.ulk - {PROGRAM_NAME}")
        content = path.read_bytes()
        self.assertTrue(content.startswith(CUBE))
        self.assertEqual(content.count(b"begin "), 2)
        self.assertIn(PATCH, content)
        self.assertTrue(content.endswith(b"end\r\n\r\n"))

        do.open_scene(program, path, f"both.ulk - {PROGRAM_NAME}")
        self.assertEqual(len(do.model_labels(program)), 4)
        do.leave(program)
        self.assert_ends_clean(program)

    def test_save_current_writes_the_current_model(self):
        program = self.start_with("cube.ulk", "patch.ulk")
        path = program.folder / "one.ulk"
        do.give_save_current_as(program, path)
        program.wait_title(f"one.ulk - {PROGRAM_NAME}")
        self.assertTrue(path.read_bytes().startswith(PATCH))
        self.assertEqual(path.read_bytes().count(b"begin "), 1)

    def test_an_empty_scene_is_an_empty_file(self):
        program = self.start()
        path = program.folder / "none.ulk"
        do.give_save_as(program, path)
        program.wait_title(f"none.ulk - {PROGRAM_NAME}")
        self.assertEqual(path.read_bytes(), b"")

    def test_cancel_in_the_overwrite_question_leads_back_to_the_chooser(self):
        program = self.start_with("cube.ulk")
        path = self.file(program, "kept.ulk", b"kept")
        do.give_save_as(program, path)
        self.answer_overwrite(program, path, "Escape")
        program.bring_window(do.SAVE_TITLE)
        self.assertEqual(path.read_bytes(), b"kept")

        # The chooser still has the name; this time the answer is OK.
        program.accept_chooser(do.SAVE_TITLE)
        self.answer_overwrite(program, path, "Return")
        program.wait_title(f"kept.ulk - {PROGRAM_NAME}")
        self.assertTrue(path.read_bytes().startswith(CUBE))
        self.assertIsNone(program.window(do.SAVE_TITLE))

    def test_cancel_in_the_chooser_saves_nothing(self):
        program = self.start_with("cube.ulk")
        program.choose("File", "f", "a")
        program.wait_window(do.SAVE_TITLE)
        # Users know the accepting button of this chooser as Open.
        self.assertEqual([name for name in program.dialog_buttons(do.SAVE_TITLE) if name in ("Open", "Save", "Cancel")],
                         ["Open", "Cancel"])
        program.cancel_chooser(do.SAVE_TITLE)
        program.wait_gone(do.SAVE_TITLE)
        self.assertEqual(program.main_window.title, f"cube.ulk - {PROGRAM_NAME}")

    def test_a_path_that_can_not_be_written_is_told_by_both_commands(self):
        program = self.start_with("cube.ulk")
        # A link into nowhere: there is no file to ask about, and none can be made.
        path = program.folder / "nowhere.ulk"
        path.symlink_to(program.folder / "missing" / "file.ulk")

        do.give_save_as(program, path)
        self.assert_told(program, f"{path} の保存に失敗しました")
        self.assertEqual(program.main_window.title, f"cube.ulk - {PROGRAM_NAME}")

        # This command names the file in the title also when the write failed.
        do.give_save_current_as(program, path)
        self.assert_told(program, "ファイルの上書き保存に失敗しました")
        program.wait_title(f"nowhere.ulk - {PROGRAM_NAME}")

    def test_a_save_that_fails_keeps_the_former_file_and_says_where(self):
        program = self.start_with("cube.ulk")
        former = b"former" * 1000
        path = self.file(program, "kept.ulk", former)
        do.give_save_as(program, path)
        # Only now: the toolkit keeps memory of its windows in files.
        program.wait_window(do.OVERWRITE_TITLE)
        resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, (2000, resource.RLIM_INFINITY))
        self.answer_overwrite(program, path, "Return")
        self.assert_told(program, f"{path} の保存に失敗しました")
        resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
        self.assertEqual(pathlib.Path(f"{path}~").read_bytes(), former)
        self.assertEqual(len(path.read_bytes()), 2000)
        self.assertEqual(program.stderr, f"{path}: not saved; the former file is {path}~\n")

        # The next save puts what is there aside, too, and takes away only that.
        do.give_save_as(program, path)
        self.answer_overwrite(program, path, "Return")
        program.wait_title(f"kept.ulk - {PROGRAM_NAME}")
        self.assertTrue(path.read_bytes().startswith(CUBE))
        self.assertEqual(sorted(file.name for file in path.parent.glob("kept.ulk*")), ["kept.ulk", "kept.ulk~"])

    def test_a_full_disk_is_told(self):
        program = self.start_with("cube.ulk")
        path = program.folder / "full.ulk"
        path.symlink_to("/dev/full")
        do.give_save_as(program, path)
        self.answer_overwrite(program, path, "Return")
        self.assert_told(program, f"{path} の保存に失敗しました")


if __name__ == "__main__":
    main()
