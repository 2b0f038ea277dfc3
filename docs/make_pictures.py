"""Makes the pictures of the manual and the README with the real program, on the private desktop of the window tests:

    tests/ui/launch.py build/release/bin/ulkedit docs/pictures docs/make_pictures.py [NAME...]

Every picture is a scene of samples/ and the gestures that a user would make; the names of the functions are those of
the files. A function that gives a place on the screen makes a picture of that, the others one of the window. Names behind
the command make only these pictures.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time

from harness import SAMPLES, PROGRAM_NAME, Program, Screen, View, wait_for
from harness import commands as do
from harness.table_dialog import TableDialog

CORNER = (1279, 0)
POINTS_SHOWN, PUNISH, POLYGON_SELECTION, FOLD_VERTICES = "制御点表示", "ぷにぷに", "折曲ポリゴン選択", "折目頂点選択1,0"
VERTEX_TITLE = "頂点設定"
CUT_TITLE = "ポリゴン編集"
FOLD_ANGLE, FOLD_BUTTON = "折曲角度", "折曲実行"


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


class Net:
    """Gestures on net.ulk: six squares of 0.3, a cross of three columns and four rows about the origin."""

    SQUARE = 0.3
    TOP_MIDDLE, MIDDLE_BELOW = (28, 150, 150), (126, 70, 150)

    def __init__(self, program, view):
        self.program, self.view = program, view
        top = wait_for(lambda: view.dot("perspective", self.TOP_MIDDLE), "the points do not show")
        # Where a unit of the model is seen, which holds as long as nobody moves the camera.
        self.perspective_unit = (top.y - view.dot("perspective", self.MIDDLE_BELOW).y) / self.SQUARE
        self.perspective_up = top.y - 0.45 * self.perspective_unit
        # A scene is fitted with an eighth of its size to spare.
        _, _, _, height = view.rectangle("front")
        self.front_units = [height / 2 / (size * 1.125) for size in (0.9, 1.2)]

    def mark(self, column, row):
        """Clicks at the eight triangles of a square."""
        self.program.press_control("radio button", POLYGON_SELECTION)
        for right, up in ((0.25, 0.25), (0.25, 0.75), (0.75, 0.25), (0.75, 0.75)):
            for way in (-1 / 12, 1 / 12):
                x, y = (column + right + way - 1.5) * self.SQUARE, (row + up - way - 2) * self.SQUARE
                self.program.click(*self.view.at("perspective", x * self.perspective_unit,
                                                 y * self.perspective_unit + self.perspective_up))

    def unmark_all(self):
        self.program.press_control("radio button", POLYGON_SELECTION)
        self.program.double_click(*self.view.centre("perspective"), button=3)

    def pick_axis(self, first, second):
        """Two corners by column and row. What lies to the left of the way from the first to the second
        comes towards the viewer, or with a negative angle goes away."""
        self.program.press_control("radio button", FOLD_VERTICES)
        for (column, row), button in ((first, 3), (second, 1)):
            place = (column - 1.5) * self.SQUARE, (row - 2) * self.SQUARE
            self.program.click(*self.view.at("front", *(p * unit for p, unit in zip(place, self.front_units))), button)

    def look_closer(self, notches):
        self.program.drag(self.view.at("perspective", 0, 150), self.view.at("perspective", -35, 110), button=3,
                          modifier="alt")
        for _ in range(notches):
            self.program.click(*self.view.centre("perspective"), button=5, modifier="alt")

    def fold(self, first, second, square):
        self.mark(*square)
        self.pick_axis(first, second)
        self.program.press_control("push button", FOLD_BUTTON)


def fold_marks(program, view):
    """The net of a box with its uppermost square marked, and the axis along the edge of it."""
    net = Net(program, view)
    net.mark(1, 3)
    net.pick_axis((1, 3), (2, 3))
    program.spin(FOLD_ANGLE, -5, button=2)
    net.look_closer(1)


def folded(program, view):
    """The same net, folded at five edges, the lid and its wall last."""
    net = Net(program, view)
    program.spin(FOLD_ANGLE, -5, button=2)
    net.fold((1, 1), (1, 2), (0, 1))
    net.unmark_all()
    net.fold((2, 2), (2, 1), (2, 1))
    net.unmark_all()
    net.fold((2, 1), (1, 1), (1, 0))
    net.unmark_all()
    net.fold((1, 3), (2, 3), (1, 3))
    # The lid turns with the wall that it hangs on.
    net.fold((1, 2), (2, 2), (1, 2))
    net.unmark_all()
    program.press_control("toggle button", POINTS_SHOWN)
    net.look_closer(4)


def show_cutter(program, view):
    program.press_control("toggle button", POINTS_SHOWN)
    program.drag(view.at("perspective", 0, 150), view.at("perspective", 25, 145), button=3, modifier="alt")
    for _ in range(4):
        program.click(*view.centre("perspective"), button=5, modifier="alt")


def cutter(program, view):
    """The star before it cuts."""
    show_cutter(program, view)


def cut(program, view):
    """The same scene when it has cut and is gone."""
    do.cut(program)
    program.message(CUT_TITLE)
    program.keys("Return")
    program.wait_gone(CUT_TITLE)
    program.wait_main_active()
    do.delete_current(program)
    show_cutter(program, view)


def close_up(program, view, notches):
    """Only the perspective view, without points, from nearer by; its place on the screen."""
    program.press_control("toggle button", POINTS_SHOWN)
    for _ in range(notches):
        program.click(*view.centre("perspective"), button=5, modifier="alt")
    return view.rectangle("perspective")


def move_corner(program, view):
    """The foremost vertex at a corner of a cube, moved by its numbers; the perspective view then."""
    dialog = do.open_dialog(program, "v", VERTEX_TITLE)
    lines = dialog.control(VERTEX_TITLE).text.splitlines()
    lines[lines.index("0.5,0.5,0.5")] = "0.85,0.75,0.3"
    dialog.fill(VERTEX_TITLE, "\n".join(lines))
    dialog.accept()
    program.drag(view.at("perspective", 0, 150), view.at("perspective", -30, 115), button=3, modifier="alt")
    return close_up(program, view, 0)


def torn_corner(program, view):
    """A corner of an STL file: the vertex belongs to one triangle alone."""
    return move_corner(program, view)


def welded_corner(program, view):
    """The same corner after `ulktool tidy`."""
    return move_corner(program, view)


def globe(program, view):
    """A map of longitudes and latitudes around a ball."""
    return close_up(program, view, 2)


def relief(program, view):
    """A wall and a tile that are flat but for their bump maps."""
    return close_up(program, view, 3)


def mirror(program, view):
    """A ball and a ring that mirror their surroundings."""
    return close_up(program, view, 3)


def glass(program, view):
    """A ball that bends the light of the same surroundings."""
    return close_up(program, view, 2)


def polygon_dialog(program, view):
    """The sizes and names of a mesh."""
    dialog = do.open_dialog(program, "o", do.POLYGON_TITLE)
    dialog.fill("保存ファイル名", "cube.ulk")
    return program.dialog(dialog.title).rectangle


def nurbs_dialog(program, view):
    """The sizes and names of a NURBS surface."""
    dialog = do.open_dialog(program, "o", do.NURBS_TITLE)
    dialog.fill("保存ファイル名", "vase.ulk")
    return program.dialog(dialog.title).rectangle


def vertex_dialog(program, view):
    """The positions of a mesh as text, one of them being changed to a sum."""
    dialog = do.open_dialog(program, "v", VERTEX_TITLE)
    dialog.focus(dialog.title)
    program.keys("Home", *["Delete"] * len("-0.5"))
    program.type("-1/3")
    return program.dialog(dialog.title).rectangle


def element_dialog(program, view):
    """The strips of a mesh."""
    return program.dialog(do.open_dialog(program, "e", "エレメント設定").title).rectangle


def environment_dialog(program, view):
    """The environment as it is at first."""
    return program.dialog(do.open_dialog(program, "i", "環境設定").title).rectangle


def point_table(program, view):
    """The positions of a hilly field, one of its points marked."""
    dialog = TableDialog(program, "p", "制御点")
    dialog.toggle("制御点 1,0 選択")
    return dialog.node.rectangle


def colour_table(program, view):
    """The colours of the same field."""
    return TableDialog(program, "c", "RGBAカラー一覧").node.rectangle


def weight_table(program, view):
    """Its weights."""
    return TableDialog(program, "w", "重み付け一覧").node.rectangle


def row_knots(program, view):
    """The knots of its rows."""
    return TableDialog(program, "h", "横ノット列一覧").node.rectangle


def column_knots(program, view):
    """The knots of its columns."""
    return TableDialog(program, "v", "縦ノット列一覧").node.rectangle


def basis_functions(program, view):
    """The plot of the knots of a row."""
    TableDialog(program, "h", "横ノット列一覧").click("ノット列 1 の基底関数")
    program.wait_window("1")
    return program.dialog("1").rectangle


PICTURES = {window: "mixed.ulk", marking: "vase.ulk", dent: "knots.ulk", polygons: "sphere.ulk", fold_line: "paper.ulk",
            fold_marks: "net.ulk", folded: "net.ulk", cutter: "cut.ulk", cut: "cut.ulk",
            torn_corner: "cube.stl", welded_corner: "tidy-cube.ulk", globe: "globe.ulk", relief: "relief.ulk", mirror: "mirror.ulk", glass: "glass.ulk",
            polygon_dialog: "cube.ulk", nurbs_dialog: "vase.ulk", vertex_dialog: "cube.ulk", element_dialog: "cube.ulk",
            environment_dialog: "mixed.ulk", point_table: "knots.ulk", colour_table: "knots.ulk",
            weight_table: "knots.ulk", row_knots: "knots.ulk", column_knots: "knots.ulk", basis_functions: "knots.ulk"}


# How files are made that are no samples.
MADE_BY_TOOL = {"cube.stl": [["convert", SAMPLES / "cube.ulk", "cube.stl"]],
                "tidy-cube.ulk": [["convert", SAMPLES / "cube.ulk", "cube.stl"],
                                  ["tidy", "cube.stl", "-o", "tidy-cube.ulk", "--weld"]]}


def place_scene(name, folder):
    """Puts a sample, or what the tool makes of one, into a folder; its path."""
    if name not in MADE_BY_TOOL:
        return shutil.copy(SAMPLES / name, folder)
    tool = pathlib.Path(os.environ["ULK_UI_PROGRAM"]).with_name("ulktool")
    for words in MADE_BY_TOOL[name]:
        subprocess.run([tool, *words], cwd=folder, check=True)
    return str(pathlib.Path(folder) / name)


def make(picture, sample, folder):
    """The picture shows what the function gives, or else the window."""
    program = Program()
    try:
        shutil.copytree(SAMPLES / "maps", pathlib.Path(program.folder) / "maps")
        program.wait_started()
        view = View(program)
        program.move_pointer(*CORNER)
        do.open_scene(program, place_scene(sample, program.folder), f"{sample} - {PROGRAM_NAME}")
        wait_for(lambda: len(view.colours("perspective")) > 20, "the scene does not show")
        shown = picture(program, view)
        program.move_pointer(*CORNER)
        # What the last gesture changed is drawn by then.
        time.sleep(1)
        Screen().save(folder / f"{picture.__name__}.png", shown or program.tree().find("frame").rectangle)
    finally:
        program.end()


if __name__ == "__main__":
    for made, sample_name in PICTURES.items():
        if made.__name__ in sys.argv[1:] or not sys.argv[1:]:
            make(made, sample_name, pathlib.Path(os.environ["ULK_UI_ARTIFACTS"]))
