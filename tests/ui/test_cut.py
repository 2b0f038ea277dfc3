"""Cutting the current model out of all others: the command, the bar, the message, and the window meanwhile."""

import pathlib
import time

from harness import PROGRAM_NAME, Display, Screen, UiTestCase, main, wait_for
from harness import commands as do

BAR = "カットの進行状況"
DONE_TITLE, DONE_TEXT = "ポリゴン編集", "ポリゴンの自動カットが終了しました。"


def counts(path):
    """(vertices, elements) of every polygon model in a scene file."""
    return [tuple(map(int, line.split(",")[1:])) for line in path.read_text().splitlines()
            if line.startswith("begin polygon_surface,")]


def blocks(path):
    return path.read_text().split("begin ")[1:]


SAIL = ((-2, -1), (2, -1), (0, 2))
NEEDLE = ((-2, -1), (2, 1), (2, 1.02))


def slanted(*triangles):
    """A scene block of upright triangles, slanted to one side or to the other: (corners along the slant and up, side,
    place beside the slant)."""
    lines = [f"begin polygon_surface,{3 * len(triangles)},{4 * len(triangles)}"]
    for corners, side, place in triangles:
        lines += [f"position {along + place:.6g},{side * (along - place):.6g},{up}" for along, up in corners]
    for number in range(len(triangles)):
        lines += [f"element {3 * number + corner}" for corner in range(3)] + ["element -1"]
    lines += ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * (3 * len(triangles))
    return "\r\n".join(lines + ["end", ""])


def long_cut():
    """A cut that takes seconds, of models that are soon drawn: some sails cut each needle into many pieces, and then
    every piece is asked about all the needles between, whose boxes it meets."""
    across = [(SAIL, -1, 2 * n / 100 - 1) for n in range(100)]
    between = [(NEEDLE, 1, 0.6 * (n + 0.5) / 1000) for n in range(1000)]
    return slanted(*across, *between) + slanted(*((NEEDLE, 1, 0.6 * n / 20) for n in range(20)))


class Cut(UiTestCase):
    def assert_done(self, program):
        wait_for(lambda: program.window(DONE_TITLE), "the cut does not end", seconds=120)
        self.assertEqual(program.message(DONE_TITLE), ("Information", DONE_TEXT, ["OK"]))
        program.keys("Return")
        program.wait_gone(DONE_TITLE)
        program.wait_main_active()

    def bar(self, program):
        return program.control("progress bar", BAR).value("CurrentValue")

    def save(self, program, name):
        path = program.folder / name
        do.give_save_as(program, path)
        program.wait_title(f"{name} - {PROGRAM_NAME}")
        program.wait_main_active()
        return path

    def test_a_star_is_cut_out_of_a_ball_and_a_sheet(self):
        program = self.start()
        do.open_scene(program, self.sample(program, "cut.ulk"), f"cut.ulk - {PROGRAM_NAME}")
        before = self.save(program, "before.ulk")
        self.assertEqual(self.bar(program), 0.0)
        do.cut(program)
        self.assert_done(program)
        self.assertGreater(self.bar(program), 0.9)

        after = self.save(program, "after.ulk")
        (_, ball, sheet), (_, cut_ball, cut_sheet) = counts(before), counts(after)
        self.assertEqual(blocks(before)[0], blocks(after)[0])
        self.assertGreater(cut_ball[0], ball[0])
        self.assertGreater(cut_sheet[0], sheet[0])

        # With the star out of the way one looks through the sheet into the ball, which nothing lights.
        program.press_control("toggle button", "制御点表示")
        do.delete_current(program)
        self.rest_pointer(program)
        wait_for(lambda: max(Screen().pixel(*self.view.at("perspective", 15, 25))) < 40,
                 "the hole can not be looked through")

        # What was saved opens again.
        do.open_scene(program, after, f"after.ulk - {PROGRAM_NAME}")
        do.leave(program)
        self.assert_ends_clean(program)

    def test_letters_are_cut_into_a_plate(self):
        program = self.start()
        do.open_scene(program, self.sample(program, "letters.ulk"), f"letters.ulk - {PROGRAM_NAME}")
        do.cut(program)
        self.assert_done(program)
        program.press_control("toggle button", "制御点表示")
        do.delete_current(program)
        self.rest_pointer(program)
        # The upright stroke of the first letter has no floor: behind it one sees the plate's back from inside.
        wait_for(lambda: max(Screen().pixel(*self.view.at("perspective", -85, 10))) < 120,
                 "the letter can not be looked through")
        self.assertGreater(max(Screen().pixel(*self.view.at("perspective", -100, 10))), 200)
        do.leave(program)
        self.assert_ends_clean(program)

    def start_long_cut(self, program):
        """Returns when a long cut has begun."""
        self.open_model(program, long_cut())
        do.cut(program)
        wait_for(lambda: self.bar(program) > 0, "the bar does not move")

    def test_the_bar_moves_while_a_long_cut_runs(self):
        program = self.start()
        self.start_long_cut(program)
        seen = {self.bar(program)}
        while not program.window(DONE_TITLE):
            seen.add(self.bar(program))
            time.sleep(0.02)
        self.assertGreater(len(seen), 3)
        self.assert_done(program)

    def test_commands_that_would_disturb_a_cut_do_nothing(self):
        program = self.start()
        display = Display()
        self.addCleanup(display.close)
        self.start_long_cut(program)
        # The file chooser rings it, too.
        before = display.bells
        do.delete_current(program)
        wait_for(lambda: display.bells == before + 1, "the command did not ring the bell")
        program.keys("ctrl+z")
        wait_for(lambda: display.bells == before + 2, "the key did not ring the bell")
        self.assertIsNone(program.window(DONE_TITLE), "the cut was too short for this test")
        self.assert_done(program)
        # Its end has a bell of its own.
        self.assertEqual(display.bells, before + 3)
        self.assertEqual(len(do.model_labels(program)), 2)

    def test_files_that_are_dropped_while_a_cut_runs_are_not_taken(self):
        program = self.start()
        cube = self.sample(program, "cube.ulk")
        self.start_long_cut(program)
        self.assertFalse(self.drop(program, pathlib.Path(cube).as_uri()))
        self.assertIsNone(program.window(DONE_TITLE), "the cut was too short for this test")
        self.assert_done(program)
        self.assertEqual(len(do.model_labels(program)), 2)

    def test_closing_the_window_ends_the_program_in_the_middle_of_a_cut(self):
        program = self.start()
        self.start_long_cut(program)
        program.keys("alt+F4")
        wait_for(lambda: program.process.poll() is not None or program.window(DONE_TITLE), "nothing ends")
        self.assert_ends_clean(program)


if __name__ == "__main__":
    main()
