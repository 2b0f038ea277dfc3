"""Makes the pictures of the manual and the README with the real program, on the private desktop of the window tests:

    tests/ui/launch.py build/release/bin/ulkedit docs/pictures docs/make_pictures.py

Every picture is a scene of samples/ and the gestures that a user would make; the names of the functions are those of
the files.
"""

import os
import pathlib
import shutil
import time

from harness import SAMPLES, PROGRAM_NAME, Program, Screen, View, wait_for
from harness import commands as do

CORNER = (1279, 0)
POINTS_SHOWN, PUNISH, POLYGON_SELECTION, FOLD_VERTICES = "制御点表示", "ぷにぷに", "折曲ポリゴン選択", "折目頂点選択1,0"


def window(program, view):
    """The window with a scene of both kinds of model."""


def marking(program, view):
    """The rim of a vase, marked in the side view and dragged out, the vase turned to show its side."""
    program.drag(view.at("perspective", 0, 150), view.at("perspective", 25, 90), button=3, modifier="alt")
    program.drag(view.at("side", -86, -70), view.at("side", -86, 70), steps=70)
    program.drag(view.at("side", -86, 0), view.at("side", -112, 22), modifier="shift")


def dent(program, view):
    """A control point of a wavy surface, pulled to the side."""
    program.press_control("radio button", PUNISH)
    program.click(*view.at("front", 17, -17))
    program.drag(view.at("front", 17, -17), view.at("front", 75, 25), modifier="shift")


def polygons(program, view):
    """Polygons of a ball, painted in the perspective view. Its points are switched off."""
    program.press_control("toggle button", POINTS_SHOWN)
    program.drag(view.at("perspective", 0, 150), view.at("perspective", 10, 90), button=3, modifier="alt")
    program.press_control("radio button", POLYGON_SELECTION)
    for up in range(30, 80, 8):
        program.drag(view.at("perspective", -70, up), view.at("perspective", 40, up), steps=28)


def fold_line(program, view):
    """A turned sheet with the two ends of a fold line."""
    program.press_control("radio button", FOLD_VERTICES)
    program.click(*view.at("front", -85, -85))
    program.click(*view.at("front", 85, 85), button=3)
    program.drag(view.at("perspective", 0, 150), view.at("perspective", 25, 110), button=3, modifier="alt")


PICTURES = {window: "mixed.ulk", marking: "vase.ulk", dent: "knots.ulk", polygons: "sphere.ulk", fold_line: "paper.ulk"}


def make(picture, sample, folder):
    program = Program()
    try:
        program.wait_started()
        view = View(program)
        program.move_pointer(*CORNER)
        do.open_scene(program, shutil.copy(SAMPLES / sample, program.folder), f"{sample} - {PROGRAM_NAME}")
        wait_for(lambda: len(view.colours("perspective")) > 20, "the scene does not show")
        picture(program, view)
        program.move_pointer(*CORNER)
        # What the last gesture changed is drawn by then.
        time.sleep(1)
        frame = program.tree().find("frame").rectangle
        Screen().save(folder / f"{picture.__name__}.png", frame)
    finally:
        program.end()


if __name__ == "__main__":
    for made, sample_name in PICTURES.items():
        make(made, sample_name, pathlib.Path(os.environ["ULK_UI_ARTIFACTS"]))
