"""ulktool info."""

import unittest

from pictures import tga
from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


class Info(ToolTestCase):
    def test_prints_models_counts_and_boxes(self):
        triangle = ("begin environment\ncubetex\nend\nbegin polygon_surface,3,4\nposition 0,0,0\nposition 2,0,0\n"
                    "position 0,1,-1\nelement 0\nelement 1\nelement 2\nelement -1\n"
                    + "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n" * 3 + "end\n")
        done = run("info", self.file("one.ulk", triangle))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.splitlines(), [
            "models: 1", "model 0: polygon surface", "  mesh: 3 vertices, 4 elements, 1 triangles",
            "  box: (0, 0, -1) to (2, 1, 0)"])

    def test_tells_nets_and_resolutions(self):
        done = run("info", SAMPLES / "patch.ulk")
        self.assertEqual(done.returncode, 0)
        self.assertIn("nurbs surface, 2 x 2 points, order 2 x 2, resolution", done.stdout)

    def test_tells_the_pictures_of_a_model(self):
        done = run("info", SAMPLES / "relief.ulk")
        self.assertEqual([line for line in done.stdout.splitlines() if "maps/" in line], [
            "  texture: maps/bricks.png, 128 x 128", "  bumpmap: maps/brick-depth.bmp, 64 x 64",
            "  specular: maps/dull.tga, 4 x 4", "  texture: maps/glaze.jpg, 128 x 128",
            "  bumpmap: maps/rosette-normals.png, 128 x 128"])
        done = run("info", self.file("square.ulk", SQUARE.format(maps="texture none.png\n")))
        self.assertEqual(done.returncode, 0)
        self.assertIn("  texture: none.png, no such file\n", done.stdout)
        (self.folder / "mirrored.tga").write_bytes(tga(4, 1, 24, 0x10, bytes(12)))
        done = run("info", self.file("square.ulk", SQUARE.format(maps="specular mirrored.tga\n")))
        self.assertIn("  specular: mirrored.tga, 4 x 1; it is stored from right to left, and shows mirrored\n",
                      done.stdout)

    def test_tells_the_environment(self):
        done = run("info", self.sky())
        self.assertEqual(done.stdout, "environment: sky.png\nmodels: 0\n")

    def test_a_file_that_does_not_load_is_a_failure(self):
        self.assertEqual(run("info", self.file("empty.ulk", "")).returncode, 1)

    def test_one_file_is_needed(self):
        self.assertEqual(run("info").returncode, 2)
        self.assertEqual(run("info", "a", "b").returncode, 2)


if __name__ == "__main__":
    unittest.main()
