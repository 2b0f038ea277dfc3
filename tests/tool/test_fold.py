"""ulktool fold."""

import unittest

from scene_blocks import box
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


def positions(path):
    return [tuple(map(float, line.split(" ")[1].split(","))) for line in path.read_text().splitlines()
            if line.startswith("position ")]


class Fold(ToolTestCase):
    def setUp(self):
        super().setUp()
        # Triangles 0, 1, 2 and 2, 1, 3: the line from vertex 1 to vertex 2 parts them.
        self.square = self.file("square.ulk", SQUARE.format(maps=""))
        self.out = self.folder / "out.ulk"

    def fold(self, scene=None, model=0, polygons="1", axis="1,2", angle="90"):
        return run("fold", scene or self.square, "--model", model, "--polygons", polygons, "--axis", axis, "--angle",
                   angle, "-o", self.out)

    def test_turns_the_polygons_about_the_crease(self):
        done = self.fold()
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(positions(self.out)[:3], [(-1, -1, 0), (1, -1, 0), (-1, 1, 0)])
        turned = positions(self.out)[3]
        for value, expected in zip(turned, (0, 0, -2 ** 0.5)):
            self.assertAlmostEqual(value, expected, places=5)

    def test_the_angle_may_be_negative_and_broken(self):
        self.assertEqual(self.fold(angle="-90").returncode, 0)
        self.assertAlmostEqual(positions(self.out)[3][2], 2 ** 0.5, places=5)
        self.assertEqual(self.fold(angle="0.5").returncode, 0)

    def test_all_polygons_of_ranges_turn(self):
        net = SAMPLES / "net.ulk"
        self.assertEqual(self.fold(net, polygons="0,2-4,7", axis="30,32").returncode, 0)
        by_range = self.out.read_bytes()
        self.assertEqual(self.fold(net, polygons="7,4,3,2,0,0", axis="30,32").returncode, 0)
        self.assertTrue(self.out.read_bytes() == by_range)
        self.assertEqual(self.fold(net, polygons="0,2-4", axis="30,32").returncode, 0)
        self.assertFalse(self.out.read_bytes() == by_range)

    def test_other_models_stay(self):
        scene = self.file("two.ulk", box((0, 0, 0), (1, 1, 1)) + SQUARE.format(maps=""))
        self.assertEqual(self.fold(scene, model=1).returncode, 0)
        self.assertEqual(positions(self.out)[:8], positions(scene)[:8])

    def assert_fails(self, message, **options):
        scene = options.get("scene", self.square)
        done = self.fold(**options)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", f"{scene}: {message}\n"))
        self.assertFalse(self.out.exists())

    def test_what_is_not_there_is_named(self):
        self.assert_fails("there is no model 1; there is 1, from 0", model=1)
        self.assert_fails("model 0: there is no polygon 2; there are 2, from 0", polygons="2")
        self.assert_fails("model 0: there is no polygon 4000000000; there are 2, from 0", polygons="0-4000000000")
        self.assert_fails("model 0: there is no polygon 5; there are 2, from 0", polygons="0,5-9")
        # Restart marks leave numbers in the model's tables that are no polygons.
        net = SAMPLES / "net.ulk"
        self.assert_fails("model 0: there is no polygon 48; there are 48, from 0", scene=net, polygons="48",
                          axis="30,32")
        self.assert_fails("model 0: there is no vertex 4; there are 4, from 0", axis="4,1")
        self.assert_fails("model 0: there is no vertex 9; there are 4, from 0", axis="1,9")
        self.assert_fails("model 0 is a NURBS surface, not a polygon model; ulktool polygonize makes it one",
                          scene=SAMPLES / "vase.ulk")

    def test_a_crease_needs_two_places(self):
        self.assert_fails("model 0: the axis has no direction: vertices 1 and 1 are at the same place", axis="1,1")

    def assert_usage_error(self, message, **options):
        done = self.fold(**options)
        self.assertEqual((done.returncode, done.stderr), (2, f"ulktool fold: {message}; see ulktool fold --help\n"))

    def test_wrong_words_are_usage_errors(self):
        whole = "this is not a whole number that counts from 0"
        self.assert_usage_error(f"--model x: {whole}", model="x")
        self.assert_usage_error(f"--polygons x: {whole}", polygons="1,x")
        self.assert_usage_error(f"--polygons : {whole}", polygons="1,")
        self.assert_usage_error(f"--polygons : {whole}", polygons="5-")
        self.assert_usage_error("--polygons 9-5: the first number is above the last one", polygons="9-5")
        self.assert_usage_error("--axis 1: these are not two vertices with a comma between", axis="1")
        self.assert_usage_error(f"--axis 2,3: {whole}", axis="1,2,3")
        self.assert_usage_error("--angle much: this is not a number", angle="much")
        done = run("fold", self.square, "-o", self.out)
        self.assertEqual((done.returncode, done.stderr),
                         (2, "ulktool fold: --model N is missing; see ulktool fold --help\n"))

    def test_the_help_has_an_example_that_works(self):
        done = run("fold", "--help")
        self.assertEqual(done.returncode, 0)
        example = done.stdout.split("Example:\n")[1].split()
        self.assertEqual(example[:3], ["ulktool", "fold", "net.ulk"])
        self.assertEqual(run("fold", SAMPLES / "net.ulk", *example[3:-1], self.out).returncode, 0)


if __name__ == "__main__":
    unittest.main()
