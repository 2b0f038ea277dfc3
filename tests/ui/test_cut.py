"""Cutting the current model out of all others: the command, the bar, the message, and the window meanwhile."""

import math
import time

from harness import PROGRAM_NAME, Screen, UiTestCase, main, wait_for
from harness import commands as do

BAR = "カットの進行状況"
# Rows and columns of balls whose cut takes seconds.
LONG_CUT = (160, 320)
DONE_TITLE, DONE_TEXT = "ポリゴン編集", "ポリゴンの自動カットが終了しました。"


def counts(path):
    """(vertices, elements) of every polygon model in a scene file."""
    return [tuple(map(int, line.split(",")[1:])) for line in path.read_text().splitlines()
            if line.startswith("begin polygon_surface,")]


def blocks(path):
    return path.read_text().split("begin ")[1:]


def bumpy_ball(rows, columns, shift):
    """A scene block of a ball that looks scanned, as strips around it."""
    lines = [f"begin polygon_surface,{(rows + 1) * columns},{rows * (2 * columns + 3)}"]
    for row in range(rows + 1):
        for column in range(columns):
            a, b = math.pi * row / rows, 2 * math.pi * column / columns
            r = 0.5 + 0.02 * math.sin(9 * b + row) * math.sin(a)
            lines.append(f"position {r * math.sin(a) * math.cos(b) + shift:.6g},{r * math.sin(a) * math.sin(b):.6g},"
                         f"{r * math.cos(a) + shift / 3:.6g}")
    for row in range(rows):
        for column in (*range(columns), 0):
            lines += [f"element {row * columns + column}", f"element {(row + 1) * columns + column}"]
        lines.append("element -1")
    lines += ["tangent 1,0,0", "binormal 0,1,0", "normal 0,0,1"] * ((rows + 1) * columns)
    return "\r\n".join(lines + ["end", ""])


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

    def start_long_cut(self, program):
        """A cut that takes seconds; returns when it has begun."""
        self.open_model(program, bumpy_ball(*LONG_CUT, 0) + bumpy_ball(*LONG_CUT, 0.3))
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
        self.start_long_cut(program)
        do.delete_current(program)
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
