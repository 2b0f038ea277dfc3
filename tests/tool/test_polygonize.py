"""ulktool polygonize."""

import unittest

from tool_test_case import SAMPLES, SQUARE, ToolTestCase, run


class Polygonize(ToolTestCase):
    def setUp(self):
        super().setUp()
        patch = (SAMPLES / "patch.ulk").read_text()
        self.scene = self.file("scene.ulk", patch + "\n" + SQUARE.format(maps="") + patch)
        self.out = self.folder / "out.ulk"

    def kinds(self):
        return [line.split()[1].split(",")[0] for line in self.out.read_text().splitlines()
                if line.startswith("begin ")]

    def test_all_surfaces_become_meshes(self):
        done = run("polygonize", self.scene, "-o", self.out)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(self.kinds(), ["polygon_surface"] * 3)

    def test_one_surface_becomes_a_mesh(self):
        self.assertEqual(run("polygonize", self.scene, "--model", 2, "-o", self.out).returncode, 0)
        self.assertEqual(self.kinds(), ["nurbs_surface", "polygon_surface", "polygon_surface"])

    def test_a_mesh_stays_as_it_is(self):
        self.assertEqual(run("polygonize", self.scene, "--model", 1, "-o", self.out).returncode, 0)
        self.assertEqual(self.kinds(), ["nurbs_surface", "polygon_surface", "nurbs_surface"])

    def test_what_is_not_there_is_named(self):
        done = run("polygonize", self.scene, "--model", 3, "-o", self.out)
        self.assertEqual((done.returncode, done.stderr),
                         (1, f"{self.scene}: there is no model 3; there are 3, from 0\n"))
        self.assertFalse(self.out.exists())

    def test_wrong_words_are_usage_errors(self):
        done = run("polygonize", self.scene, "--model", "all", "-o", self.out)
        self.assertEqual((done.returncode, done.stderr),
                         (2, "ulktool polygonize: --model all: this is not a whole number that counts from 0; "
                             "see ulktool polygonize --help\n"))
        self.assertEqual(run("polygonize", self.scene).returncode, 2)
        self.assertEqual(run("polygonize", "-o", self.out).returncode, 2)

    def test_the_help_has_an_example(self):
        done = run("polygonize", "--help")
        self.assertEqual(done.returncode, 0)
        self.assertIn("    Example:\n        ulktool polygonize ", done.stdout)


if __name__ == "__main__":
    unittest.main()
