"""ulktool render."""

import math
import struct
import unittest

from pictures import Picture, png_size
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


GROUND = (46, 46, 46)
POINT = (128, 128, 128)  # of a model that has no colours
# The sides of a box, by where they look.
SIDES = {(0, 0, 1): (1, 0, 0), (0, 0, -1): (0, 1, 0), (1, 0, 0): (0, 0, 1), (-1, 0, 0): (1, 1, 0), (0, 1, 0): (1, 0, 1),
         (0, -1, 0): (0, 1, 1)}


def box_of_six_colours(scale=1, place=(0, 0, 0), lengths=(1, 1, 1)):
    """Four vertices for each side, as `SIDES` has them."""
    lines, elements, frames = [], [], []
    for side, (normal, colour) in enumerate(SIDES.items()):
        axis = next(i for i in range(3) if normal[i])
        along = [(axis + 1) % 3, (axis + 2) % 3]
        lines.append("color {},{},{},255".format(*(255 * part for part in colour)))
        for a, b in ((-1, -1), (normal[axis], -normal[axis]), (-normal[axis], normal[axis]), (1, 1)):
            corner = list(normal)
            corner[along[0]], corner[along[1]] = a, b
            lines.append("position " + ",".join(repr(place[i] + scale * lengths[i] * corner[i] / 2) for i in range(3)))
            frames.append("tangent {},{},{}\nbinormal {},{},{}\nnormal {},{},{}".format(
                *(int(i == along[0]) for i in range(3)), *(int(i == along[1]) for i in range(3)), *normal))
        elements += [f"element {i}" for i in (*range(4 * side, 4 * side + 4), -1)]
    return "\n".join(["begin polygon_surface,24,30", *lines, *elements, *frames, "end", ""])


def colour_in_front(degrees):
    """Whether the side of the box that looks at the viewer after the turns has red, green and blue."""
    for normal, colour in SIDES.items():
        seen = list(normal)
        for axis, angle in enumerate(degrees):
            a, b = (axis + 1) % 3, (axis + 2) % 3
            for _ in range(angle // 90 % 4):
                seen[a], seen[b] = -seen[b], seen[a]
        if seen == [0, 0, 1]:
            return tuple(map(bool, colour))
    raise AssertionError(degrees)


class Render(ToolTestCase):
    def test_draws_all_four_views_at_the_usual_size(self):
        picture = self.folder / "cube.png"
        done = run("render", SAMPLES / "cube.ulk", picture)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(png_size(picture), (1024, 768))

    def test_size_is_that_of_the_picture(self):
        picture = self.folder / "cube.png"
        self.assertEqual(run("render", SAMPLES / "cube.ulk", picture, "--size", "321x203").returncode, 0)
        self.assertEqual(png_size(picture), (321, 203))

    def test_each_view_has_a_picture_of_its_own_in_the_size_asked_for(self):
        pictures = set()
        for view in ("perspective", "front", "side", "top"):
            picture = self.folder / f"{view}.png"
            done = run("render", "--view", view, "--size", "160x120", SAMPLES / "mixed.ulk", picture)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertEqual(png_size(picture), (160, 120))
            pictures.add(picture.read_bytes())
        self.assertGreaterEqual(len(pictures), 2)

    def draw(self, scene, *words):
        """A picture of one of the views of a scene."""
        path = self.folder / "picture.png"
        done = run("render", scene, path, *words)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        return Picture(path)

    def test_the_ground_is_opaque_unless_it_is_left_out(self):
        for words, alpha in (((), 255), (("--transparent",), 0)):
            picture = self.draw(SAMPLES / "cube.ulk", "--view=perspective", "--size=64x48", *words)
            self.assertEqual(picture.rows[0][0], (*GROUND, alpha))

    def test_points_and_grids_can_be_left_out(self):
        def drawn(*words):
            picture = self.draw(self.file("square.ulk", SQUARE.format(maps="")), "--view=front", "--size=80x60", *words)
            return sum(pixel[:3] != GROUND for row in picture.rows for pixel in row)
        self.assertEqual(drawn("--no-grid"), 4 * 9)
        self.assertGreater(drawn(), 4 * 9)
        # The flat views always have their points, as the window has.
        self.assertEqual(drawn("--no-points"), drawn())
        coloured = self.file("coloured.ulk", box_of_six_colours())
        with_points = self.draw(coloured, "--view=perspective", "--size=80x60")
        without = self.draw(coloured, "--view=perspective", "--size=80x60", "--no-points")
        self.assertNotEqual(with_points.rows, without.rows)
        corner = without.box_of(lambda pixel: pixel[:3] != GROUND)
        self.assertLess(with_points.box_of(lambda pixel: pixel[:3] != GROUND)[0], corner[0])

    def test_supersampling_averages_a_larger_picture(self):
        scene, words = SAMPLES / "torus.ulk", ("--no-points", "--view=perspective", "--transparent")
        large = self.draw(scene, "--size=180x120", *words)
        small = self.draw(scene, "--size=60x40", "--supersample=3", *words)
        self.assertEqual((small.width, small.height), (60, 40))
        for y in range(40):
            for x in range(60):
                square = [large.rows[3 * y + j][3 * x + i] for j in range(3) for i in range(3)]
                opacity = sum(pixel[3] for pixel in square)
                told = small.rows[y][x]
                self.assertAlmostEqual(told[3], opacity / 9, delta=0.5001)
                for channel in range(3):
                    if opacity:
                        mean = sum(pixel[channel] * pixel[3] for pixel in square) / opacity
                        self.assertAlmostEqual(told[channel], mean, delta=0.5001)

    def test_points_and_lines_stay_as_wide_when_supersampled(self):
        scene = self.file("square.ulk", SQUARE.format(maps=""))
        for factor in (1, 4):
            picture = self.draw(scene, "--size=200x160", "--view=front", "--no-grid", f"--supersample={factor}")
            self.assertEqual(sum(row.count((*POINT, 255)) for row in picture.rows), 4 * 9)

    def test_a_turn_is_about_x_then_y_then_z(self):
        scene = self.file("box.ulk", box_of_six_colours())
        for degrees in ((0, 0, 0), (90, 0, 0), (0, 90, 0), (0, 0, 90), (90, 90, 0), (0, 90, 90), (90, 0, 90),
                        (180, 0, 0), (0, 180, 0), (-90, 0, 0), (0, -90, 90), (90, 90, 90)):
            turn = "{},{},{}".format(*degrees)
            for words in ((), ("--fit",)):
                picture = self.draw(scene, "--size=60x60", "--view=perspective", "--no-points", "--turn", turn, *words)
                # The highlight is white, and so is no side.
                told = {tuple(value > 100 for value in pixel[:3]) for row in picture.rows for pixel in row}
                self.assertEqual(told - {(False,) * 3, (True,) * 3}, {colour_in_front(degrees)}, (degrees, words))

    def test_fit_shows_the_whole_scene_in_the_middle_wherever_it_is_and_whatever_its_size(self):
        def is_shown(pixel):
            return pixel[3] > 0
        for scale, place in ((1, (0, 0, 0)), (1000, (5e5, -3e5, 1e5)), (1e-6, (0, 0, 0)), (1e30, (0, 0, 0)),
                             (0.25, (100, 0, 100)), (1e-30, (0, 0, 0)), (3e34, (1e35, 1e35, 1e35))):
            scene = self.file("box.ulk", box_of_six_colours(scale, place))
            for size, words in (("80x80", ()), ("120x50", ("--turn=20,30,10",)), ("50x120", ("--turn=0,90,0",))):
                width, height = map(int, size.split("x"))
                picture = self.draw(scene, f"--size={size}", "--view=perspective", "--fit", "--no-points",
                                    "--transparent", *words)
                left, top, right, bottom = picture.box_of(is_shown)
                # It reaches nearly to two edges, keeps off all, and is as far from one as from the other.
                self.assertGreater(min(left, top, width - 1 - right, height - 1 - bottom), 0, (scale, place, size))
                self.assertLess(min(left, top), 5, (scale, place, size))
                self.assertLessEqual(abs(left - (width - 1 - right)), 2, (scale, place, size))
                self.assertLessEqual(abs(top - (height - 1 - bottom)), 2, (scale, place, size))

    def test_fit_keeps_true_proportions(self):
        scene = self.file("box.ulk", box_of_six_colours(lengths=(4, 2, 1)))
        for view, shape in (("front", (4, 2)), ("side", (1, 2)), ("top", (4, 1))):
            for size in ("120x80", "80x120"):
                picture = self.draw(scene, f"--size={size}", f"--view={view}", "--fit", "--no-grid")
                left, top, right, bottom = picture.box_of(lambda pixel: pixel[:3] != GROUND)
                # From the middle of a point of three pixels to that of another.
                self.assertAlmostEqual((right - left - 2) / (bottom - top - 2), shape[0] / shape[1],
                                       delta=0.15 * shape[0] / shape[1])
                self.assertLessEqual(abs(left + right + 1 - picture.width), 2)
                self.assertLessEqual(abs(top + bottom + 1 - picture.height), 2)

    def test_fit_goes_by_the_surface_where_points_are_left_out(self):
        # The net of this surface lies outside of it.
        for words in ((), ("--no-points",)):
            picture = self.draw(SAMPLES / "torus.ulk", "--size=240x120", "--view=perspective", "--fit", "--transparent",
                                *words)
            left, top, right, bottom = picture.box_of(lambda pixel: pixel[3] > 0)
            self.assertLess(min(left, top), 7, words)
            self.assertGreater(min(left, top, 239 - right, 119 - bottom), 0, words)

    def test_fit_of_nothing_is_a_failure(self):
        picture = self.folder / "no.png"
        nothing = SQUARE.format(maps="").replace("element 2\nelement 3", "element -1\nelement -1")
        for scene, words in ((self.sky(), ()), (self.file("square.ulk", nothing), ("--no-points",))):
            done = run("render", scene, picture, "--fit", *words)
            self.assertEqual((done.returncode, done.stderr), (1, f"{scene}: there is nothing to see\n"))
            self.assertFalse(picture.exists())
        self.draw(self.file("square.ulk", nothing), "--fit", "--size=20x20")

    def test_fit_takes_odd_numbers(self):
        for places in ([0] * 9, [math.nan, *range(8)], [math.inf, 0, 0] * 2 + [1, 2, 3], [1e38, -1e38, 3e38] * 3):
            stl = self.folder / "odd.stl"
            stl.write_bytes(bytes(80) + struct.pack("<I12fH", 1, 0, 0, 1, *places, 0))
            self.draw(stl, "--fit", "--size=20x20")

    def test_a_scene_that_does_not_load_leaves_no_picture(self):
        picture = self.folder / "no.png"
        scene = self.file("bad.ulk", "begin polygon_surface,1,0\nend\n")
        done = run("render", scene, picture)
        self.assertEqual(done.returncode, 1)
        self.assertIn("1: vertex(0) < 1: too few vertex.", done.stderr)
        self.assertFalse(picture.exists())

    def test_a_picture_that_can_not_be_written_is_a_failure(self):
        done = run("render", SAMPLES / "cube.ulk", self.folder / "no" / "folder.png")
        self.assertEqual(done.returncode, 1)
        self.assertIn("could not be written", done.stderr)

    def test_wrong_words_are_wrong_usage(self):
        for words, message in (
                ((), "SCENE is missing"), (("a.ulk",), "PICTURE.png is missing"),
                (("a.ulk", "b.png", "c"), "c: too many files"),
                (("a.ulk", "b.png", "--view", "back"),
                 "--view back: this is not perspective, front, side or top")):
            done = run("render", *words)
            self.assertEqual((done.returncode, done.stderr), (
                2, f"ulktool render: {message}; see ulktool render --help\n"))
        for option, value, wanted in (
                ("--turn", "1,2", "this is not three numbers with commas between them"),
                ("--turn", "1,2,x", "this is not three numbers with commas between them"),
                ("--turn", "1,2,3,4", "this is not three numbers with commas between them"),
                ("--turn", "1,2,nan", "this is not three numbers with commas between them"),
                ("--supersample", "0", "this is not a whole number from 1 to 8"),
                ("--supersample", "9", "this is not a whole number from 1 to 8"),
                ("--supersample", "2.5", "this is not a whole number from 1 to 8")):
            done = run("render", "a.ulk", "b.png", option, value)
            self.assertEqual((done.returncode, done.stderr),
                             (2, f"ulktool render: {option} {value}: {wanted}; see ulktool render --help\n"))
        for size in ("0x10", "10", "10x-1", "10x10x", "99999x10", "x10", "10x", "a", ""):
            done = run("render", "a.ulk", "b.png", "--size", size)
            self.assertEqual((done.returncode, done.stderr), (
                2, f"ulktool render: --size {size}: this is not a size as 800x600, up to 16384x16384; "
                "see ulktool render --help\n"))


if __name__ == "__main__":
    unittest.main()
