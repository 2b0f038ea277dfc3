"""ulktool info."""

import json
import math
import struct
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

    def test_several_files_have_names_and_totals(self):
        square, cube = self.file("square.ulk", SQUARE.format(maps="")), SAMPLES / "cube.ulk"
        done = run("info", square, cube)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stdout.splitlines(), [
            f"{square}:", *run("info", square).stdout.splitlines(), f"{cube}:", *run("info", cube).stdout.splitlines(),
            "total: 2 files, 2 models, 28 vertices, 34 elements, 14 triangles"])

    def test_several_models_have_totals(self):
        lines = run("info", self.file("two.ulk", 2 * SQUARE.format(maps=""))).stdout.splitlines()
        self.assertEqual(lines[-1], "total: 2 models, 8 vertices, 8 elements, 4 triangles")
        self.assertNotIn("total", run("info", SAMPLES / "cube.ulk").stdout)

    def test_files_behind_one_that_does_not_load_are_told(self):
        square, bad = self.file("square.ulk", SQUARE.format(maps="")), self.file("bad.ulk", "")
        done = run("info", bad, square)
        self.assertEqual((done.returncode, done.stderr), (1, f"{bad}: does not load\n"))
        self.assertEqual(done.stdout.splitlines()[:2], [f"{square}:", "models: 1"])

    def test_json_says_the_same(self):
        square = self.file("square.ulk", SQUARE.format(maps="texture none.png\n"))
        done = run("info", "--json", square, SAMPLES / "patch.ulk", self.sky())
        self.assertEqual(done.returncode, 0)
        told = json.loads(done.stdout)
        self.assertEqual(told["files"][0], {"name": str(square), "environment": "", "models": [
            {"kind": "polygon", "vertices": 4, "elements": 4, "triangles": 2, "low": [-1, -1, 0], "high": [1, 1, 0],
             "pictures": [{"key": "texture", "name": "none.png", "size": "", "problem": "no such file",
                           "warning": ""}]}]})
        patch = told["files"][1]["models"][0]
        self.assertEqual((patch["kind"], patch["points"], patch["order"]), ("nurbs", [2, 2], [2, 2]))
        self.assertEqual(told["files"][2],
                         {"name": str(self.folder / "sky.ulk"), "environment": "sky.png", "models": []})
        self.assertEqual(told["totals"], {"files": 3, "models": 2, "vertices": 4 + patch["vertices"],
                                          "elements": 4 + patch["elements"], "triangles": 2 + patch["triangles"]})

    def test_json_has_no_word_for_what_is_not_finite(self):
        stl = self.folder / "odd.stl"
        stl.write_bytes(bytes(80) + struct.pack("<I12fH", 1, 0, 0, 1, *[math.inf] * 9, 0))
        self.assertEqual(json.loads(run("info", "--json", stl).stdout)["files"][0]["models"][0]["high"], [None] * 3)

    def test_a_file_is_needed(self):
        self.assertEqual(run("info").returncode, 2)


if __name__ == "__main__":
    unittest.main()
